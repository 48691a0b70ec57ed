// What a person's hand waits for: drag_graph/N (a step of dragging a graph with a line of N points),
// drag_legend, cross_hair (a move of the mouse), nearest_point/N.
#include "benchmarks.h"
#include "control/state_of.h"
#include "interact/nearest_point.h"
#include "pages.h"

#include <benchmark/benchmark.h>

namespace qv::bench {
namespace {

constexpr std::size_t point_count = 1000000;

Page page_with_legend() {
    Page page = line_page(point_count, Drawing::Smooth);
    page->control().DataLegend("noisy sine");
    page->control().DataInLegendTable(true);
    page->control().GraphPosition({.Left = 5, .Top = 5, .Width = 90, .Height = 90});
    page->control().Refresh();
    return page;
}

/// Moves with a button held between two places near the press.
void drag(benchmark::State& state, headless::HeadlessHost& page, Point from, std::uint8_t button) {
    constexpr double step = 300; // twips
    page.input(host::MouseInput{host::MouseKind::Press, button, 0, from});
    double way = 0;
    for (auto _ : state) {
        way = step - way;
        page.input(host::MouseInput{host::MouseKind::Move, button, 0, {from.x + way, from.y + way}});
    }
    page.input(host::MouseInput{host::MouseKind::Release, button, 0, from});
}

void drag_graph(benchmark::State& state) {
    const Page page = page_with_legend();
    document::Graph const& graph = *control::state_of(page->control()).Graphs[0];
    drag(state, *page, {graph.FrameLeft + 300.0, graph.FrameTop + 300.0}, host::left_button);
}

void drag_legend(benchmark::State& state) {
    const Page page = page_with_legend();
    document::Graph const& graph = *control::state_of(page->control()).Graphs[0];
    drag(state, *page, {graph.LegendLeft + 100.0, graph.LegendTop + 100.0}, host::left_button);
}

void cross_hair(benchmark::State& state) {
    const Page page = page_with_legend();
    const Point middle{9000, 6000};
    page->input(host::MouseInput{host::MouseKind::Press, host::left_button, host::alt_key, middle});
    page->input(host::MouseInput{host::MouseKind::Release, host::left_button, host::alt_key, middle});
    double way = 0;
    for (auto _ : state) {
        way = 300 - way;
        page->input(host::MouseInput{host::MouseKind::Move, 0, 0, {middle.x + way, middle.y + way}});
    }
}

void nearest_point(benchmark::State& state) {
    const Page page = page_with_legend();
    document::ControlState& control = control::state_of(page->control());
    for (auto _ : state)
        benchmark::DoNotOptimize(interact::nearest_point(control, 0, {9000, 6000}, 3 * control.UnitsPerMmX));
}

} // namespace

void register_interaction() {
    std::string const size = "/" + std::to_string(point_count);
    benchmark::RegisterBenchmark(("drag_graph" + size).c_str(), drag_graph)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("drag_legend", drag_legend)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("cross_hair", cross_hair)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("nearest_point" + size).c_str(), nearest_point)
        ->Unit(benchmark::kMillisecond);
}

} // namespace qv::bench
