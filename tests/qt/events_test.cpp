// From a person's input to the control, and from the control's events to signals.
#include "control/state_of.h"
#include "widget.h"

#include "qvgraph/fault.h"

#include <QtGui/QPointingDevice>
#include <QtGui/QWheelEvent>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QLabel>

#include <doctest/doctest.h>

namespace qv::test {
namespace {

using host::MouseKind;

/// Keeps what a person did, before the control gets it.
struct ListeningWidget : qt::QvGraphWidget {
    std::vector<host::Input> inputs;
    template <class Kind>
    std::vector<Kind> of_kind() const {
        std::vector<Kind> found;
        for (host::Input const& given : inputs)
            if (auto const* input = std::get_if<Kind>(&given)) found.push_back(*input);
        return found;
    }

protected:
    bool input(host::Input const& given) override {
        inputs.push_back(given);
        return QvGraphWidget::input(given);
    }
};

/// Stands around the graph as a dialog would, and counts the keys that come out of it.
struct Surroundings : QWidget {
    int keys = 0;

protected:
    void keyPressEvent(QKeyEvent*) override { ++keys; }
};

/// The second press of a double click and its release, so that no button stays down for the next test.
void double_click(qt::QvGraphWidget& widget, Qt::MouseButton button) {
    QTest::mouseDClick(&widget.page_view(), button);
    QTest::mouseRelease(&widget.page_view(), button);
}

TEST_CASE("every event becomes its signal, with values") {
    qt::QvGraphWidget widget;
    struct Row {
        QSignalSpy spy;
        void (*raise)(host::EventSink&);
        QVariantList arguments;
    };
    using Q = qt::QvGraphWidget;
    static double x = 1.5, y = -2.5;
    std::int16_t static key = 97;
    std::string static source = "where", description = "was \u00e4u\u00dferst";
    Row rows[] = {
        {{&widget, &Q::Click}, [](host::EventSink& to) { to.Click(x, y); }, {1.5, -2.5}},
        {{&widget, &Q::DblClick}, [](host::EventSink& to) { to.DblClick(x, y); }, {1.5, -2.5}},
        {{&widget, &Q::MouseMove}, [](host::EventSink& to) { to.MouseMove(x, y); }, {1.5, -2.5}},
        {{&widget, &Q::KeyPress},
         [](host::EventSink& to) { to.KeyPress(key, x, y); },
         {QVariant::fromValue<short>(97), 1.5, -2.5}},
        {{&widget, &Q::NewGraphInFront}, [](host::EventSink& to) { to.NewGraphInFront(); }, {}},
        {{&widget, &Q::GraphScaleChanged}, [](host::EventSink& to) { to.GraphScaleChanged(); }, {}},
        {{&widget, &Q::GraphPositionChanged}, [](host::EventSink& to) { to.GraphPositionChanged(); }, {}},
        {{&widget, &Q::LegendPositionChanged}, [](host::EventSink& to) { to.LegendPositionChanged(); }, {}},
        {{&widget, &Q::MarkMoved},
         [](host::EventSink& to) {
             double values[]{1, -2, 3, 4.5};
             std::int16_t graph = 2, data_set = 3;
             to.MarkMoved(graph, data_set, values[0], values[1], values[2], values[3]);
         },
         {QVariant::fromValue<short>(2), QVariant::fromValue<short>(3), 1.0, -2.0, 3.0, 4.5}},
        {{&widget, &Q::ErrorMsg},
         [](host::EventSink& to) { to.ErrorMsg(source, description); },
         {"where", QString::fromUtf8("was \u00e4u\u00dferst")}},
    };
    for (Row& row : rows) {
        row.raise(*control::state_of(widget.control()).events);
        INFO(row.spy.signal().toStdString());
        int others = 0;
        for (Row& other : rows) others += static_cast<int>(other.spy.size());
        REQUIRE(others == 1);
        REQUIRE(row.spy.size() == 1);
        CHECK(row.spy.takeFirst() == row.arguments);
    }
}

TEST_CASE("what the control does of itself is heard") {
    qt::QvGraphWidget widget;
    QSignalSpy in_front(&widget, &qt::QvGraphWidget::NewGraphInFront);
    QSignalSpy scale(&widget, &qt::QvGraphWidget::GraphScaleChanged);
    QSignalSpy errors(&widget, &qt::QvGraphWidget::ErrorMsg);
    draw_page(widget.control());
    CHECK(scale.size() > 0);
    CHECK(in_front.isEmpty());
    widget.control().SetSelectedGraph(0);
    CHECK(in_front.size() == 1);
    CHECK(errors.isEmpty());
    widget.control().Reset();
    widget.control().AxisStyle();
    REQUIRE(errors.size() == 1);
    CHECK(errors[0][0].toString() == "Error 9 has occured in qvGraph.ocx, AxisStyle");
}

TEST_CASE("clicks reach the control where the pointer is") {
    ListeningWidget widget;
    QSignalSpy double_clicks(&widget, &qt::QvGraphWidget::DblClick);
    QTest::mousePress(&widget.page_view(), Qt::LeftButton, Qt::ShiftModifier, {20, 30});
    QTest::mouseRelease(&widget.page_view(), Qt::LeftButton, Qt::NoModifier, {21, 30});
    double_click(widget, Qt::RightButton);
    CHECK(double_clicks.isEmpty());
    double_click(widget, Qt::LeftButton);
    CHECK(double_clicks.size() == 1);
    const std::vector<host::MouseInput> inputs = widget.of_kind<host::MouseInput>();
    REQUIRE(inputs.size() >= 2);
    CHECK(inputs[0] == host::MouseInput{MouseKind::Press, 1, host::shift_key, {300, 450}});
    CHECK(inputs[1] == host::MouseInput{MouseKind::Release, 1, 0, {315, 450}});
}

TEST_CASE("moves come without a button, and from outside while one is held") {
    ListeningWidget widget;
    widget.resize(400, 300);
    widget.show();
    REQUIRE(QTest::qWaitForWindowExposed(&widget));
    widget.inputs.clear();
    QWindow* const window = widget.windowHandle();
    QTest::mouseMove(window, QPoint(50, 60));
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, {50, 60});
    QTest::mouseMove(window, QPoint(390, 295)); // beside the page, on the strip of the scroll bars
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, {390, 295});
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, {390, 295});
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, {390, 295});
    const std::vector<host::MouseInput> expected{
        {MouseKind::Move, 0, 0, {750, 900}},
        {MouseKind::Press, 1, 0, {750, 900}},
        {MouseKind::Move, 1, 0, {5850, 4425}},
        {MouseKind::Release, 1, 0, {5850, 4425}},
    };
    CHECK(widget.of_kind<host::MouseInput>() == expected);
}

