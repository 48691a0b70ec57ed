// What a form keeps of a page, and what follows the desktop.
#include "widget.h"

#include "document/ControlState.h"
#include "hosts/qt/page_settings.h"

#include <QtGui/QContextMenuEvent>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QStyleFactory>

#include <doctest/doctest.h>

namespace qv::test {
namespace {

QPalette desktop(QColor const& ground, QColor const& text) {
    QPalette palette(ground);
    for (const QPalette::ColorRole role : {QPalette::Window, QPalette::Base, QPalette::Button})
        palette.setColor(role, ground);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, text);
    return palette;
}
QPalette light_desktop() {
    return desktop(QColor(240, 240, 240), Qt::black);
}
QPalette dark_desktop() {
    return desktop(QColor(40, 40, 40), Qt::white);
}

/// The desktop as it was, whatever a test has made of it.
struct DesktopScope {
    QPalette palette = QApplication::palette();
    QFont font = QApplication::font();
    ~DesktopScope() {
        QApplication::setStyle(QStyleFactory::create("Fusion"));
        QApplication::setPalette(palette);
        QApplication::setFont(font);
    }
};

double brightness(QWidget& widget) {
    const QImage seen = widget.grab().toImage();
    double sum = 0;
    for (int y = 0; y < seen.height(); ++y)
        for (int x = 0; x < seen.width(); ++x) sum += qGray(seen.pixel(x, y));
    return sum / seen.width() / seen.height();
}

TEST_CASE("everything beside the picture follows the desktop's colours at once") {
    const DesktopScope as_before;
    QApplication::setPalette(light_desktop());
    ShownWidget shown;
    qvGraph& page = shown.widget.control();
    page.NewGraph("G", 0, 10, 0, 10);
    page.NewDataSet("line");
    page.AddDataPoint(3, 3);
    page.Refresh();
    QWidget& view = shown.widget.page_view();
    QTest::keyClick(&view, Qt::Key_Plus);
    QTest::keyClick(&view, Qt::Key_Right, Qt::ControlModifier);
    QContextMenuEvent ask(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(&view, &ask);
    auto* const menu = shown.widget.findChild<QMenu*>("PageMenu");
    REQUIRE(menu != nullptr);
    const QImage picture = shown.widget.page().copy();
    std::vector<QWidget*> const parts{&shown.widget.Label1(), &shown.widget.HScroll1(),
                                      &shown.widget.VScroll1(), menu};
    for (QWidget* const part : parts) {
        REQUIRE(part->isVisible());
        CHECK(brightness(*part) > 150);
    }
    QApplication::setPalette(dark_desktop());
    QCoreApplication::processEvents();
    for (QWidget* const part : parts) CHECK(brightness(*part) < 110);
    CHECK(different_pixels(picture, shown.widget.page()) == 0); // its colours are the program's

    QPalette own = shown.widget.Label1().palette();
    own.setColor(QPalette::Window, Qt::yellow);
    shown.widget.Label1().setPalette(own);
    QApplication::setPalette(light_desktop());
    CHECK(shown.widget.Label1().grab().toImage().pixelColor(1, 1) == Qt::yellow);
    delete menu;
}

TEST_CASE("the room beside the page follows the desktop's style and font") {
    const DesktopScope as_before;
    ShownWidget shown;
    QFont font = QApplication::font();
    font.setPointSize(font.pointSize() * 2);
    QApplication::setFont(font);
    CHECK(control::state_of(shown.widget.control()).Label1.Height
          == doctest::Approx((shown.widget.Label1().fontMetrics().height() + 2) * 15));
    for (char const* const name : {"Windows", "Fusion"}) {
        QApplication::setStyle(QStyleFactory::create(name));
        int const bar =
            shown.widget.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &shown.widget.HScroll1());
        CHECK(shown.widget.width() - shown.widget.page_view().width() == bar);
    }
}

TEST_CASE("a page has the look of its property, or the desktop's where it is to follow that") {
    const DesktopScope as_before;
    QApplication::setPalette(light_desktop());
    QCoreApplication::processEvents();
    qt::QvGraphWidget widget;
    qvGraph& page = widget.control();
    QSignalSpy const errors(&widget, &qt::QvGraphWidget::ErrorMsg);
    auto const ground = [&] { return qGray(widget.page().pixel(0, 0)); };
    widget.set_look("");
    CHECK(page.LookName() == "classic");
    widget.set_look("dark");
    CHECK(page.LookName() == "dark");
    CHECK(ground() < 100); // shown at once
    widget.set_look("");
    CHECK(page.LookName() == "classic");
    widget.set_look("print");

    CHECK(widget.setProperty("followDesktop", true));
    CHECK(page.LookName() == "light");
    QApplication::setPalette(dark_desktop());
    QCoreApplication::processEvents();
    CHECK(page.LookName() == "dark");
    CHECK(ground() < 100);
    widget.set_look("light"); // kept for later
    CHECK(page.LookName() == "dark");
    QApplication::setPalette(light_desktop());
    QCoreApplication::processEvents();
    CHECK(page.LookName() == "light");
    widget.set_follows_desktop(false);
    QApplication::setPalette(dark_desktop());
    QCoreApplication::processEvents();
    CHECK(page.LookName() == "light");

    CHECK(errors.isEmpty());
    CHECK(widget.setProperty("look", "no such look"));
    CHECK(errors.size() == 1);
    CHECK(page.LookName() == "light");
}

TEST_CASE("dark is a palette whose texts are brighter than their ground") {
    CHECK(qt::is_dark(dark_desktop()));
    CHECK_FALSE(qt::is_dark(light_desktop()));
    CHECK_FALSE(qt::is_dark(desktop(Qt::gray, Qt::gray)));
}

TEST_CASE("a title makes the first graph, and names the one that is there") {
    qt::QvGraphWidget widget;
    qvGraph& page = widget.control();
    QSignalSpy const errors(&widget, &qt::QvGraphWidget::ErrorMsg);
    auto const first = [&]() -> document::Graph& { return *control::state_of(page).Graphs.at(0); };
    auto const name = [&] { return control::state_of(page).GraphTitles.at(0); };
    widget.set_title("");
    CHECK(page.NumGraphs() == 0);
    widget.set_title(QString::fromUtf8("Größe"));
    REQUIRE(page.NumGraphs() == 1);
    CHECK(name() == "Größe");
    CHECK(first().Axes.size() == 2);
    CHECK_FALSE(first().GraphNotDrawn);

    page.GraphTitleHShift(2.5F);
    page.NewGraph("second");
    page.Refresh();
    QSignalSpy const fronts(&widget, &qt::QvGraphWidget::NewGraphInFront);
    widget.set_title("new");
    CHECK(name() == "new");
    CHECK(first().GraphTitleHShift == 2.5F);
    CHECK(page.GetSelectedGraph() == 1);
    CHECK(control::state_of(page).GraphOrder == std::vector<std::int16_t>{0, 1});
    CHECK(fronts.isEmpty());
    widget.set_title("");
    CHECK_FALSE(first().GraphShowTitle);
    CHECK(widget.property("title") == QVariant(QString()));
    widget.set_title("again");
    CHECK(first().GraphShowTitle);
    page.Reset();
    widget.set_title("after all");
    CHECK(page.NumGraphs() == 1);
    CHECK(errors.isEmpty());
}

} // namespace
} // namespace qv::test
