// Speed of formulas: compiling, one value a call (variable by name, and bound), arrays in one call.
#include "benchmarks.h"
#include "expression/formulas.h"
#include "qvgraph/qvExpression.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

using namespace qv;
using namespace qv::bench;

void count_items(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(sample_count));
}

void evaluate(benchmark::State& state, Formula const& formula) {
    std::vector<double> const xs = samples();
    qvExpression engine;
    std::int16_t slot = 0;
    engine.Compile(formula.text, slot);
    for (auto _ : state)
        for (double const x : xs) {
            engine.Variable("x", x);
            benchmark::DoNotOptimize(engine.Value(slot));
        }
    count_items(state);
}

void evaluate_bound(benchmark::State& state, Formula const& formula) {
    std::vector<double> const xs = samples();
    qvExpression engine;
    std::int16_t slot = 0;
    engine.Compile(formula.text, slot);
    auto const variable = engine.m_Variables.find("x");
    for (auto _ : state)
        for (double const x : xs) {
            variable->Value = x;
            benchmark::DoNotOptimize(engine.Value(slot));
        }
    count_items(state);
}

void evaluate_over(benchmark::State& state, Formula const& formula) {
    std::vector<double> const xs = samples();
    std::vector<double> ys(xs.size());
    qvExpression engine;
    engine.Compile(formula.text);
    for (auto _ : state) {
        engine.ValueOver("x", xs, ys);
        benchmark::ClobberMemory();
    }
    count_items(state);
}

void compile(benchmark::State& state, Formula const& formula) {
    qvExpression engine;
    for (auto _ : state) {
        engine.ResetCompiledExpressions();
        engine.Compile(formula.text);
    }
    if (engine.ErrorCode() != 0) state.SkipWithError(engine.ErrorDescription().c_str());
}

void native(benchmark::State& state, Formula const& formula) {
    std::vector<double> const xs = samples();
    std::vector<double> ys(xs.size());
    for (auto _ : state) {
        formula.native(xs.data(), ys.data(), xs.size());
        benchmark::ClobberMemory();
    }
    count_items(state);
}

} // namespace

namespace qv::bench {

void register_formulas() {
    struct {
        char const* name;
        void (*run)(benchmark::State&, Formula const&);
    } const rows[] = {{"evaluate", evaluate},
                      {"evaluate_bound", evaluate_bound},
                      {"evaluate_over", evaluate_over},
                      {"compile", compile},
                      {"native", native}};
    for (std::size_t k = 0; k < formulas.size(); ++k)
        for (auto const& row : rows) {
            std::string const name = "formula/" + std::string(row.name) + "/" + std::to_string(k + 1);
            benchmark::RegisterBenchmark(name.c_str(), row.run, formulas[k]);
        }
}

} // namespace qv::bench
