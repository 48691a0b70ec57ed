#include "expression/numeric_form.h"

#include "expression/engine.h"
#include "expression/mathematics.h"
#include "expression/numeric_kinds.h"
#include "expression/numeric_operations.h"

#include <algorithm>
#include <limits>

namespace qv::expression {
namespace {

class FormBuilder {
public:
    // False when the program has something that the numeric form cannot do.
    bool add(Step const& step);
    std::unique_ptr<NumericForm> finish();

private:
    bool push(Operand const& operand);
    bool push_constant(Kind kind, double value);
    bool push_variable(qvVariable const* variable);
    bool push_node(NumericNode node, double value, ValueBounds bounds);
    bool push_existing(std::size_t node);
    bool apply(NumericRow const& opcode_row);
    bool fold(NumericRow const& row, std::span<std::uint16_t const> operands, ValueBounds bounds);
    std::span<ValueBounds const> bounds_of_operands(std::span<std::uint16_t const> operands);
    bool is_constant(std::uint16_t node) const { return constant_[node]; }
    NumericRow const* fitting_row(NumericRow const& row, std::span<std::uint16_t const> operands);

    std::unique_ptr<NumericForm> form_ = std::make_unique<NumericForm>();
    std::vector<ValueBounds> bounds_; // one a node
    std::vector<char> constant_;      // one a node
    std::vector<std::uint16_t> stack_;
    std::array<ValueBounds, 3> operand_bounds_;
};

bool FormBuilder::add(Step const& step) {
    if (step.number == opcode::push) return push(step.operand);
    if (step.number == opcode::pi) return push_constant(Kind::Double, mathematics::pi);
    if (step.number == opcode::degree) return push_constant(Kind::Double, mathematics::degree);
    NumericRow const* row = numeric_row(step.number);
    return row && apply(*row);
}

bool FormBuilder::push(Operand const& operand) {
    if (operand.kind == Kind::Variable) return push_variable(operand.variable);
    return is_number(operand.kind) && push_constant(operand.kind, operand.number);
}

// A full evaluation stack is a fault, which is the general evaluator's to handle.
bool FormBuilder::push_existing(std::size_t node) {
    stack_.push_back(static_cast<std::uint16_t>(node));
    return stack_.size() <= static_cast<std::size_t>(max_stack);
}

bool FormBuilder::push_node(NumericNode node, double value, ValueBounds bounds) {
    form_->nodes.push_back(node);
    form_->cells.push_back(value);
    bounds_.push_back(bounds);
    constant_.push_back(false);
    return push_existing(form_->nodes.size() - 1);
}

bool FormBuilder::push_constant(Kind kind, double value) {
    bool const fits = push_node({}, value, bounds_of(kind, value));
    constant_.back() = true;
    return fits;
}

bool FormBuilder::push_variable(qvVariable const* variable) {
    for (NumericInput const& input : form_->inputs)
        if (input.variable == variable) return push_existing(input.cell);
    form_->inputs.push_back({variable, static_cast<std::uint16_t>(form_->nodes.size())});
    return push_node({}, 0, bounds_of_double());
}

std::span<ValueBounds const> FormBuilder::bounds_of_operands(std::span<std::uint16_t const> operands) {
    for (std::size_t i = 0; i < operands.size(); ++i) operand_bounds_[i] = bounds_[operands[i]];
    return std::span(operand_bounds_).first(operands.size());
}

// The row to use for these operands, or none when the result would depend on a kind that is not known.
NumericRow const* FormBuilder::fitting_row(NumericRow const& row, std::span<std::uint16_t const> operands) {
    auto const bounds = bounds_of_operands(operands);
    auto const is_known = [](ValueBounds const& each) { return each.kind.has_value(); };
    auto const is_integer = [](ValueBounds const& each) { return each.is_integer(); };
    auto const is_double = [](ValueBounds const& each) { return each.is_double(); };
    const std::uint16_t last = operands.back();
    switch (row.rule) {
    case KindRule::Product:
        if (std::ranges::all_of(bounds, is_integer)) return &integer_product_row;
        return std::ranges::any_of(bounds, is_double) ? &row : nullptr;
    case KindRule::Negation:
        if (bounds[0].is_integer()) return &integer_negation_row;
        return is_known(bounds[0]) ? &row : nullptr;
    case KindRule::Kept: {
        // The magnitude of the smallest integer is a fault.
        bool const smallest =
            bounds[0].is_integer() && bounds[0].low < -std::numeric_limits<std::int32_t>::max();
        return is_known(bounds[0]) && !smallest ? &row : nullptr;
    }
    default: break;
    }
    bool const squares = row.number == opcode::power && is_constant(last) && form_->cells[last] == 2;
    return squares ? &square_row : &row;
}

bool FormBuilder::fold(NumericRow const& row, std::span<std::uint16_t const> operands, ValueBounds bounds) {
    std::array<double, 3> values{};
    for (std::size_t i = 0; i < operands.size(); ++i) values[i] = form_->cells[operands[i]];
    double const value = row.on_values(values[0], values[1], values[2]);
    return mathematics::finite(value) && bounds.kind && push_constant(*bounds.kind, value);
}

bool FormBuilder::apply(NumericRow const& opcode_row) {
    if (stack_.size() < opcode_row.operands) return false;
    std::array<std::uint16_t, 3> held;
    held.fill(stack_[stack_.size() - opcode_row.operands]);
    auto const operands = std::span(held).first(opcode_row.operands);
    std::ranges::copy(std::span(stack_).last(operands.size()), operands.begin());
    stack_.resize(stack_.size() - operands.size());

    NumericRow const* row = fitting_row(opcode_row, operands);
    if (!row) return false;
    const ValueBounds bounds = result_bounds(row->rule, bounds_of_operands(operands));
    if (std::ranges::all_of(operands, [this](std::uint16_t node) { return is_constant(node); }))
        return fold(*row, operands, bounds);

    const NumericNode node{row, held[0], row == &square_row ? held[0] : held[1], held[2]};
    auto const same = [&](NumericNode const& other) {
        return other.row == row && other.first == node.first && other.second == node.second
               && other.third == node.third;
    };
    auto const found = std::ranges::find_if(form_->nodes, same);
    if (found != form_->nodes.end())
        return push_existing(static_cast<std::size_t>(found - form_->nodes.begin()));
    return push_node(node, 0, bounds);
}

// Writes the instructions of the nodes in order.
class CodeWriter {
public:
    explicit CodeWriter(NumericForm& form) : form_(form) {}
    void write();

private:
    void write_operation(std::uint16_t node);
    void write_end();
    std::optional<std::uint16_t> find(OpcodeNumber number, std::uint16_t operand) const;
    bool is_written(std::uint16_t node) const { return written_[node]; }
    std::size_t sources(NumericNode const& node) const;

