// The real window: what a person does to it, and its scroll bars and legend afterwards.
#include "control/state_of.h"
#include "qvplot/plot_window.h"

#include "document/selection.h"
#include "temporary_folder.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QShortcut>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QScrollBar>

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>

using namespace qv;
using namespace qv::plot;

namespace {

PlotData two_columns() {
    PlotData data{"t", false, {{"wave", {}, {}, false}, {"line", {}, {}, true}}};
    for (int k = 0; k <= 1000; ++k) {
        double const x = k / 10.0;
        data.series[0].x.push_back(x);
        data.series[0].y.push_back(std::sin(x));
        data.series[1].x.push_back(x);
        data.series[1].y.push_back(1000 + x);
    }
    return data;
}

struct Window {
    PlotWindow widget;
    Window() : widget(two_columns(), sized()) {
        widget.show();
        settle();
    }
    static PlotOptions sized() {
        PlotOptions options;
        options.size = {700, 450};
        return options;
    }
    static void settle() {
        for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
    }
    document::Graph const& graph() { return document::current_graph(control::state_of(widget.control())); }
    document::Axis const& axis(std::size_t i) { return graph().Axes[i]; }

    void resize(int width, int height) {
        widget.resize(width, height);
        settle();
    }
    void mouse(QEvent::Type type, QPoint place, Qt::MouseButton button) {
        bool const released = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, place, widget.page_view().mapToGlobal(place),
                          type == QEvent::MouseMove ? Qt::NoButton : button,
                          released ? Qt::MouseButtons() : Qt::MouseButtons(button), Qt::NoModifier);
        QCoreApplication::sendEvent(&widget.page_view(), &event);
        settle();
    }
    void drag(QPoint from, QPoint to, Qt::MouseButton button) {
        QMouseEvent hover(QEvent::MouseMove, from, widget.page_view().mapToGlobal(from), Qt::NoButton,
                          Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&widget.page_view(), &hover);
        settle();
        mouse(QEvent::MouseButtonPress, from, button);
        mouse(QEvent::MouseMove, (from + to) / 2, button);
        mouse(QEvent::MouseMove, to, button);
        mouse(QEvent::MouseButtonRelease, to, button);
    }
    void wheel(QPoint place, int notches) {
        QWheelEvent event(place, widget.page_view().mapToGlobal(place), {}, {0, 120 * notches}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&widget.page_view(), &event);
        settle();
    }

    /// Where the thumb's middle stands along its bar, and where what is seen stands in all there is.
    void check_bar(QScrollBar& bar, document::Axis const& shown, bool upwards) {
        double const room = (shown.ScaleMax - shown.ScaleMin) - (shown.AxisValue2 - shown.AxisValue1);
        double const place = (shown.AxisValue1 - shown.ScaleMin) / room;
        double const at = static_cast<double>(bar.value() - bar.minimum()) / (bar.maximum() - bar.minimum());
        CHECK(bar.isVisible());
        CHECK((upwards ? 1 - at : at) == doctest::Approx(place).epsilon(0.02));
    }
    void check_bars() {
        check_bar(widget.HScroll1(), axis(0), false);
        check_bar(widget.VScroll1(), axis(1), true);
    }
};

} // namespace

TEST_CASE("scroll bars agree with what is shown after every wheel turn, pan, box, scroll and step back") {
    Window window;
    double const full = window.axis(0).AxisValue2 - window.axis(0).AxisValue1;
    for (int i = 0; i < 4; ++i) {
        window.wheel({300, 200}, 2);
        window.check_bars();
    }
    CHECK(window.axis(0).AxisValue2 - window.axis(0).AxisValue1 < full / 4);
    double const before = window.axis(0).AxisValue1;
    window.drag({300, 200}, {420, 230}, Qt::MiddleButton);
    CHECK(window.axis(0).AxisValue1 != before);
    window.check_bars();
    window.drag({200, 100}, {330, 210}, Qt::LeftButton);
    window.check_bars();
    window.widget.HScroll1().triggerAction(QAbstractSlider::SliderPageStepAdd);
    window.settle();
    window.check_bars();
    window.wheel({300, 200}, -60);
    CHECK(window.axis(0).AxisValue2 - window.axis(0).AxisValue1 == full);
    CHECK_FALSE(window.widget.HScroll1().isVisible());
}

