// A person's hands on the real widget, beside the same input given to a host without a window.
#include "control/state_of.h"
#include "interact/zoom.h"
#include "render/plot_geometry.h"
#include "widget.h"

#include <QtCore/QElapsedTimer>
#include <QtGui/QAccessible>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStyleOptionSlider>

#include <doctest/doctest.h>

namespace qv::test {
namespace {

constexpr QSize page_units{600, 400};

/// A page with two graphs, a legend and fixed ranges, so that fonts decide nothing.
void draw_two_graphs(qvGraph& page) {
    for (int i = 0; i < 2; ++i) {
        page.NewGraph(i == 0 ? "left" : "right", 0, 10, 0, 10);
        page.GraphPosition({.Left = 50.0F * static_cast<float>(i), .Top = 0, .Width = 48, .Height = 95});
        page.NewDataSet("line");
        for (int x = 0; x <= 10; ++x) page.AddDataPoint(x, x);
    }
    page.Refresh();
}

struct Both {
    ShownWidget shown{page_units};
    headless::HeadlessHost host{PixelSize{page_units.width(), page_units.height()}};
    QWidget& view = shown.widget.page_view();

    Both() {
        draw_two_graphs(shown.widget.control());
        draw_two_graphs(host.control());
    }

    void drag(QPoint from, QPoint to, Qt::KeyboardModifiers keys = Qt::NoModifier) {
        QTest::mousePress(&view, Qt::LeftButton, keys, from);
        QMouseEvent move(QEvent::MouseMove, to, view.mapToGlobal(to), Qt::NoButton, Qt::LeftButton, keys);
        QApplication::sendEvent(&view, &move);
        QTest::mouseRelease(&view, Qt::LeftButton, keys, to);
        const std::uint8_t shift = keys == Qt::NoModifier ? std::uint8_t{0} : host::shift_key;
        auto const place = [](QPoint at) { return Point{at.x() * 15.0, at.y() * 15.0}; };
        host.input(host::MouseInput{host::MouseKind::Press, host::left_button, shift, place(from)});
        host.input(host::MouseInput{host::MouseKind::Move, host::left_button, shift, place(to)});
        host.input(host::MouseInput{host::MouseKind::Release, host::left_button, shift, place(to)});
    }

    document::Graph& in_widget(std::size_t i) { return *control::state_of(shown.widget.control()).Graphs[i]; }
    document::Graph& in_host(std::size_t i) { return *control::state_of(host.control()).Graphs[i]; }
    void compare() {
        for (std::size_t i = 0; i < 2; ++i) {
            CHECK(interact::shown_ranges(in_widget(i)) == interact::shown_ranges(in_host(i)));
            CHECK(render::frame_box(in_widget(i)) == render::frame_box(in_host(i)));
            CHECK(render::plot_box(in_widget(i)) == render::plot_box(in_host(i)));
            CHECK(in_widget(i).LegendTableTop == doctest::Approx(in_host(i).LegendTableTop).epsilon(0.01));
        }
    }
};

TEST_CASE("a rubber band, dragged graphs, edges and legends do what they do without a window") {
    Both both;
    both.drag({120, 100}, {200, 220});
    CHECK(interact::shown_ranges(both.in_widget(0))[0].first > 0);
    both.compare();
    both.drag({150, 150}, {150, 150}, Qt::ShiftModifier);
    both.compare();
    both.drag({10, 10}, {18, 30}); // the left graph by its border
    CHECK(both.in_widget(0).FrameLeft == 120);
    both.compare();
    const Box right = render::frame_box(both.in_widget(1));
    const QPoint edge(static_cast<int>(right.left / 15) + 1, 200);
    both.drag(edge, {edge.x() + 60, 200});
    CHECK(both.in_widget(1).GraphLeft > 0.55F);
    both.compare();
    const QPoint legend(both.in_widget(1).LegendLeft / 15 + 5, both.in_widget(1).LegendTop / 15 + 5);
    both.drag(legend, {legend.x(), 900}); // beyond the window
    CHECK(both.in_widget(1).LegendTop + both.in_widget(1).LegendHeight
          == both.in_widget(1).FrameTop + both.in_widget(1).FrameHeight);
    both.compare();
}

/// With the mouse, as far as the bar lets it go.
void drag_thumb(QScrollBar& bar, QPoint by) {
    QStyleOptionSlider option;
    option.initFrom(&bar);
    option.orientation = bar.orientation();
    option.subControls = QStyle::SC_All;
    option.minimum = bar.minimum();
    option.maximum = bar.maximum();
    option.pageStep = bar.pageStep();
    option.sliderPosition = option.sliderValue = bar.value();
    option.state |= QStyle::State_Horizontal;
    const QPoint from =
        bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, &bar).center();
    QTest::mousePress(&bar, Qt::LeftButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, from + by, bar.mapToGlobal(from + by), Qt::NoButton, Qt::LeftButton,
                     {});
    // A pointer far across the bar would let the thumb jump back.
    QApplication::sendEvent(&bar, &move);
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, {qBound(1, (from + by).x(), bar.width() - 2), from.y()});
}

