// line_redraw/N: one full redraw of an unchanged page of 1200 x 800 pixels with a line of N points;
// line_redraw/N/flat: the same without smoothing.
#include "benchmarks.h"
#include "platform/headless/HeadlessHost.h"
#include "series.h"

#include <benchmark/benchmark.h>

#include <string>

namespace qv::bench {
namespace {

constexpr PixelSize page_size{1200, 800};
constexpr Color blue = rgb(0, 0, 255);

void set_up_graph(qvGraph& graph) {
    graph.NewGraph("");
    graph.SetSelectedAxis(0);
    graph.AxisTitle("x");
    graph.SetSelectedAxis(1);
    graph.AxisTitle("y");
}

void add_line(qvGraph& graph, Series const& series) {
    graph.NewDataSet("");
    graph.DataSymbol(0);
    graph.DataLine({.Color = blue});
    graph.AddDataPoints(series.x, series.y);
}

enum class Drawing { Smooth, Flat };

void line_redraw(benchmark::State& state, std::size_t count, Drawing drawing) {
    headless::HeadlessHost host(page_size);
    host.control().state().Smooth = drawing == Drawing::Smooth;
    set_up_graph(host.control());
    add_line(host.control(), noisy_sine(count));
    host.control().Refresh();
    for (auto _ : state) host.control().Refresh();
}

} // namespace

void register_redraw() {
    for (const std::size_t count : {1000UL, 10000UL, 100000UL, 1000000UL, 10000000UL}) {
        const std::string name = "line_redraw/" + std::to_string(count);
        benchmark::RegisterBenchmark(name.c_str(), line_redraw, count, Drawing::Smooth)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark((name + "/flat").c_str(), line_redraw, count, Drawing::Flat)
            ->Unit(benchmark::kMillisecond);
    }
}

} // namespace qv::bench
