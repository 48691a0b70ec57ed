#include "expression/mathematics.h"
#include "expression/numeric_form.h"
#include "expression/numeric_operations.h"
#include "qvgraph/variables.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace qv::expression {
namespace {

// Joins costly functions with their companions: neighbours in the code whose results nothing else reads.
class Companions {
public:
    Companions(NumericForm const& form, std::span<Instruction const> code)
        : form_(form), code_(code), readers_(form.nodes.size(), 0) {}
    std::vector<Instruction> joined();

private:
    bool is_costly(Instruction const& instruction) const;
    Before take_before(Instruction& instruction);
    bool is_factor_of_next(std::size_t place) const;
    void count_readers();

    NumericForm const& form_;
    std::span<Instruction const> code_;
    std::vector<int> readers_; // of each node
    std::vector<Instruction> joined_;
};

// An instruction with fewer than three operands repeats one of them.
void Companions::count_readers() {
    ++readers_[form_.result];
    for (Instruction const& each : code_) {
        ++readers_[each.first];
        if (each.second != each.first) ++readers_[each.second];
        if (each.third != each.first && each.third != each.second) ++readers_[each.third];
    }
}

bool Companions::is_costly(Instruction const& instruction) const {
    NumericRow const& row = *form_.nodes[instruction.target].row;
    return row.with_companions.front() && instruction.run_block == row.on_columns;
}

Before kind_of_companion(Instruction const& instruction) {
    auto const is = [&](OpcodeNumber number) {
        return instruction.run_block == numeric_row(number)->on_columns;
    };
    if (is(opcode::multiply)) return Before::Product;
    if (is(opcode::divide)) return Before::Quotient;
    return is(opcode::absolute) ? Before::Magnitude : Before::Nothing;
}

// Takes the instruction before along when it computes the operand.
Before Companions::take_before(Instruction& instruction) {
    if (joined_.empty() || joined_.back().target != instruction.first || readers_[instruction.first] != 1)
        return Before::Nothing;
    Instruction const& before = joined_.back();
    Before const kind = kind_of_companion(before);
    if (kind == Before::Nothing) return kind;
    instruction.first = before.first;
    instruction.second = before.second;
    joined_.pop_back();
    return kind;
}

// A square is no companion: both its factors are the function's result.
bool Companions::is_factor_of_next(std::size_t place) const {
    if (place + 1 == code_.size()) return false;
    Instruction const& next = code_[place + 1];
    std::uint16_t const target = code_[place].target;
    bool const takes_it = (next.first == target) != (next.second == target);
    return takes_it && kind_of_companion(next) == Before::Product && readers_[target] == 1;
}

std::vector<Instruction> Companions::joined() {
    count_readers();
    for (std::size_t place = 0; place < code_.size(); ++place) {
        Instruction instruction = code_[place];
        if (is_costly(instruction)) {
            auto const& codes = form_.nodes[instruction.target].row->with_companions;
            Before const before = take_before(instruction);
            After const after = is_factor_of_next(place) ? After::Product : After::Nothing;
            instruction.run_block = codes[companion(before, after)];
            if (after == After::Product) {
                Instruction const& next = code_[++place];
                instruction.third = next.first == instruction.target ? next.second : next.first;
                instruction.target = next.target;
            }
        }
        joined_.push_back(instruction);
    }
    return std::move(joined_);
}

// Differences of values with themselves add up to 0 or, from the first value that is not finite, to
// not-a-number. Several sums side by side keep the additions from waiting for each other.
bool all_finite(std::span<double const> values) {
    std::array<double, 8> sums{};
    std::size_t const whole = values.size() - values.size() % sums.size();
    for (std::size_t i = 0; i < whole; i += sums.size())
        for (std::size_t k = 0; k < sums.size(); ++k) sums[k] += values[i + k] - values[i + k];
    for (double const value : values.subspan(whole)) sums[0] += value - value;
    return std::accumulate(sums.begin(), sums.end(), 0.0) == 0;
}

} // namespace

void NumericBlocks::lay_out_columns() {
    std::size_t const count = form_->nodes.size();
    values_.resize(count * block_length);
    columns_.read.resize(count);
    columns_.write.resize(count);
    for (std::size_t node = 0; node < count; ++node)
        columns_.read[node] = columns_.write[node] = values_.data() + node * block_length;
}

bool NumericBlocks::prepare(NumericForm& form, qvVariable const& x) {
    form_ = &form;
    lay_out_columns();
    std::vector<char> varies(form.nodes.size(), false);
    for (NumericInput const& input : form.inputs) {
        if (input.variable == &x)
            varies[*(x_cell_ = input.cell)] = true;
        else if (!load_variable(form, input))
            return false;
    }
    for (std::size_t node = 0; node < form.nodes.size(); ++node)
        if (!form.nodes[node].row) std::fill_n(columns_.write[node], block_length, form.cells[node]);
    // What does not depend on x is computed here, once.
    std::vector<Instruction> varying;
    for (Instruction const& each : form.code) {
        if (!each.run_block) continue;
        bool const depends = varies[each.first] || varies[each.second] || varies[each.third];
        if (!depends)
            each.run_block(each, columns_);
        else
            varying.push_back(each);
        varies[each.target] = depends;
        if (each.run_block == sine_and_cosine_row.on_columns) varies[each.second] = depends;
    }
    varying_ = Companions(form, varying).joined();
    return true;
}

void NumericBlocks::run_in_place(double const* x, double* y) {
    if (varying_.empty()) return void(std::copy_n(columns_.read[form_->result], block_length, y));
    if (x_cell_) columns_.read[*x_cell_] = x;
    columns_.write[form_->result] = y;
    for (Instruction const& each : varying_) each.run_block(each, columns_);
}

// Past the last sample the first one is repeated: its value is computed anyway.
void NumericBlocks::run_partly(std::span<double const> x, std::span<double> y) {
    std::array<double, block_length> all_x;
    std::array<double, block_length> all_y;
    std::fill(std::ranges::copy(x, all_x.begin()).out, all_x.end(), x.front());
    run_in_place(all_x.data(), all_y.data());
    std::copy_n(all_y.begin(), y.size(), y.begin());
}

bool NumericBlocks::run(std::span<double const> x, std::span<double> y) {
    if (x.size() == block_length)
        run_in_place(x.data(), y.data());
    else
        run_partly(x, y);
    return all_finite(y);
}

} // namespace qv::expression