TEST_CASE("two fingers on the page zoom it about the place between them") {
    Both both;
    const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
    auto const fingers = [&](int apart, auto step) {
        auto touch = QTest::touchEvent(&both.view, screen.get());
        step(touch, 0, QPoint(150 - apart, 200));
        step(touch, 1, QPoint(150 + apart, 200));
        touch.commit();
        QCoreApplication::processEvents();
    };
    auto const press = [&](auto& touch, int finger, QPoint at) { touch.press(finger, at, &both.view); };
    auto const move = [&](auto& touch, int finger, QPoint at) { touch.move(finger, at, &both.view); };
    auto const release = [&](auto& touch, int finger, QPoint at) { touch.release(finger, at, &both.view); };
    fingers(20, press);
    for (int apart = 25; apart <= 60; apart += 5) fingers(apart, move);
    fingers(60, release);
    document::Shown const across = interact::shown_ranges(both.in_widget(0))[0];
    CHECK(across.last - across.first < 10 * 0.6); // the first steps only tell that it is a pinch
    CHECK(across.last - across.first > 10 * 0.2);
    CHECK(interact::shown_ranges(both.in_widget(1))[0].last == 10);
}

TEST_CASE("scroll bars, read-out and pointer follow") {
    Both both;
    both.drag({120, 100}, {200, 220});
    QScrollBar& across = both.shown.widget.HScroll1();
    REQUIRE(across.isVisible());
    drag_thumb(across, {-4000, 0});
    CHECK(interact::shown_ranges(both.in_widget(0))[0].first == 0);
    drag_thumb(across, {4000, 0});
    CHECK(interact::shown_ranges(both.in_widget(0))[0].last == doctest::Approx(10));
    double const before = interact::shown_ranges(both.in_widget(0))[1].first;
    QScrollBar& down = both.shown.widget.VScroll1();
    QTest::mouseClick(&down, Qt::LeftButton, {}, {down.width() / 2, down.height() - 3}); // the arrow
    CHECK(interact::shown_ranges(both.in_widget(0))[1].first < before);
    QTest::mouseMove(&both.view, {150, 150});
    QCoreApplication::processEvents();
    CHECK(both.shown.widget.Label1().isVisible());
    CHECK(both.shown.widget.Label1().text().contains(", "));
    CHECK(both.view.cursor().shape() == Qt::CrossCursor);
    QTest::mouseMove(&both.view, {10, 10});
    QCoreApplication::processEvents();
    CHECK(both.view.cursor().shape() == Qt::SizeAllCursor);
}

TEST_CASE("the read-out shows all of its text in any font") {
    Both both;
    QLabel& label = both.shown.widget.Label1();
    auto const fits = [&] {
        CAPTURE(label.text().toStdString());
        CAPTURE(label.font().toString().toStdString());
        CHECK(label.isVisible());
        CHECK(label.width() >= label.sizeHint().width());
        CHECK(label.height() >= label.fontMetrics().height());
        host::ScrollBar const& across = control::state_of(both.shown.widget.control()).HScroll1;
        CHECK(across.Left >= (label.x() + label.width()) * 15);
    };
    auto const point_at = [&](QPoint place) {
        QTest::mouseMove(&both.view, place);
        QCoreApplication::processEvents();
    };
    QFont font = both.shown.widget.font();
    for (int const points : {6, 9, 12, 16, 40}) {
        font.setPointSize(points);
        both.shown.widget.setFont(font);
        control::state_of(both.shown.widget.control()).Label1.Border = points % 2 == 0;
        point_at({150, 150 + points});
        fits();
        QTest::keyClick(&both.view, Qt::Key_Right, Qt::ControlModifier); // a longer text
        fits();
        point_at({151, 150 + points});
    }
    font.setFamily("monospace");
    label.setFont(font); // its own, and while it is shown
    fits();
    label.setStyleSheet("QLabel { font-size: 30pt; padding: 7px }");
    fits();
}

TEST_CASE("a read-out wider than the window stands in lines that fit, and lets the pointer through") {
    Both both;
    qt::QvGraphWidget& widget = both.shown.widget;
    QLabel& label = widget.Label1();
    widget.control().SetSelectedGraph(0);
    widget.control().DataLegend("a data set with a name that is much longer than this window is wide");
    QTest::keyClick(&both.view, Qt::Key_Right, Qt::ControlModifier);
    REQUIRE(label.isVisible());
    int const one_line = label.height();
    widget.resize(220, 200);
    QCoreApplication::processEvents();
    CHECK(both.view.width() >= label.geometry().right());
    CHECK(label.height() > 2 * one_line);
    CHECK(label.height() >= label.heightForWidth(label.width()));
    CHECK(widget.rect().contains(label.geometry()));
    CHECK(label.text().endsWith("0, 0"));
    CHECK(widget.childAt(label.geometry().center()) == &both.view);
    widget.resize(900, 400);
    QCoreApplication::processEvents();
    CHECK(label.height() == one_line);
    CHECK(label.width() >= label.sizeHint().width());
}

