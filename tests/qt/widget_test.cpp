// The page on the screen, the child widgets, and what both cost.
#include "control/state_of.h"
#include "widget.h"

#include "document/selection.h"
#include "interact/scroll_bars.h"
#include "qvgraph/fault.h"

#include <QtWidgets/QLabel>

#include <doctest/doctest.h>

#include <algorithm>
#include <ctime>

namespace qv::test {
namespace {

/// Counts the paint events of a widget and of all its children.
struct PaintCounter : QObject {
    int paints = 0;
    explicit PaintCounter(QWidget& widget) {
        widget.installEventFilter(this);
        for (QWidget* child : widget.findChildren<QWidget*>()) child->installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++paints;
        return false;
    }
    /// The paints since the last call, when all that waits has been done.
    int settled() {
        for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
        return std::exchange(paints, 0);
    }
};

struct ListeningBars : qt::QvGraphWidget {
    std::vector<host::ScrollInput> moved;

protected:
    bool input(host::Input const& given) override {
        if (auto const* scroll = std::get_if<host::ScrollInput>(&given)) moved.push_back(*scroll);
        return QvGraphWidget::input(given);
    }
};

/// Shows the middle half of the front graph's x range, bars laid out.
void zoom(qvGraph& page) {
    page.SetSelectedAxis(0);
    double first = 0, last = 0;
    page.GetAxisRange(first, last);
    document::Axis& axis = document::selected_x_axis(document::current_graph(control::state_of(page)));
    axis.AxisValue1 = first + (last - first) / 4;
    axis.AxisValue2 = last - (last - first) / 4;
    control::state_of(page).Zoomed = true;
    interact::ResizeScrollBars(control::state_of(page));
}

double cpu_milliseconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

TEST_CASE("the page is shown without a copy") {
    ShownWidget shown;
    draw_page(shown.widget.control());
    auto const* const before = picture(shown.widget).pixels().data();
    CHECK(reinterpret_cast<std::uint32_t const*>(shown.widget.page().constBits()) == before);
    shown.widget.resize(shown.widget.size() + QSize(50, 30));
    QCoreApplication::processEvents();
    CHECK(reinterpret_cast<std::uint32_t const*>(shown.widget.page().constBits())
          == picture(shown.widget).pixels().data());
    CHECK(shown.widget.page().size() == QSize(picture(shown.widget).width(), picture(shown.widget).height()));
}

TEST_CASE("what is painted is the page, pixel for pixel, and equals a page without a window") {
    ShownWidget shown({601, 399});
    draw_page(shown.widget.control());
    double const density = shown.widget.devicePixelRatioF();
    const QImage page = shown.widget.page();
    CHECK(page.size() == QSize(int(std::floor(601 * density + 0.5)), int(std::floor(399 * density + 0.5))));
    CHECK(page.devicePixelRatio() == doctest::Approx(density));
    CHECK(different_pixels(page, headless_page(page.size(), 96 * density)) == 0);

    const QImage window = shown.widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QRect page_area(QPoint(0, 0), page.size());
    REQUIRE(window.rect().contains(page_area));
    CHECK(different_pixels(window.copy(page_area), page) == 0);
    // The strip for the scroll bars has the colour of the page beside it.
    CHECK(window.pixelColor(window.width() - 1, 5) == QColor(210, 225, 240));
    CHECK(window.pixelColor(5, window.height() - 1) == QColor(210, 225, 240));
    CHECK(window.pixelColor(window.width() - 1, window.height() - 1) == QColor(210, 225, 240));
}

TEST_CASE("a change of size redraws the page to the new size") {
    ShownWidget shown({600, 400});
    draw_page(shown.widget.control());
    shown.widget.resize(around_page(shown.widget, {421, 313}));
    QCoreApplication::processEvents();
    double const density = shown.widget.devicePixelRatioF();
    CHECK(different_pixels(shown.widget.page(), headless_page(shown.widget.page().size(), 96 * density))
          == 0);
    CHECK(shown.widget.page_view().size() == QSize(421, 313));
    for (const QSize tiny : {QSize(0, 0), QSize(1, 300), QSize(5, 5)}) {
        shown.widget.resize(tiny);
        QCoreApplication::processEvents();
    }
    shown.widget.resize(around_page(shown.widget, {600, 400}));
    QCoreApplication::processEvents();
    CHECK(different_pixels(shown.widget.page(), headless_page(shown.widget.page().size(), 96 * density))
          == 0);
}

TEST_CASE("nothing is painted while nothing changes") {
    ShownWidget shown;
    draw_page(shown.widget.control());
    PaintCounter counter(shown.widget);
    counter.settled();
    CHECK(counter.settled() == 0);
    QTest::mouseMove(shown.widget.windowHandle(), QPoint(40, 40));
    QTest::keyClick(&shown.widget.page_view(), Qt::Key_A);
    shown.widget.control().AxisColor(rgb(255, 0, 0)); // shown with the next refresh, not before
    CHECK(counter.settled() == 0);
    shown.widget.control().Refresh();
    shown.widget.control().Refresh();
    CHECK(counter.settled() == 1);
    shown.widget.resize(shown.widget.size());
    CHECK(counter.settled() == 0);
}

TEST_CASE("a page shown again is not drawn again") {
    ShownWidget shown;
    draw_page(shown.widget.control());
    const QImage before = shown.widget.page().copy();
    shown.widget.control().PageColor1(rgb(255, 0, 0)); // would show if anything redrew the page
    shown.widget.hide();
    shown.widget.show();
    REQUIRE(QTest::qWaitForWindowExposed(&shown.widget));
    CHECK(different_pixels(shown.widget.page(), before) == 0);
}

TEST_CASE("a page of 1200 x 800 pixels is shown in less than a millisecond") {
    double const density = QWidget().devicePixelRatioF();
    ShownWidget shown({int(1200 / density), int(800 / density)});
    draw_page(shown.widget.control());
    QImage target(shown.widget.page().size(), QImage::Format_RGB32);
    target.setDevicePixelRatio(density);
    double least = 1e9;
    for (int i = 0; i < 30; ++i) {
        double const start = cpu_milliseconds();
        shown.widget.page_view().render(&target, {}, {}, QWidget::RenderFlags());
        least = std::min(least, cpu_milliseconds() - start);
    }
    MESSAGE("showing took " << least << " ms");
    CHECK(least < 1);
    CHECK(different_pixels(target, shown.widget.page()) == 0);
}

TEST_CASE("scroll bars and read-out stand where the control puts them") {
    ShownWidget shown;
    qvGraph& page = shown.widget.control();
    draw_page(page);
    CHECK_FALSE(shown.widget.HScroll1().isVisible());
    zoom(page);
    QScrollBar const& across = shown.widget.HScroll1();
    QScrollBar const& down = shown.widget.VScroll1();
    CHECK(across.isVisible());
    CHECK(down.isVisible());
    CHECK(across.geometry() == QRect(0, 400, 600, shown.widget.height() - 400));
    CHECK(down.geometry() == QRect(600, 0, shown.widget.width() - 600, 400));
    document::ControlState const& state = control::state_of(page);
    CHECK(across.maximum() == 1000);
    CHECK(across.minimum() == 0);
    CHECK(across.value() == state.HScroll1.Value);
    CHECK(across.value() == 500);
    CHECK(across.pageStep() == 500);
    CHECK(across.singleStep() == 10);
    CHECK(down.pageStep() == 1000);

    page.SetShowXYcoords(true);
    control::state_of(page).Label1.Width = 1500;
    control::state_of(page).Label1.Caption = "<b>1</b>, 2";
    interact::ResizeScrollBars(control::state_of(page));
    CHECK(shown.widget.Label1().isVisible());
    CHECK(shown.widget.Label1().text() == "<b>1</b>, 2");
    CHECK(shown.widget.Label1().textFormat() == Qt::PlainText);
    CHECK(shown.widget.Label1().width() == 100);
    CHECK(across.x() == 107); // 1600 twips
    page.Reset();
    CHECK_FALSE(across.isVisible());
    CHECK(shown.widget.Label1().text().isEmpty());
}

TEST_CASE("a person's scrolling is heard once, the control's own never") {
    ListeningBars widget;
    draw_page(widget.control());
    zoom(widget.control());
    CHECK(widget.moved.empty());
    QScrollBar& across = widget.HScroll1();
    across.triggerAction(QAbstractSlider::SliderSingleStepAdd);
    across.setSliderDown(true);
    across.setSliderPosition(700);
    across.setSliderDown(false);
    widget.VScroll1().setValue(3);
    using host::Bar;
    const std::vector<host::ScrollInput> expected{{Bar::HScroll1, 510, false},
                                                  {Bar::HScroll1, 700, true},
                                                  {Bar::HScroll1, 700, false},
                                                  {Bar::VScroll1, 3, false}};
    CHECK(widget.moved == expected);
    CHECK(control::state_of(widget.control()).HScroll1.Value == 700);
    CHECK(control::state_of(widget.control()).VScroll1.Value == 3);
    interact::SetScrollBars(control::state_of(widget.control())); // the axes have followed
    CHECK(across.value() == 700);
    CHECK(widget.moved.size() == expected.size());
}

TEST_CASE("style and font decide how much room the child widgets take") {
    ShownWidget shown;
    draw_page(shown.widget.control());
    QFont font = shown.widget.font();
    font.setPointSize(40);
    shown.widget.setFont(font);
    CHECK(control::state_of(shown.widget.control()).Label1.Height > 40 * twips_per_point);
    shown.widget.setStyleSheet("QScrollBar:horizontal { height: 31px } QScrollBar:vertical { width: 31px }");
    QCoreApplication::processEvents();
    const QSize page = shown.widget.size() - shown.widget.page_view().size();
    double const thickness = control::state_of(shown.widget.control()).HScroll1.Height;
    CHECK(page == QSize(int(thickness / 15), int(thickness / 15)));
}

TEST_CASE("the tooltip belongs to the page") {
    qt::QvGraphWidget widget;
    widget.control().SetTooltip("drag to zoom");
    CHECK(widget.page_view().toolTip() == "drag to zoom");
    CHECK(widget.HScroll1().toolTip().isEmpty());
}

TEST_CASE("properties by name take and give Qt's values") {
    qt::QvGraphWidget widget;
    CHECK_THROWS_AS(widget.Get("AxisColor"), Fault);
    widget.control().NewGraph("G");
    struct Row {
        char const* name;
        QVariant given, got;
    };
    const Row rows[] = {{"AxisColor", QColor(1, 2, 3), 0x030201},
                        {"AxisColor", 0x00FF00, 0x00FF00},
                        {"AxisGridMajor", true, true},
                        {"AxisMajorDivs", 7, 7},
                        {"AxisMajorDivs", 7.4, 7},
                        {"AxisValue2", 12.5F, 12.5},
                        {"axistitle", "Größe", "Größe"},
                        {"AxisMajorDivs", qlonglong(9), 9}};
    for (Row const& row : rows) {
        INFO(row.name);
        widget.Let(row.name, row.given);
        CHECK(widget.Get(row.name) == row.got);
    }
    CHECK_THROWS_AS(widget.Let("AxisMajorDivs", QPoint(1, 2)), Fault);
    CHECK_THROWS_AS(widget.Let("AxisMajorDivs", 1e9), Fault);
}

} // namespace
} // namespace qv::test
