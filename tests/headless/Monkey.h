// Somebody who does anything at all to pages of every kind, as chance will have it.
#pragma once

#include "Person.h"

#include "control/members_by_name.h"
#include "document/selection.h"

#include <array>
#include <cmath>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace qv::testing {

/// Any number; the same sequence of them leads to the same deeds.
using Chance = std::function<std::uint32_t()>;

/// Does what a person can do with mouse, wheel and keys, on pages that it makes.
class Monkey : public Person {
public:
    explicit Monkey(Chance chance) : chance_(std::move(chance)) { fill_page(); }

    void act() {
        switch (below(24)) {
        case 0: return fill_page();
        case 1: return host.resize_picture({1 + below(900), 1 + below(700)});
        case 2: return below(2) ? page.Refresh() : leave();
        case 3: return scroll(below(2) ? host::Bar::HScroll1 : host::Bar::VScroll1, below(1200) - 100);
        case 4: return type();
        case 5: return turn();
        case 6: return add_points();
        case 7:
        case 8:
        case 9:
        case 10: return change_button(host::MouseKind::Press);
        case 11:
        case 12:
        case 13: return change_button(host::MouseKind::Release);
        case 14: return change_button(host::MouseKind::DoubleClick);
        default: return move_on();
        }
    }

    bool ranges_are_sound() const {
        for (auto const& graph : state.Graphs)
            for (document::Axis const& axis : graph->Axes) {
                double const span = axis.AxisValue2 - axis.AxisValue1;
                if (!std::isfinite(span) || (!axis.AxisNoData && !graph->GraphNotDrawn && span == 0))
                    return false;
            }
        return true;
    }

private:
    int below(int limit) { return static_cast<int>(chance_() % static_cast<unsigned>(limit)); }

    void fill_page() {
        page.Reset();
        page.AutoFit(below(3) == 0);
        page.DataOwnAxes(below(2) == 0);
        int const graphs = below(4);
        for (int i = 0; i < graphs; ++i) add_graph();
        page.Refresh();
    }

    void add_graph() {
        bool const fixed = below(2) == 0;
        page.NewGraph("graph", fixed ? 1 : 0, fixed ? 9 : 0, fixed ? 2 : 0, fixed ? 8 : 0);
        page.GraphPosition({.Left = static_cast<float>(below(60)),
                            .Top = static_cast<float>(below(60)),
                            .Width = static_cast<float>(20 + below(80)),
                            .Height = static_cast<float>(20 + below(80))});
        if (below(3) == 0) page.NewYAxis("more");
        if (below(6) == 0) page.NewColorAxis("colours");
        for (int axis : {0, 1}) {
            page.SetSelectedAxis(axis);
            page.AxisReverse(below(4) == 0);
            page.AxisLog(below(4) == 0);
            page.AxisLink(below(3) == 0 ? "shared" : "");
        }
        page.KeepEqualUnits(below(4) == 0);
        page.GraphAllowZoom(below(8) != 0);
        page.GraphAllowDragging(below(8) != 0);
        page.LegendInFront(below(2) == 0);
        for (int i = below(4); i > 0; --i) {
            page.NewDataSet(below(4) ? "data" : "");
            page.DataSymbol(below(14) - 2);
            page.DataLineStyle(below(6));
            add_points();
            if (below(4) == 0) page.AddMathFunc("10*sin(x)/x");
            if (below(4) == 0) make_kind();
            if (below(6) == 0) page.DataKind(4 + below(2)); // a heat map, contours
        }
        page.GraphPolar(below(8) == 0);
    }

    /// Of the newest data set a mark that can be dragged, or a pie.
    void make_kind() {
        constexpr std::array kinds{7, 8, 8};
        page.DataKind(kinds[static_cast<std::size_t>(below(3))]);
        page.MarkShape(below(6));
        page.MarkX1(below(10)), page.MarkY1(below(10)), page.MarkX2(below(10)), page.MarkY2(below(10));
        page.MarkDragging(true);
        page.DataText(below(2) ? "mark" : "");
        page.PieGather(below(10));
    }

    void add_points() {
        for (int i = below(60); i > 0; --i)
            page.AddDataPoint(1 + below(900) / 100.0, 1 + below(900) / 100.0, below(3) / 4.0);
    }

    Point some_place() {
        return {static_cast<double>(below(16000) - 1500), static_cast<double>(below(12000) - 1500)};
    }
    std::uint8_t some_shift() { return below(3) ? std::uint8_t{0} : static_cast<std::uint8_t>(below(8)); }

