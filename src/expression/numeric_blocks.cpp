#include "expression/mathematics.h"
#include "expression/numeric_form.h"
#include "expression/numeric_operations.h"
#include "expression/variables.h"

#include <algorithm>

namespace qv::expression {

bool NumericBlocks::prepare(NumericForm& form, qvVariable const& x) {
    form_ = &form;
    varying_.clear();
    std::vector<char> varies(form.nodes.size(), false);
    for (NumericInput const& input : form.inputs) {
        if (input.variable == &x)
            x_cell_ = input.cell;
        else if (!load_variable(form, input))
            return false;
    }
    if (x_cell_) varies[*x_cell_] = true;
    // Once on single values: what does not depend on x is then in its cell.
    expression::run(form);
    for (Instruction const& each : std::span(form.code).first(form.code.size() - 1)) {
        if (!varies[each.first] && !varies[each.second] && !varies[each.third]) continue;
        varies[each.target] = true;
        if (each.run_block == sine_and_cosine_row.on_columns) varies[each.second] = true;
        varying_.push_back(each);
    }
    columns_.resize(form.nodes.size() * block_length);
    for (std::size_t node = 0; node < form.nodes.size(); ++node)
        if (!varies[node]) std::fill_n(column(node), block_length, form.cells[node]);
    return true;
}

void NumericBlocks::load_column(std::span<double const> x) {
    if (!x_cell_) return;
    // Past the last sample the first one is repeated: its value is computed anyway.
    double* const end = std::ranges::copy(x, column(*x_cell_)).out;
    std::fill(end, column(*x_cell_) + block_length, x.front());
}

bool NumericBlocks::run(std::span<double const> x, std::span<double> y) {
    load_column(x);
    for (Instruction const& each : varying_) each.run_block(each, columns_.data());
    double const* const result = column(form_->result);
    double doubt = 0;
    for (std::size_t i = 0; i < y.size(); ++i) {
        y[i] = result[i];
        doubt += result[i] - result[i]; // not-a-number from the first value that is not finite
    }
    return doubt == 0;
}

} // namespace qv::expression