TEST_CASE("character keys raise KeyPress and go on to the parent; other keys only go on") {
    Surroundings dialog;
    qt::QvGraphWidget widget(&dialog);
    QSignalSpy keys(&widget, &qt::QvGraphWidget::KeyPress);
    QTest::keyClick(&widget.page_view(), Qt::Key_B);
    QTest::keyClick(&widget.page_view(), Qt::Key_Escape);
    QTest::keyClick(&widget.page_view(), Qt::Key_Left);
    QTest::sendKeyEvent(QTest::Press, &widget.page_view(), Qt::Key_unknown, QString(QChar(0xFFFD)),
                        Qt::NoModifier);
    REQUIRE(keys.size() == 3);
    CHECK(keys[0][0].toInt() == 'b');
    CHECK(keys[1][0].toInt() == 27);
    CHECK(keys[2][0].toInt() == 0xFFFD - 0x10000);
    CHECK(dialog.keys == 4);

    struct Taking : host::EventSink {
        void KeyPress(std::int16_t& KeyAscii, double&, double&) override { KeyAscii = 0; }
    } taking;
    widget.control().set_events(&taking);
    QTest::keyClick(&widget.page_view(), Qt::Key_B);
    widget.control().set_events(nullptr);
    CHECK(dialog.keys == 4);
}

TEST_CASE("wheel turns and focus are passed on") {
    Surroundings window;
    ListeningWidget widget;
    widget.setParent(&window);
    QWheelEvent turn({10, 10}, {10, 10}, {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                     false);
    QApplication::sendEvent(&widget.page_view(), &turn);
    CHECK(widget.of_kind<host::WheelInput>() == std::vector{host::WheelInput{-1, 0, 0, {150, 150}}});
    CHECK_FALSE(turn.isAccepted()); // so that Qt offers it to the parents

    window.show();
    window.activateWindow();
    REQUIRE(QTest::qWaitForWindowActive(&window));
    widget.setFocus();
    CHECK(widget.page_view().hasFocus());
    widget.clearFocus();
    const std::vector<host::FocusInput> expected{{true}, {false}};
    CHECK(widget.of_kind<host::FocusInput>() == expected);
}

TEST_CASE("a failing handler is reported, not thrown into Qt") {
    qt::QvGraphWidget widget;
    QSignalSpy errors(&widget, &qt::QvGraphWidget::ErrorMsg);
    struct Failing : host::EventSink {
        host::EventSink& signals_sink;
        explicit Failing(host::EventSink& sink) : signals_sink(sink) {}
        void DblClick(double&, double&) override { raise_fault(FaultNumber::SubscriptOutOfRange); }
        void ErrorMsg(std::string& Source, std::string& Description) override {
            signals_sink.ErrorMsg(Source, Description);
        }
    } failing(*control::state_of(widget.control()).events);
    widget.control().set_events(&failing);
    double_click(widget, Qt::LeftButton);
    widget.control().set_events(nullptr);
    REQUIRE(errors.size() == 1);
    CHECK(errors[0][0].toString() == "Error 9 has occured in qvGraph.ocx, Picture1");
}

TEST_CASE("a widget that has the focus goes quietly") {
    QWidget window;
    auto widget = std::make_unique<ListeningWidget>();
    widget->setParent(&window);
    window.show();
    window.activateWindow();
    REQUIRE(QTest::qWaitForWindowActive(&window));
    widget->setFocus();
    widget.reset();
    CHECK(window.focusWidget() == nullptr);
}

} // namespace
} // namespace qv::test
