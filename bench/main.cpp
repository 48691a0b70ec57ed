// qvbench: how fast points are added and pages are drawn. Run it with ./run-bench.
#include "benchmarks.h"

#include <benchmark/benchmark.h>

int main(int argc, char** argv) {
    qv::bench::register_data_entry();
    qv::bench::register_redraw();
    qv::bench::register_gradient();
    qv::bench::register_interaction();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
}
