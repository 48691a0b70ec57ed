#include "base/convert.h"
#include "expression/evaluator.h"
#include "expression/mathematics.h"

#include <algorithm>
#include <functional>
#include <vector>

namespace qv::expression {
namespace {

// One evaluation of a slot over an array. The first error is put aside, so that each sample starts clear.
class Sampling {
public:
    Sampling(Engine& engine, qvVariable& variable, std::int32_t number)
        : engine_(engine), slot_(select_slot(engine, number)), variable_(variable), number_(number) {}

    void run(std::span<double const> x, std::span<double> y);

private:
    bool run_blocks(NumericForm& form, std::span<double const> x, std::span<double> y);
    void run_each(std::span<double const> x, std::span<double> y);
    double sample(double x);
    double number_of_value();
    void keep_error();

    Engine& engine_;
    Slot& slot_;
    qvVariable& variable_;
    std::int32_t number_;
    ErrorState first_error_;
};

void Sampling::run(std::span<double const> x, std::span<double> y) {
    if (!slot_.numeric || !run_blocks(*slot_.numeric, x, y)) run_each(x, y);
    if (!x.empty()) variable_.Value = x.back();
    if (first_error_.code != ErrorNumber::None) engine_.error = first_error_;
}

bool Sampling::run_blocks(NumericForm& form, std::span<double const> x, std::span<double> y) {
    NumericBlocks blocks;
    if (!blocks.prepare(form, variable_)) return false;
    for (std::size_t start = 0; start < x.size(); start += block_length) {
        const std::size_t count = std::min(block_length, x.size() - start);
        auto const x_block = x.subspan(start, count);
        auto const y_block = y.subspan(start, count);
        if (blocks.run(x_block, y_block)) continue;
        for (std::size_t i = 0; i < count; ++i)
            if (!mathematics::finite(y_block[i])) y_block[i] = sample(x_block[i]);
    }
    return true;
}

void Sampling::run_each(std::span<double const> x, std::span<double> y) {
    for (std::size_t i = 0; i < x.size(); ++i) y[i] = sample(x[i]);
}

double Sampling::sample(double x) {
    variable_.Value = x;
    engine_.ending = Ending::Complete;
    double const value = trapped(engine_, "ValueOver", [&] { return number_of_value(); });
    if (engine_.error.code == ErrorNumber::None) return value;
    keep_error();
    return mathematics::undefined;
}

// An error of the evaluation stays as it is; what ended it without one is told here.
double Sampling::number_of_value() {
    const Operand value = operand_of(evaluate(engine_, number_));
    if (engine_.error.code != ErrorNumber::None) return mathematics::undefined;
    if (engine_.ending == Ending::Fault) raise_fault(FaultNumber::InvalidProcedureCall, engine_.ended_by);
    const Number number = number_in(value);
    if (number.faulted())
        raise_fault(FaultNumber::TypeMismatch, "Type mismatch: the value is a text that reads as no number");
    return number.value;
}

void Sampling::keep_error() {
    if (first_error_.code == ErrorNumber::None) first_error_ = engine_.error;
    engine_.error.code = ErrorNumber::None;
    engine_.error.description.clear();
}

// Samples are read again after their values have been written.
bool overlap(std::span<double const> x, std::span<double const> y) {
    std::less<> const before;
    return before(x.data(), y.data() + y.size()) && before(y.data(), x.data() + x.size());
}

} // namespace

void evaluate_over(Engine& engine, qvVariable& variable, std::span<double const> x, std::span<double> y,
                   std::int32_t& number) {
    if (number < 0) number = engine.highest_slot();
    Slot const& slot = select_slot(engine, number);
    if (x.size() != y.size()) {
        std::ranges::fill(y, mathematics::undefined);
        return record_fault(engine, FaultNumber::InvalidProcedureCall, "ValueOver");
    }
    if (engine.error.code != ErrorNumber::None) return void(std::ranges::fill(y, mathematics::undefined));
    if (slot.text.empty()) return void(std::ranges::fill(y, 0));
    std::vector<double> copy;
    if (overlap(x, y)) {
        copy.assign(x.begin(), x.end());
        x = copy;
    }
    Sampling(engine, variable, number).run(x, y);
}

} // namespace qv::expression
