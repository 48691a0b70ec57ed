// qvbench: how fast points are added, pages are drawn and formulas are evaluated. Run it with ./run-bench.
#include "benchmarks.h"

#include <benchmark/benchmark.h>

int main(int argc, char** argv) {
    qv::bench::register_data_entry();
    qv::bench::register_redraw();
    qv::bench::register_gradient();
    qv::bench::register_interaction();
    qv::bench::register_formulas();
#ifdef QV_BENCH_QVPLOT
    qv::bench::register_read_csv();
#endif
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
}
