// A control on a host that draws nothing, with a log of its events.
#pragma once

#include "document/selection.h"
#include "fault_of.h"
#include "qvgraph/qvGraph.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace qv::test {

/// Knows its size and draws nothing.
class BlankSurface : public DrawSurface {
public:
    double TwipsPerPixelX() const override { return 15; }
    double TwipsPerPixelY() const override { return 15; }
    PixelSize GetClientRect() const override { return size_; }
    void Move(double width, double height) override {
        size_ = {std::max(1, to_i32(width / 15)), std::max(1, to_i32(height / 15))};
    }
    void Cls() override {}
    void SelectClipPath(Box const&) override {}
    void BitBlt(PixelPoint, PixelSize, DrawSurface const&, PixelPoint) override {}
    void Line(Point, Point, LineShape, Color) override {}
    void PSet(Point) override {}
    void Circle(Point, double) override {}
    void Polygon(std::span<PixelPoint const>) override {}
    void Rectangle(PixelPoint, PixelPoint) override {}
    void Ellipse(PixelPoint, PixelPoint) override {}
    void LineTo(PixelPoint, PixelPoint, Color) override {}
    double TextWidth(std::string_view line) override { return 90.0 * static_cast<double>(line.size()); }
    double TextHeight(std::string_view) override { return 200; }
    void Print(std::string_view) override {}
    void TextOutA(PixelPoint, double, std::string_view) override {}

private:
    PixelSize size_{1, 1};
};

struct BlankHost : host::Host {
    int pages_shown = 0;
    std::unique_ptr<DrawSurface> make_surface() override { return std::make_unique<BlankSurface>(); }
    void page_shown() override { ++pages_shown; }
};

/// Keeps what was raised, in order; `on_event` may act from inside an event.
struct EventLog : host::EventSink {
    std::vector<std::string> entries;
    std::function<void()> on_event = [] {};

    void log(std::string entry) {
        entries.push_back(std::move(entry));
        auto const action = on_event; // a copy, because the action may put another in its place
        action();
    }
    void DblClick(double& x, double& y) override {
        log("DblClick " + std::to_string(int(x)) + " " + std::to_string(int(y)));
    }
    void KeyPress(std::int16_t& key, double&, double&) override {
        log("KeyPress " + std::to_string(key));
        key = 0;
    }
    void NewGraphInFront() override { log("NewGraphInFront"); }
    void GraphScaleChanged() override { log("GraphScaleChanged"); }
    void ErrorMsg(std::string& source, std::string&) override { log(source); }
};

struct Control : qvGraph {
    Control() : Control(std::make_unique<BlankHost>()) {}
    explicit Control(std::unique_ptr<BlankHost> blank) : qvGraph(*blank), host(std::move(blank)) {
        set_events(&log);
        UserControl_Resize(9000, 6000);
    }
    document::ControlState& state() { return control::state_of(*this); }
    /// What was raised since the last call.
    std::vector<std::string> events() { return std::exchange(log.entries, {}); }
    document::Axis const& axis(std::size_t index) { return document::current_graph(state()).Axes[index]; }
    document::DataSet const& data(std::size_t index) {
        return document::current_graph(state()).DataSets[index];
    }
    document::Graph const& graph() { return document::current_graph(state()); }

    std::unique_ptr<BlankHost> host;
    EventLog log;
};

/// A control with one graph and one data set.
struct FilledControl : Control {
    FilledControl() {
        NewGraph("G");
        NewDataSet("D");
        events();
    }
};

using Events = std::vector<std::string>;

inline Events error(int number, std::string const& procedure) {
    return {"Error " + std::to_string(number) + " has occured in qvGraph.ocx, " + procedure};
}

} // namespace qv::test
