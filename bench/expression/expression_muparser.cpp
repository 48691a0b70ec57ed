// muParser on the same formulas and samples, one value a call and in bulk.
#include "expression/formulas.h"

#include <benchmark/benchmark.h>
#include <muParser.h>

namespace {

using namespace qv::bench;

void muparser(benchmark::State& state, Formula const& formula) {
    std::vector<double> const xs = samples();
    double x = 0;
    mu::Parser parser;
    parser.DefineVar("x", &x);
    parser.SetExpr(formula.muparser);
    for (auto _ : state)
        for (double const value : xs) {
            x = value;
            benchmark::DoNotOptimize(parser.Eval());
        }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(xs.size()));
}

void muparser_bulk(benchmark::State& state, Formula const& formula) {
    std::vector<double> xs = samples();
    std::vector<double> ys(xs.size());
    mu::Parser parser;
    parser.DefineVar("x", xs.data());
    parser.SetExpr(formula.muparser);
    for (auto _ : state) {
        parser.Eval(ys.data(), static_cast<int>(xs.size()));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(xs.size()));
}

bool const registered = [] {
    for (std::size_t k = 0; k < formulas.size(); ++k) {
        std::string const number = "/" + std::to_string(k + 1);
        benchmark::RegisterBenchmark(("formula/muparser" + number).c_str(), muparser, formulas[k]);
        benchmark::RegisterBenchmark(("formula/muparser_bulk" + number).c_str(), muparser_bulk, formulas[k]);
    }
    return true;
}();

} // namespace