    NumericForm& form_;
    std::vector<char> written_ = std::vector<char>(form_.nodes.size(), false);
    std::optional<std::uint16_t> previous_; // the node whose value the last instruction hands on
};

void CodeWriter::write() {
    for (std::uint16_t node = 0; node < form_.nodes.size(); ++node)
        if (form_.nodes[node].row && !is_written(node)) write_operation(node);
    write_end();
}

std::optional<std::uint16_t> CodeWriter::find(OpcodeNumber number, std::uint16_t operand) const {
    auto const is_it = [&](NumericNode const& node) {
        return node.row && node.row->number == number && node.first == operand;
    };
    auto const found = std::ranges::find_if(form_.nodes, is_it);
    if (found == form_.nodes.end()) return std::nullopt;
    return static_cast<std::uint16_t>(found - form_.nodes.begin());
}

std::size_t CodeWriter::sources(NumericNode const& node) const {
    if (!previous_) return 0;
    bool const second = node.row->operands == 2 && node.second == *previous_;
    return (node.first == *previous_ ? 1U : 0U) | (second ? 2U : 0U);
}

void CodeWriter::write_operation(std::uint16_t node) {
    NumericNode const& operation = form_.nodes[node];
    const std::size_t from = sources(operation);
    bool const circular = operation.row->number == opcode::sine || operation.row->number == opcode::cosine;
    auto const sine = circular ? find(opcode::sine, operation.first) : std::nullopt;
    auto const cosine = circular ? find(opcode::cosine, operation.first) : std::nullopt;
    bool const both = sine && cosine;
    NumericRow const& row = both ? sine_and_cosine_row : *operation.row;
    const std::uint16_t target = both ? *sine : node;
    const std::uint16_t second = both ? *cosine : operation.second;
    written_[node] = written_[target] = true;
    if (both) written_[second] = true;
    form_.code.push_back(
        {row.on_cells[from], row.on_columns, target, operation.first, second, operation.third});
    previous_ = target;
}

void CodeWriter::write_end() {
    bool const handed_on = previous_ == form_.result;
    form_.code.push_back({handed_on ? &return_previous : &return_cell, nullptr, 0, form_.result, 0, 0});
}

std::unique_ptr<NumericForm> FormBuilder::finish() {
    if (stack_.size() != 1 || !form_->nodes[stack_.back()].row) return nullptr;
    form_->result = stack_.back();
    form_->result_kind = bounds_[form_->result].kind;
    CodeWriter(*form_).write();
    return std::move(form_);
}

} // namespace

std::unique_ptr<NumericForm> numeric_form(std::span<Step const> steps) {
    FormBuilder builder;
    for (Step const& step : steps)
        if (!builder.add(step)) return nullptr;
    return builder.finish();
}

bool load_variable(NumericForm& form, NumericInput const& input) {
    double const* value = std::get_if<double>(&input.variable->Value);
    if (!value || !mathematics::finite(*value)) return false;
    form.cells[input.cell] = *value;
    return true;
}

bool load_variables(NumericForm& form) {
    for (NumericInput const& input : form.inputs)
        if (!load_variable(form, input)) return false;
    return true;
}

double run(NumericForm& form) {
    return form.code.front().run(form.code.data(), form.cells.data(), 0);
}

} // namespace qv::expression
