// Ours, measured exactly like the peers: W1 load, W2 line, W3 scatter, W4 many, W5 zoom, W6 page.
#include "pages.h"
#include "series.h"

#include <common.h>

#include <cstdio>
#include <string>

namespace {

using namespace qv;
using namespace qv::bench;

constexpr char const* program = "qvGraph";

void add_one_by_one(qvGraph& graph, Series const& series) {
    for (std::size_t i = 0; i < series.x.size(); ++i) graph.AddDataPoint(series.x[i], series.y[i]);
}

void add_in_bulk(qvGraph& graph, Series const& series) {
    graph.AddDataPoints(series.x, series.y);
}

void measure_load(std::size_t count, std::string const& variant) {
    bool const in_bulk = variant == "bulk";
    auto const add = in_bulk ? add_in_bulk : add_one_by_one;
    headless::HeadlessHost host({100, 100});
    qvGraph& graph = host.control();
    auto const fill = [&](Series const& series) {
        graph.NewGraph("");
        graph.NewDataSet("");
        add(graph, series);
    };
    fill(noisy_sine(10)); // what is loaded once is not counted
    graph.Reset();
    Series const series = noisy_sine(count);
    ::bench::measureLoad(
        program, in_bulk ? "bulk: AddDataPoints" : "one by one: AddDataPoint", count, [&] { fill(series); },
        [&] { graph.Reset(); });
}

Page make_page(std::string const& work, std::size_t count, Drawing drawing) {
    if (work == "W3") return symbols_page(count, drawing);
    if (work == "W4") return many_sets_page(drawing);
    if (work == "W5") return zoomed_page(count, drawing);
    if (work == "W6") return twelve_graphs_page(drawing);
    return line_page(count, drawing);
}

} // namespace

int main(int argc, char** argv) {
    ::bench::Args const args = ::bench::parse(argc, argv);
    if (args.work == "W1") {
        measure_load(args.n, args.variant);
        return 0;
    }
    Page const page = make_page(args.work, args.n, args.aa ? Drawing::Smooth : Drawing::Flat);
    ::bench::Stat const time = ::bench::measure([&] { page->control().Refresh(); });
    ::bench::reportMs(args.work.c_str(), program, "Refresh", args.aa, args.n, time);
    if (char const* const picture = ::bench::pngPath()) page->save(picture);
}
