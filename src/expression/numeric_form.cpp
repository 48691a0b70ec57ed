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
    void absorb_sign(NumericRow const& row, std::array<std::uint16_t, 3>& operands);
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

// -x / 10 is x / -10 to the bit, one operation less.
void FormBuilder::absorb_sign(NumericRow const& row, std::array<std::uint16_t, 3>& operands) {
    bool const scales = &row == numeric_row(opcode::multiply) || &row == numeric_row(opcode::divide);
    NumericNode const& first = form_->nodes[operands[0]];
    if (!scales || first.row != numeric_row(opcode::negate) || !is_constant(operands[1])) return;
    operands[0] = operands[2] = first.first;
    push_constant(Kind::Double, -form_->cells[operands[1]]);
    operands[1] = stack_.back();
    stack_.pop_back();
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

    absorb_sign(*row, held);
    NumericNode const node{row, held[0], row == &square_row ? held[0] : held[1], held[2]};
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
    struct Operation {
        NumericRow const* row = nullptr;
        std::uint16_t target = 0;
        std::uint16_t first = 0, second = 0, third = 0;
        std::size_t joint = 0;
    };

    void count_readers();
    bool is_lone_product(std::uint16_t node) const;
    std::optional<std::uint16_t> joined_product(NumericNode const& sum) const;
    void plan(std::uint16_t node);
    void write_code();
    Operation operation_of(std::uint16_t node) const;
    void join(Operation& operation);
    std::optional<std::uint16_t> find(OpcodeNumber number, std::uint16_t operand) const;

    NumericForm& form_;
    std::vector<Operation> operations_;
    std::vector<int> readers_ = std::vector<int>(form_.nodes.size(), 0); // 0: the result needs it not
    std::vector<char> written_ = std::vector<char>(form_.nodes.size(), false);
    std::vector<char> read_ = std::vector<char>(form_.nodes.size(), false); // from its cell
};

void CodeWriter::count_readers() {
    readers_[form_.result] = 1;
    for (std::size_t node = form_.nodes.size(); node-- > 0;) {
        NumericNode const& each = form_.nodes[node];
        if (!each.row || readers_[node] == 0) continue;
        ++readers_[each.first];
        if (each.row->operands > 1) ++readers_[each.second];
        if (each.row->operands > 2) ++readers_[each.third];
    }
}

bool CodeWriter::is_lone_product(std::uint16_t node) const {
    return form_.nodes[node].row == numeric_row(opcode::multiply) && readers_[node] == 1;
}

// The operand of a sum or difference that is computed along with it: the second, so that a product before
// it can join the function it belongs to.
std::optional<std::uint16_t> CodeWriter::joined_product(NumericNode const& sum) const {
    if (!sum.row || (sum.row->number != opcode::add && sum.row->number != opcode::subtract))
        return std::nullopt;
    if (is_lone_product(sum.second)) return sum.second;
    if (is_lone_product(sum.first)) return sum.first;
    return std::nullopt;
}

void CodeWriter::write() {
    count_readers();
    auto const count = static_cast<std::uint16_t>(form_.nodes.size()); // a formula has a few hundred steps
    for (std::uint16_t node = 0; node < count; ++node)
        if (auto const product = joined_product(form_.nodes[node]); product && readers_[node] > 0)
            written_[*product] = true;
    for (std::uint16_t node = 0; node < count; ++node)
        if (form_.nodes[node].row && readers_[node] > 0 && !written_[node]) plan(node);
    write_code();
}

void CodeWriter::write_code() {
    bool const handed_on = operations_.back().target == form_.result;
    if (!handed_on) read_[form_.result] = true;
    form_.code.reserve(operations_.size() + 1);
    for (Operation const& each : operations_) {
        bool const last = handed_on && &each == &operations_.back();
        std::size_t const joint = each.joint | (read_[each.target] ? is_kept : 0) | (last ? is_last : 0);
        form_.code.push_back({each.row->on_cells[joint], each.row->on_columns, each.target, each.first,
                              each.second, each.third});
    }
    if (!handed_on) form_.code.push_back({&return_cell, nullptr, 0, form_.result, 0, 0});
}

void CodeWriter::plan(std::uint16_t node) {
    Operation operation = operation_of(node);
    join(operation);
    written_[node] = written_[operation.target] = true;
    if (operation.row == &sine_and_cosine_row) written_[operation.second] = true;
    operations_.push_back(operation);
}

std::optional<std::uint16_t> CodeWriter::find(OpcodeNumber number, std::uint16_t operand) const {
    auto const is_it = [&](NumericNode const& node) {
        return node.row && node.row->number == number && node.first == operand;
    };
    auto const found = std::ranges::find_if(form_.nodes, is_it);
    if (found == form_.nodes.end()) return std::nullopt;
    return static_cast<std::uint16_t>(found - form_.nodes.begin());
}

// The node's own operation, sine and cosine together when the formula has both of one angle, or a sum
// together with a product.
CodeWriter::Operation CodeWriter::operation_of(std::uint16_t number) const {
    NumericNode const& node = form_.nodes[number];
    if (node.row->number == opcode::sine || node.row->number == opcode::cosine) {
        auto const sine = find(opcode::sine, node.first);
        auto const cosine = find(opcode::cosine, node.first);
        if (sine && cosine) return {&sine_and_cosine_row, *sine, node.first, *cosine, node.first, 0};
    }
    if (auto const joined = joined_product(node)) {
        NumericNode const& product = form_.nodes[*joined];
        bool const is_second = *joined == node.second;
        NumericRow const& difference = is_second ? minus_product_row : product_minus_row;
        NumericRow const& row = node.row->number == opcode::add ? product_plus_row : difference;
        return {&row, number, product.first, product.second, is_second ? node.first : node.second, 0};
    }
    return {node.row, number, node.first, node.second, node.third, 0};
}

// An operand that the operation before has just computed is handed over, any other is read from its cell.
void CodeWriter::join(Operation& operation) {
    auto const is_previous = [this](std::uint16_t node) {
        return !operations_.empty() && operations_.back().target == node;
    };
    std::uint8_t const operands = operation.row->operands;
    if (is_previous(operation.first))
        operation.joint |= first_is_previous;
    else
        read_[operation.first] = true;
    if (operands >= 2 && is_previous(operation.second))
        operation.joint |= second_is_previous;
    else if (operands >= 2)
        read_[operation.second] = true;
    if (operands == 3) read_[operation.third] = true;
}

std::unique_ptr<NumericForm> FormBuilder::finish() {
    if (stack_.size() != 1 || !form_->nodes[stack_.back()].row) return nullptr;
    form_->result = stack_.back();
    form_->result_kind = bounds_[form_->result].kind.value_or(Kind::Empty);
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

} // namespace qv::expression