TEST_CASE("what follows the pointer goes when it leaves the page") {
    Both both;
    both.shown.widget.control().SetCrossHair(1);
    const QImage without = both.shown.widget.page().copy();
    QTest::mouseMove(&both.view, {150, 150});
    QCoreApplication::processEvents();
    CHECK(different_pixels(without, both.shown.widget.page()) > 0);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&both.view, &leave);
    CHECK(different_pixels(without, both.shown.widget.page()) == 0);
    CHECK_FALSE(both.shown.widget.Label1().isVisible());
}

TEST_CASE("a burst of moves is handed over as its latest, in order with presses") {
    struct Counting : qt::QvGraphWidget {
        std::vector<host::MouseInput> inputs;
        bool input(host::Input const& given) override {
            if (auto const* mouse = std::get_if<host::MouseInput>(&given)) inputs.push_back(*mouse);
            return true;
        }
    } widget;
    QWidget& view = widget.page_view();
    auto const move = [&](int x, Qt::MouseButtons held) {
        QApplication::postEvent(&view, new QMouseEvent(QEvent::MouseMove, QPointF(x, 5), QPointF(x, 5),
                                                       Qt::NoButton, held, Qt::NoModifier));
    };
    auto const button = [&](QEvent::Type type) {
        QApplication::postEvent(&view, new QMouseEvent(type, QPointF(1, 5), QPointF(1, 5), Qt::LeftButton,
                                                       Qt::LeftButton, Qt::NoModifier));
    };
    for (int x = 0; x < 200; ++x) move(x, Qt::NoButton);
    button(QEvent::MouseButtonPress);
    for (int x = 0; x < 200; ++x) move(x, Qt::LeftButton);
    button(QEvent::MouseButtonRelease);
    QCoreApplication::processEvents();
    REQUIRE(widget.inputs.size() == 4);
    CHECK(widget.inputs[0].place.x == 199 * 15);
    CHECK(widget.inputs[1].kind == host::MouseKind::Press);
    CHECK(widget.inputs[2].place.x == 199 * 15);
    CHECK(widget.inputs[3].kind == host::MouseKind::Release);
}

TEST_CASE("Tab goes through the graphs and then on") {
    Both both;
    both.shown.widget.control().SetSelectedGraph(0);
    both.view.setFocus();
    QTest::keyClick(&both.view, Qt::Key_Tab);
    CHECK(both.shown.widget.control().GetSelectedGraph() == 1);
    QTest::keyClick(&both.view, Qt::Key_Backtab);
    CHECK(both.shown.widget.control().GetSelectedGraph() == 0);
    QTest::keyClick(&both.view, Qt::Key_Plus);
    CHECK(interact::shown_ranges(both.in_widget(0))[0].last < 10);
}

TEST_CASE("assistive programs read graphs, axes, data sets and the point read by keys") {
    Both both;
    QAccessibleInterface* const page = QAccessible::queryAccessibleInterface(&both.shown.widget);
    REQUIRE(page);
    CHECK(page->text(QAccessible::Name) == "Graph page");
    both.shown.widget.setAccessibleName("two lines");
    CHECK(page->text(QAccessible::Name) == "two lines");
    REQUIRE(page->childCount() > 2);
    QAccessibleInterface* const graph = page->child(1);
    CHECK(graph->text(QAccessible::Name) == "right");
    CHECK(graph->parent() == page);
    CHECK(page->indexOfChild(graph) == 1);
    REQUIRE(graph->childCount() == 3);
    CHECK(graph->child(0)->text(QAccessible::Name) == "x axis x-axis");
    CHECK(graph->child(0)->text(QAccessible::Value) == "0 to 10");
    CHECK(graph->child(2)->text(QAccessible::Name) == "line");
    CHECK(graph->child(2)->text(QAccessible::Value) == "11 points; x 0 to 10; y 0 to 10");
    CHECK(graph->child(2)->parent() == graph);
    CHECK_FALSE(graph->rect().isEmpty());

    QTest::keyClick(&both.view, Qt::Key_Right, Qt::ControlModifier);
    QTest::keyClick(&both.view, Qt::Key_Right, Qt::ControlModifier);
    CHECK(both.view.accessibleDescription() == "line: 1, 1"); // it has the focus
    CHECK(page->text(QAccessible::Value) == "line: 1, 1");
    CHECK(both.shown.widget.Label1().text() == "line: 1, 1");
    both.shown.widget.control().Reset();
    CHECK_FALSE(graph->isValid());
    CHECK(graph->text(QAccessible::Name).isEmpty());
    CHECK(page->text(QAccessible::Value).isEmpty());
}

} // namespace
} // namespace qv::test
