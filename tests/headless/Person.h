// A person before a page: presses, moves and releases as plain input, and what the host hears of it.
#pragma once

#include "control/state_of.h"
#include "qvgraph/EventSink.h"
#include "qvgraph/HeadlessHost.h"
#include "render/plot_geometry.h"

#include <string>
#include <vector>

namespace qv::testing {

class HeardEvents : public host::EventSink {
public:
    std::vector<std::string> names;
    std::vector<std::string> errors;
    double x = 0, y = 0; // of the last Click or MouseMove

    void Click(double& X, double& Y) override { hear("Click", X, Y); }
    void DblClick(double& X, double& Y) override { hear("DblClick", X, Y); }
    void MouseMove(double& X, double& Y) override { hear("MouseMove", X, Y); }
    void NewGraphInFront() override { names.emplace_back("NewGraphInFront"); }
    void GraphPositionChanged() override { names.emplace_back("GraphPositionChanged"); }
    void LegendPositionChanged() override { names.emplace_back("LegendPositionChanged"); }
    void ErrorMsg(std::string& Source, std::string& Description) override {
        errors.push_back(Source + ": " + Description);
    }

private:
    void hear(std::string name, double X, double Y) {
        names.push_back(std::move(name));
        x = X;
        y = Y;
    }
};

struct Person {
    headless::HeadlessHost host{PixelSize{800, 600}};
    HeardEvents heard;
    qvGraph& page = host.control();
    document::ControlState& state = control::state_of(page);

    Person() { page.set_events(&heard); }

    document::Graph& graph(std::size_t index = 0) { return *state.Graphs[index]; }
    document::Axis& x_axis() { return graph().Axes[0]; }
    document::Axis& y_axis() { return graph().Axes[1]; }
    Box plot() { return render::plot_box(graph()); }
    /// A place in the plot area of the first graph, as shares of its width and height from the top left.
    Point in_plot(double across, double down) {
        const Box box = plot();
        return {box.left + box.width * across, box.top + box.height * down};
    }

    void mouse(host::MouseKind kind, std::uint8_t button, std::uint8_t shift, Point place) {
        host.input(host::MouseInput{kind, button, shift, place});
    }
    void press(Point place, std::uint8_t button = host::left_button, std::uint8_t shift = 0) {
        mouse(host::MouseKind::Press, button, shift, place);
    }
    void move(Point place, std::uint8_t button = 0, std::uint8_t shift = 0) {
        mouse(host::MouseKind::Move, button, shift, place);
    }
    void release(Point place, std::uint8_t button = host::left_button, std::uint8_t shift = 0) {
        mouse(host::MouseKind::Release, button, shift, place);
    }
    void drag(Point from, Point to, std::uint8_t button = host::left_button, std::uint8_t shift = 0) {
        press(from, button, shift);
        move(to, button, shift);
        release(to, button, shift);
    }
    void scroll(host::Bar bar, int value) { host.input(host::ScrollInput{bar, value, false}); }

    std::vector<std::uint32_t> pixels() {
        auto const shown = host.picture().pixels();
        return {shown.begin(), shown.end()};
    }
    std::vector<std::string> take_events() { return std::exchange(heard.names, {}); }
};

/// One graph with fixed axes 0..10, a line and a legend at the top right.
struct PersonAtGraph : Person {
    PersonAtGraph() {
        page.NewGraph("graph", 0, 10, 0, 10);
        page.NewDataSet("line");
        for (int i = 0; i <= 10; ++i) page.AddDataPoint(i, i);
        page.Refresh();
    }
};

} // namespace qv::testing
