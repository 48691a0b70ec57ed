#include "expression/mathematics.h"
#include "expression/numeric_form.h"
#include "expression/numeric_operations.h"
#include "expression/variables.h"

#include <algorithm>

namespace qv::expression {

void NumericBlocks::fill_column(std::size_t node, double value) {
    std::fill_n(column(node), block_length, value);
}

bool NumericBlocks::prepare(NumericForm& form, qvVariable const& x) {
    form_ = &form;
    std::vector<char> varies(form.nodes.size(), false);
    columns_.resize(form.nodes.size() * block_length);
    for (NumericInput const& input : form.inputs) {
        if (input.variable == &x) varies[*(x_cell_ = input.cell)] = true;
        else if (!load_variable(form, input)) return false;
    }
    for (std::size_t node = 0; node < form.nodes.size(); ++node)
        if (!form.nodes[node].row) fill_column(node, form.cells[node]);
    // What does not depend on x is computed here, once.
    for (Instruction const& each : std::span(form.code).first(form.code.size() - 1)) {
        if (!varies[each.first] && !varies[each.second] && !varies[each.third]) {
            each.run_block(each, columns_.data());
            continue;
        }
        varies[each.target] = true;
        if (each.run_block == sine_and_cosine_row.on_columns) varies[each.second] = true;
        varying_.push_back(each);
    }
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
