// Ten thousand random inputs on pages of every kind: nothing fails, and the same seed leads to the same page.
#include "Person.h"

#include <doctest/doctest.h>

#include <cmath>
#include <random>

using namespace qv;
using namespace qv::testing;

namespace {

class Monkey : public Person {
public:
    explicit Monkey(unsigned seed) : random_(seed) { fill_page(); }

    void act() {
        switch (below(24)) {
        case 0: return fill_page();
        case 1: return host.resize_picture({1 + below(900), 1 + below(700)});
        case 2: return page.Refresh();
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
            for (graph::Axis const& axis : graph->Axes) {
                double const span = axis.AxisValue2 - axis.AxisValue1;
                if (!std::isfinite(span) || (!axis.AxisNoData && !graph->GraphNotDrawn && span == 0))
                    return false;
            }
        return true;
    }

private:
    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

    void fill_page() {
        page.Reset();
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
        for (int axis : {0, 1}) {
            page.SetSelectedAxis(axis);
            page.AxisReverse(below(4) == 0);
            page.AxisLog(below(4) == 0);
        }
        page.GraphAllowZoom(below(8) != 0);
        page.GraphAllowDragging(below(8) != 0);
        page.LegendInFront(below(2) == 0);
        for (int i = below(4); i > 0; --i) {
            page.NewDataSet(below(4) ? "data" : "");
            page.DataSymbol(below(14) - 2);
            page.DataLineStyle(below(6));
            add_points();
            if (below(4) == 0) page.AddMathFunc("10*sin(x)/x");
        }
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

    void move_on() {
        place_ = below(3) ? Point{place_.x + below(600) - 300, place_.y + below(600) - 300} : some_place();
        move(place_, held_, below(5) ? std::uint8_t{0} : some_shift());
    }

    void type() {
        host.input(host::KeyInput{static_cast<char16_t>(below(2) ? below(128) : 0), some_shift(),
                                  static_cast<host::Key>(below(10))});
    }

    void turn() { host.input(host::WheelInput{below(80) / 10.0 - 4, 0, some_shift(), some_place()}); }

    std::mt19937 random_;
    Point place_;
    std::uint8_t held_ = 0;
};

} // namespace

TEST_CASE("ten thousand random inputs do no harm, and one seed leads to one page") {
    constexpr int inputs = 10000;
    Monkey first(17), second(17);
    for (int i = 0; i < inputs; ++i) {
        CAPTURE(i);
        first.act();
        second.act();
        REQUIRE(first.ranges_are_sound());
        if (!first.heard.errors.empty()) CAPTURE(first.heard.errors.front());
        REQUIRE(first.heard.errors.empty());
    }
    CHECK(first.pixels() == second.pixels());
    CHECK(first.heard.names == second.heard.names);
    CHECK(first.state.HScroll1 == second.state.HScroll1);
}