TEST_CASE("a new size keeps what is zoomed and where the legend was put") {
    Window window;
    document::Graph const& graph = window.graph();
    REQUIRE(graph.LegendShow);
    auto const pixels = [](std::int32_t twips) { return static_cast<int>(twips / 15); };
    const QPoint legend{pixels(graph.LegendLeft + graph.LegendWidth / 2),
                        pixels(graph.LegendTop + graph.LegendHeight / 2)};
    window.drag(legend, {320, 220}, Qt::LeftButton);
    float const left = graph.LegendTableLeft, top = graph.LegendTableTop;
    REQUIRE(pixels(graph.LegendLeft + graph.LegendWidth / 2) == doctest::Approx(320).epsilon(0.02));
    window.wheel({500, 300}, 6);
    double const x1 = window.axis(0).AxisValue1, y2 = window.axis(1).AxisValue2;
    const std::int32_t width = graph.FrameWidth;
    window.resize(950, 600);
    CHECK(graph.FrameWidth > width);
    CHECK(window.axis(0).AxisValue1 == x1);
    CHECK(window.axis(1).AxisValue2 == y2);
    CHECK(window.axis(0).ScaleMin == -5);
    CHECK(window.axis(0).ScaleMax == 105);
    CHECK(graph.LegendTableLeft == left);
    CHECK(graph.LegendTableTop == top);
    window.check_bars();
    // Too small for a legend, and back.
    window.resize(64, 60);
    CHECK_FALSE(graph.LegendShow);
    window.resize(950, 600);
    CHECK(graph.LegendShow);
    CHECK(graph.LegendTableLeft == left);
    window.check_bars();
}

namespace {

/// Lets a window work until something holds, or for so long that it never will.
bool comes_to(auto const& holds) {
    QElapsedTimer watch;
    watch.start();
    constexpr qint64 longest = 20000; // milliseconds
    while (!holds() && watch.elapsed() < longest)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 50);
    return holds();
}

document::Graph const& graph_of(PlotWindow& window) {
    return document::current_graph(control::state_of(window.control()));
}

} // namespace

TEST_CASE("the title names the file, and keys copy, undo and close") {
    PlotOptions options = Window::sized();
    options.files = {"some/where/day.csv", "night.csv"};
    PlotWindow window(two_columns(), options);
    CHECK(window.windowTitle() == "day.csv, night.csv - qvplot");
    window.show();
    Window::settle();
    auto const has_keys = [&](char const* keys) {
        for (QShortcut const* shortcut : window.findChildren<QShortcut*>())
            if (shortcut->key() == QKeySequence(keys)) return true;
        return false;
    };
    for (char const* keys : {"Ctrl+C", "Ctrl+S", "Ctrl+P", "Ctrl+Z", "Ctrl+0", "F1", "Ctrl+W", "Ctrl+Q"}) {
        CAPTURE(keys);
        CHECK(has_keys(keys));
    }
    auto const press = [&](char const* keys) {
        for (QShortcut* shortcut : window.findChildren<QShortcut*>())
            if (shortcut->key() == QKeySequence(keys)) Q_EMIT shortcut->activated();
        Window::settle();
    };
    double const full = graph_of(window).Axes[0].AxisValue2;
    QWheelEvent wheel(QPointF(300, 200), window.page_view().mapToGlobal(QPointF(300, 200)), {}, {0, 480},
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&window.page_view(), &wheel);
    Window::settle();
    CHECK(graph_of(window).Axes[0].AxisValue2 != full);
    press("Ctrl+0");
    CHECK(graph_of(window).Axes[0].AxisValue2 == full);
    CHECK_FALSE(window.do_menu_entry("Nonsense"));
    press("Ctrl+W");
    CHECK_FALSE(window.isVisible());
}

TEST_CASE("a file that changes is drawn anew, and one that cannot be read leaves the page as it is") {
    const test::TemporaryFolder folder;
    PlotOptions options = Window::sized();
    options.watch = true;
    options.files = {folder.file("a.csv", "x,n\n1,2\n2,3\n")};
    PlotWindow window(read_series(options), options);
    window.show();
    Window::settle();
    auto const high = [&] { return graph_of(window).Axes[0].AxisValue2; };
    REQUIRE(high() < 10);
    folder.file("a.csv", "x,n\n1,2\n20,3\n");
    CHECK(comes_to([&] { return high() > 15; }));
    // Another file in its place.
    std::filesystem::rename(folder.file("b.csv", "x,n\n1,2\n200,3\n"), options.files[0]);
    CHECK(comes_to([&] { return high() > 150; }));
}

TEST_CASE("a file that grows is drawn as it comes") {
    const test::TemporaryFolder folder;
    PlotOptions options = Window::sized();
    options.follow = options.reading.early = true;
    options.latest = 3;
    options.files = {folder.file("a.csv", "x,n\n1,2\n2,3\n")};
    PlotWindow window(options);
    window.show();
    auto const points = [&] { return graph_of(window).DataSets[0].points.size(); };
    CHECK(comes_to([&] { return points() == 2; }));
    std::ofstream(options.files[0], std::ios::app) << "3,4\n4,5\n500,";
    CHECK(comes_to([&] { return points() == 3; }));
    std::ofstream(options.files[0], std::ios::app) << "6\n";
    CHECK(comes_to([&] { return graph_of(window).Axes[0].AxisValue2 > 400; }));
}
