#include "base/convert.h"
#include "base/text.h"
#include "expression/arrays.h"
#include "expression/evaluation.h"

#include <cmath>

namespace qv::expression {
namespace {

using RealIndices = std::array<double, max_dimensions>;

// The last index is the accumulator, the others stand below it. One that is no number is a fault and 0.
RealIndices read_indices(Evaluation& state, std::size_t dimensions) {
    RealIndices indices{};
    for (std::size_t k = dimensions; k-- > 0;) {
        int const depth = static_cast<int>(dimensions - k) - 2;
        const Number index = number_in(depth < 0 ? state.top : state.below(depth));
        if (index.faulted())
            state.fault();
        else
            indices[k] = index.value;
    }
    return indices;
}

void check_bounds(Engine& engine, int array, RealIndices const& indices) {
    ArrayRecord const& record = array_record(engine, array);
    for (std::size_t k = 0; k < static_cast<std::size_t>(record.dimensions); ++k) {
        if (indices[k] >= 0 && indices[k] <= record.upper_bounds[k + 1]) continue;
        set_error(engine, ErrorNumber::ArgumentsOrBounds,
                  ArrayNameWithDims(engine, array) + ":  Array element" + std::to_string(k + 1)
                      + " is out of bounds, value =" + number_text(indices[k]));
    }
}

double element_at(ArrayRecord& record, RealIndices const& indices) {
    ArrayIndices whole{};
    auto const dimensions = static_cast<std::size_t>(record.dimensions);
    for (std::size_t k = 0; k < dimensions; ++k) whole[k] = to_i32(indices[k]);
    return array_element(record, std::span(whole).first(dimensions));
}

} // namespace

void run_array_element(Evaluation& state, int array) {
    if (static_cast<std::size_t>(array) >= state.engine.arrays.size()) return state.fault();
    ArrayRecord& record = array_record(state.engine, array);
    const RealIndices indices = read_indices(state, static_cast<std::size_t>(record.dimensions));
    if (state.ended) return;
    check_bounds(state.engine, array, indices);
    try {
        state.store(double_operand(element_at(record, indices)));
    } catch (Fault const&) {
        state.fault();
    }
    state.sp -= record.dimensions - 1;
}

} // namespace qv::expression
