#include "control/state_of.h"
#include "interact/page_output.h"
#include "printed_sheet.h"
#include "qvgraph/page_file.h"
#include "temporary_folder.h"
#include "widget.h"

#include <QtCore/QMimeData>
#include <QtCore/QProcess>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtPrintSupport/QPrinter>

using namespace qv;
using namespace qv::test;

namespace {

/// A widget with every pixel of its page darker than paper.
struct DarkPage {
    qt::QvGraphWidget widget;
    std::vector<std::string> errors;

    explicit DarkPage(QSize page) {
        widget.resize(around_page(widget, page));
        draw_page(widget.control());
        widget.control().PageColors({.Color1 = rgb(40, 60, 90)});
        widget.control().Refresh();
        QObject::connect(&widget, &qt::QvGraphWidget::ErrorMsg, &widget,
                         [this](QString const& Source) { errors.push_back(Source.toStdString()); });
    }
};

Box in_mm(Box const& inches) {
    return {inches.left * 25.4, inches.top * 25.4, inches.width * 25.4, inches.height * 25.4};
}

constexpr host::PaperSize a4{210 / 25.4 * twips_per_inch, 297 / 25.4 * twips_per_inch};

double height_to_width(QImage const& page) {
    return static_cast<double>(page.height()) / page.width();
}

} // namespace

TEST_CASE("a page is printed on a QPrinter at its place and without loss") {
    struct Row {
        QSize page;
        bool landscape;
    };
    for (Row const& row :
         {Row{{900, 450}, false}, Row{{900, 450}, true}, Row{{300, 700}, false}, Row{{300, 700}, true}}) {
        CAPTURE(row.page.width());
        CAPTURE(row.landscape);
        const TemporaryFolder folder;
        DarkPage page(row.page);
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFileName(QString::fromStdString((folder.path() / "sheet.pdf").string()));
        printer.setPageSize(QPageSize(QPageSize::A4));
        page.widget.set_printer(&printer);
        page.widget.control().PrintImage(row.landscape);
        CHECK(page.errors.empty());
        const PrintedSheet sheet = measure_sheet(folder.path() / "sheet.pdf");
        CHECK(sheet.width_mm == doctest::Approx(row.landscape ? 297 : 210).epsilon(0.002));
        const QImage shown = page.widget.page();
        check_box(sheet.ink_mm, in_mm(interact::place_on_paper(a4, height_to_width(shown), row.landscape)),
                  0.5);
        auto const kept = picture_in(folder.path() / "sheet.pdf");
        REQUIRE(QSize(kept.width, kept.height) == shown.size());
        CHECK(QImage(reinterpret_cast<uchar const*>(kept.pixels.data()), kept.width, kept.height,
                     QImage::Format_RGB32)
              == QImage(shown.constBits(), shown.width(), shown.height(), QImage::Format_RGB32));
    }
}

TEST_CASE("a printer that does not take the page, and none at all, are printer errors") {
    DarkPage page({300, 200});
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFileName(QStringLiteral("no such folder/sheet.pdf"));
    page.widget.set_printer(&printer);
    page.widget.control().PrintImage();
    page.widget.set_printer(nullptr);
    page.widget.control().PrintImage(); // the tests' environment names a print server that is not there
    CHECK(page.errors == std::vector<std::string>(2, "Error 482 has occured in qvGraph.ocx, PrintImage"));
}

TEST_CASE("a bitmap file holds the page's pixels") {
    const TemporaryFolder folder;
    for (QSize const size :
         {QSize(301, 200), QSize(300, 201), QSize(302, 7)}) { // rows with and without padding
        DarkPage page(size);
        const QString file = QString::fromStdString((folder.path() / "page.bmp").string());
        page.widget.control().SaveImage(file.toStdString());
        const QImage read(file);
        const QImage shown = page.widget.page();
        REQUIRE(!read.isNull());
        CHECK(content_of(folder.path() / "page.bmp").at(28) == 24); // bits a pixel
        CHECK(read.dotsPerMeterX() == doctest::Approx(96 / 0.0254 * shown.devicePixelRatio()).epsilon(1e-3));
        CHECK(read.convertToFormat(QImage::Format_RGB32)
              == QImage(shown.constBits(), shown.width(), shown.height(), QImage::Format_RGB32));
    }
}

TEST_CASE("the clipboard gets the page in place of what it held") {
    QGuiApplication::clipboard()->setText(QStringLiteral("what was there before"));
    DarkPage page({300, 200});
    page.widget.control().CopyToClipboard();
    CHECK(page.errors.empty());
    QMimeData const* const data = QGuiApplication::clipboard()->mimeData();
    REQUIRE(data);
    CHECK(!data->hasText());
    CHECK(data->hasImage());
    for (std::string_view const type : output::clipboard_types)
        CHECK(data->hasFormat(QString::fromUtf8(type.data(), static_cast<int>(type.size()))));
}

TEST_CASE("a clipboard that another takes meanwhile is reported") {
    DarkPage page({300, 200});
    bool taken = false;
    QClipboard& clipboard = *QGuiApplication::clipboard();
    auto const thief = QObject::connect(&clipboard, &QClipboard::dataChanged, [&] {
        if (taken || !clipboard.mimeData() || !clipboard.mimeData()->hasImage()) return;
        taken = true;
        clipboard.setText(QStringLiteral("what another copied"));
    });
    page.widget.control().CopyToClipboard();
    QObject::disconnect(thief);
    REQUIRE(taken);
    REQUIRE(page.errors.size() == 1);
    CHECK(page.errors[0].starts_with("Error 521 has occured in qvGraph.ocx, CopyToClipboard"));
    CHECK(clipboard.text() == "what another copied");
}

TEST_SUITE("display") {
    TEST_CASE("another program finds the page on the clipboard") {
        DarkPage page({300, 200});
        page.widget.show();
        REQUIRE(QTest::qWaitForWindowExposed(&page.widget));
        page.widget.control().CopyToClipboard();
        REQUIRE(page.errors.empty());
        const QImage shown = page.widget.page();
        for (char const* type : {"image/png", "image/bmp"}) {
            CAPTURE(type);
            QProcess reader; // the event loop runs on, to answer it
            reader.start("xclip", {"-selection", "clipboard", "-target", type, "-out"});
            REQUIRE(QTest::qWaitFor([&] { return reader.state() == QProcess::NotRunning; }, 10000));
            const QImage read = QImage::fromData(reader.readAllStandardOutput());
            CHECK(read.convertToFormat(QImage::Format_RGB32)
                  == QImage(shown.constBits(), shown.width(), shown.height(), QImage::Format_RGB32));
        }
    }
}

TEST_SUITE("queue") {
    TEST_CASE("the system's default printer prints the page") {
        const std::filesystem::path printed = qgetenv("QV_PRINTED_FILE").toStdString();
        DarkPage page({600, 300});
        page.widget.control().PrintImage();
        REQUIRE(page.errors.empty());
        // The queue's filters run in processes of their own.
        REQUIRE(QTest::qWaitFor(
            [] { return std::system("test -z \"$(lpstat -o)\" && test -s \"$QV_PRINTED_FILE\"") == 0; },
            60000));
        const PrintedSheet sheet = measure_sheet(printed);
        const host::PaperSize paper{sheet.width_mm / 25.4 * twips_per_inch,
                                    sheet.height_mm / 25.4 * twips_per_inch};
        check_box(sheet.ink_mm,
                  in_mm(interact::place_on_paper(paper, height_to_width(page.widget.page()), false)), 0.5);
    }
}