    void change_button(host::MouseKind kind) {
        constexpr std::array buttons{host::left_button, host::left_button, host::right_button,
                                     host::middle_button};
        std::uint8_t const button = buttons[static_cast<std::size_t>(below(4))];
        held_ = kind == host::MouseKind::Press ? button : std::uint8_t{0};
        if (below(2)) place_ = some_place();
        mouse(kind, button, some_shift(), place_);
    }

    void leave() { host.input(host::LeaveInput{}); }

    void move_on() {
        place_ = below(3) ? Point{place_.x + below(600) - 300, place_.y + below(600) - 300} : some_place();
        move(place_, held_, below(5) ? std::uint8_t{0} : some_shift());
    }

    void type() {
        host.input(host::KeyInput{static_cast<char16_t>(below(2) ? below(128) : 0), some_shift(),
                                  static_cast<host::Key>(below(10))});
    }

    void turn() { host.input(host::WheelInput{below(80) / 10.0 - 4, 0, some_shift(), some_place()}); }

    Chance chance_;
    Point place_;
    std::uint8_t held_ = 0;
};

/// Beside a monkey: calls and sets any member with any value, also from inside the control's events, whose
/// handlers fail at times.
class WildHost : public host::EventSink {
public:
    explicit WildHost(Chance const& chance) : chance_(chance), monkey_(chance) { page_.set_events(this); }
    ~WildHost() { page_.set_events(nullptr); }

    qvGraph& page() { return page_; }
    headless::HeadlessHost& host() { return monkey_.host; }

    /// Before any event is answered.
    void fill(void (*fill_page)(qvGraph&)) {
        page_.set_events(nullptr);
        fill_page(page_);
        page_.set_events(this);
    }
    void act() {
        try {
            do_anything();
        } catch (FromHandler const&) {
        }
    }
    /// Whether a new page is drawn as ever.
    bool page_is_well() {
        page_.set_events(nullptr);
        page_.Reset();
        page_.NewGraph("graph", 0, 1, 0, 1);
        int const shown = monkey_.host.times_shown();
        page_.Refresh();
        return monkey_.host.times_shown() == shown + 1;
    }

    void Click(double&, double&) override { answer(); }
    void DblClick(double&, double&) override { answer(); }
    void MouseMove(double&, double&) override { answer(); }
    void KeyPress(std::int16_t&, double&, double&) override { answer(); }
    void NewGraphInFront() override { answer(); }
    void GraphScaleChanged() override { answer(); }
    void GraphPositionChanged() override { answer(); }
    void LegendPositionChanged() override { answer(); }
    void MarkMoved(std::int16_t&, std::int16_t&, double&, double&, double&, double&) override { answer(); }
    void ErrorMsg(std::string&, std::string&) override { answer(); }

private:
    struct FromHandler {};

    std::size_t below(std::size_t limit) { return chance_() % limit; }
    template <class List>
    auto const& any_of(List const& list) {
        return list[below(std::size(list))];
    }

    void answer() {
        constexpr int deepest = 3;
        if (depth_ >= deepest || below(4) != 0) return;
        if (below(16) == 0) throw FromHandler();
        const document::RestoreScope deeper(depth_, depth_ + 1);
        do_anything();
    }
    void do_anything() {
        try {
            switch (below(6)) {
            case 0:
            case 1: return monkey_.act();
            case 2:
            case 3: return set();
            default: return call();
            }
        } catch (Fault const&) { // the stated answer to a wrong value
        }
    }

    Variant argument(control::Accepts accepts) {
        static constexpr double numbers[] = {
            0,  0,    1,    1,        2,   3,      5,     10,     100,        0.25, -0.5,
            -1, -3,   255,  1e-300,   1e9, -1e300, 32767, -32768, 2147483647, 1e20, 1.7976931348623157e308,
            90, 4000, -0.0, 1e6 + 0.5};
        static std::string const texts[] = {"",      "graph", "10*sin(x)", "1/x",
                                            "x+",    "f(a)=", "f(a)=a^2",  "Font=Arial|9|Bold",
                                            "a,b,c", "0.00",  "d mmm yy",  std::string(300, 'W')};
        if (accepts == control::Accepts::Text) return any_of(texts);
        return any_of(numbers);
    }
    void call() {
        auto const& method = any_of(control::method_table());
        if (method.name == "SaveImage") return;
        std::vector<Variant> arguments;
        for (auto const& parameter : method.parameters)
            arguments.push_back(parameter.required || below(3) == 0 ? argument(parameter.accepts)
                                                                    : parameter.default_value);
        method.call(page_, arguments);
    }
    void set() {
        auto const& property = any_of(control::property_table());
        if (property.let) property.let(page_, argument(property.accepts));
    }

    Chance chance_;
    int depth_ = 0;
    Monkey monkey_;
    qvGraph& page_ = monkey_.page;
};

} // namespace qv::testing
