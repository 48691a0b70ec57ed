// One full redraw of an unchanged page: line_redraw/N, symbols_redraw/N, area_redraw/N, spline_redraw/N,
// stacked_bars/N, histogram/N, boxes/N, strip/N (kept, and with _first worked out anew), many_sets, zoomed/N,
// twelve_graphs; with /flat behind the name, the same without smoothing.
#include "benchmarks.h"
#include "control/state_of.h"
#include "pages.h"

#include <benchmark/benchmark.h>

#include <functional>
#include <string>

namespace qv::bench {
namespace {

/// `anew`: what was worked out of the points is forgotten before each redraw, as after a change of them.
void add_redraw(std::string const& name, std::function<Page(Drawing)> const& make_page, bool anew = false) {
    auto const redraw = [make_page, anew](benchmark::State& state, Drawing drawing) {
        Page const page = make_page(drawing);
        page->control().Refresh();
        for (auto _ : state) {
            if (anew)
                for (document::DataSet& set : control::state_of(page->control()).Graphs.front()->DataSets)
                    set.derived.reset();
            page->control().Refresh();
        }
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
        if (count == 10000 || count == 1000000) {
            for (bool const anew : {false, true}) {
                std::string const which = (anew ? "_first" : "") + size;
                add_redraw("histogram" + which, std::bind_front(histogram_page, count), anew);
                add_redraw("boxes" + which, std::bind_front(boxes_page, count), anew);
                add_redraw("strip" + which, std::bind_front(strip_page, count), anew);
            }
        }
        add_redraw("area_redraw" + size, std::bind_front(area_page, count));
        add_redraw("spline_redraw" + size, std::bind_front(spline_page, count));
        add_redraw("stacked_bars" + size, std::bind_front(stacked_bars_page, count));
    }
    add_redraw("many_sets", many_sets_page);
    add_redraw("zoomed/1000000", std::bind_front(zoomed_page, 1000000));
    add_redraw("twelve_graphs", twelve_graphs_page);
}

} // namespace qv::bench
