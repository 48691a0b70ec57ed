// One full redraw of an unchanged page: line_redraw/N, symbols_redraw/N, area_redraw/N, spline_redraw/N,
// stacked_bars/N, heat_map/N, contours/N, heat_map_binned/N, many_sets, zoomed/N, twelve_graphs;
// with /flat behind the name, the same without smoothing.
#include "benchmarks.h"
#include "pages.h"

#include <benchmark/benchmark.h>

#include <functional>
#include <string>

namespace qv::bench {
namespace {

void add_redraw(std::string const& name, std::function<Page(Drawing)> const& make_page) {
    auto const redraw = [make_page](benchmark::State& state, Drawing drawing) {
        Page const page = make_page(drawing);
        page->control().Refresh();
        for (auto _ : state) page->control().Refresh();
    };
    benchmark::RegisterBenchmark(name.c_str(), redraw, Drawing::Smooth)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((name + "/flat").c_str(), redraw, Drawing::Flat)
        ->Unit(benchmark::kMillisecond);
}

} // namespace

void register_redraw() {
    for (std::size_t const count : point_counts) {
        std::string const size = "/" + std::to_string(count);
        add_redraw("line_redraw" + size, std::bind_front(line_page, count));
        add_redraw("symbols_redraw" + size, std::bind_front(symbols_page, count));
        if (count > 1000000) continue;
        add_redraw("area_redraw" + size, std::bind_front(area_page, count));
        add_redraw("spline_redraw" + size, std::bind_front(spline_page, count));
        add_redraw("stacked_bars" + size, std::bind_front(stacked_bars_page, count));
    }
    for (std::size_t const count : {10000, 1000000}) {
        std::string const size = "/" + std::to_string(count);
        add_redraw("heat_map" + size, std::bind_front(heat_map_page, count));
        add_redraw("contours" + size, std::bind_front(contours_page, count));
        auto const count_anew = [count](benchmark::State& state) {
            Page const page = binned_page(count, Drawing::Smooth);
            page->control().Refresh();
            for (auto _ : state) {
                page->control().DropDataPoints(1);
                page->control().Refresh();
            }
        };
        benchmark::RegisterBenchmark(("heat_map_binned" + size).c_str(), count_anew)
            ->Unit(benchmark::kMillisecond);
    }
    add_redraw("many_sets", many_sets_page);
    add_redraw("zoomed/1000000", std::bind_front(zoomed_page, 1000000));
    add_redraw("twelve_graphs", twelve_graphs_page);
}

} // namespace qv::bench
