// add_point/N and add_points/N: handing N points to a new data set; bytes_per_point/N: what they take.
#include "benchmarks.h"
#include "qvgraph/HeadlessHost.h"
#include "series.h"

#include <benchmark/benchmark.h>

#include <malloc.h>
#include <unistd.h>

#include <fstream>
#include <memory>
#include <string>

namespace qv::bench {
namespace {

void start_data_set(qvGraph& graph) {
    graph.NewGraph("");
    graph.NewDataSet("");
}

std::unique_ptr<headless::HeadlessHost> page_with_data_set() {
    auto host = std::make_unique<headless::HeadlessHost>(PixelSize{100, 100});
    start_data_set(host->control());
    return host;
}

void add_one_by_one(qvGraph& graph, Series const& series) {
    for (std::size_t i = 0; i < series.x.size(); ++i) graph.AddDataPoint(series.x[i], series.y[i]);
}

void add_in_bulk(qvGraph& graph, Series const& series) {
    graph.AddDataPoints(series.x, series.y);
}

template <auto add>
void fill(benchmark::State& state, std::size_t count) {
    const Series series = noisy_sine(count);
    auto const host = page_with_data_set();
    qvGraph& graph = host->control();
    for (auto _ : state) {
        add(graph, series);
        state.PauseTiming();
        graph.Reset();
        start_data_set(graph);
        state.ResumeTiming();
    }
    // The library prints an inverted rate as seconds with a prefix: 12.3ns a point.
    state.counters["per_point"] =
        benchmark::Counter(static_cast<double>(count),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// Resident set of this process, after giving free memory back.
double resident_bytes() {
    malloc_trim(0);
    std::ifstream statm("/proc/self/statm");
    double total = 0, resident = 0;
    statm >> total >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

void bytes_per_point(benchmark::State& state, std::size_t count) {
    const Series series = noisy_sine(count);
    double bytes = 0;
    for (auto _ : state) {
        auto host = page_with_data_set();
        double const before = resident_bytes();
        add_one_by_one(host->control(), series);
        bytes = resident_bytes() - before;
    }
    state.counters["bytes/point"] = bytes / static_cast<double>(count);
}

} // namespace

void register_data_entry() {
    for (std::size_t const count : point_counts) {
        const std::string size = "/" + std::to_string(count);
        benchmark::RegisterBenchmark(("add_point" + size).c_str(), fill<add_one_by_one>, count)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("add_points" + size).c_str(), fill<add_in_bulk>, count)
            ->Unit(benchmark::kMillisecond);
        // Below this the reading's page size decides.
        if (count >= 100000)
            benchmark::RegisterBenchmark(("bytes_per_point" + size).c_str(), bytes_per_point, count)
                ->Iterations(1)
                ->Unit(benchmark::kMillisecond);
    }
}

} // namespace qv::bench
