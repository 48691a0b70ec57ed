#include "expression/arithmetic.h"
#include "expression/evaluation.h"
#include "expression/mathematics.h"
#include "expression/text_functions.h"

#include <cmath>

namespace qv::expression {
namespace {

using StepCode = void (*)(Evaluation&);

Operand const no_operand = faulted();

bool any_faulted(Operand const& a, Operand const& b) {
    return a.kind == Kind::Faulted || b.kind == Kind::Faulted;
}

// These run an operation on its operands, unless one of them is outside the stack or has no value.
template <Operand (*Operation)(Operand const&)>
void unary(Evaluation& state) {
    Operand held;
    Operand const& b = resolved(state.top, held);
    state.store(any_faulted(b, b) ? faulted() : Operation(b));
}

template <Operand (*Operation)(Operand const&, Operand const&)>
void binary(Evaluation& state) {
    Operand held_a, held_b;
    Operand const& a = resolved(state.below(), held_a);
    Operand const& b = resolved(state.top, held_b);
    state.store(any_faulted(a, b) ? faulted() : Operation(a, b));
    --state.sp;
}

template <Operand (*Operation)(Operand const&, Operand const&, Operand const&)>
void ternary(Evaluation& state) {
    Operand held_a, held_b, held_c;
    Operand const& a = resolved(state.below(1), held_a);
    Operand const& b = resolved(state.below(), held_b);
    Operand const& c = resolved(state.top, held_c);
    state.store(any_faulted(a, b) || any_faulted(c, c) ? faulted() : Operation(a, b, c));
    state.sp -= 2;
}

// Functions of the mathematics: the operand is converted to a double first.
template <double (*Function)(double)>
Operand real(Operand const& operand) {
    const Number b = number_in(operand);
    return b.faulted() ? faulted() : double_operand(Function(b.value));
}

template <double (*Function)(double, double)>
Operand real_pair(Operand const& left, Operand const& right) {
    const Number a = number_in(left);
    const Number b = number_in(right);
    return a.faulted() || b.faulted() ? faulted() : double_operand(Function(a.value, b.value));
}

// The quotient and the remainder of whole numbers are 32-bit integers.
template <double (*Function)(double, double)>
Operand whole_pair(Operand const& a, Operand const& b) {
    Operand result = real_pair<Function>(a, b);
    if (result.kind == Kind::Double) result.kind = Kind::Int32;
    return result;
}

std::string argument_text(std::string_view name, double b) {
    return std::string(name) + "(" + FormatReal(b) + ")";
}

template <double (*Function)(double), bool (*Allowed)(double), OpcodeNumber Opcode>
void real_within(Evaluation& state) {
    const Number b = number_in(state.top);
    if (b.faulted()) return state.fault();
    if (Allowed(b.value)) return state.store(double_operand(Function(b.value)));
    state.end_with_domain_error(argument_text(state.engine.opcodes[Opcode].name, b.value));
}

bool above_zero(double b) {
    return b > 0;
}
bool within_one(double b) {
    return b >= -1 && b <= 1;
}
bool from_one(double b) {
    return b >= 1;
}
// At 1 itself the division in the formula is a fault, not an error.
bool above_minus_one(double b) {
    return b > -1 && b <= 1;
}

Operand logical_not(Operand const& b) {
    return int16_operand(b.kind != Kind::Text && b.number <= 0 ? 1 : 0);
}

template <bool (*Holds)(std::partial_ordering)>
Operand comparison(Operand const& a, Operand const& b) {
    return int16_operand(Holds(compare(a, b)) ? 1 : 0);
}

Operand logical_and(Operand const& a, Operand const& b) {
    return int16_operand(is_true(a) && is_true(b) ? 1 : 0);
}
Operand logical_or(Operand const& a, Operand const& b) {
    return int16_operand(is_true(a) || is_true(b) ? 1 : 0);
}
Operand logical_xor(Operand const& a, Operand const& b) {
    return int16_operand(is_true(a) != is_true(b) ? 1 : 0);
}

Operand lesser(Operand const& a, Operand const& b) {
    return std::is_lt(compare(a, b)) ? a : b;
}
Operand greater(Operand const& a, Operand const& b) {
    return std::is_gt(compare(a, b)) ? a : b;
}
Operand chosen(Operand const& condition, Operand const& yes, Operand const& no) {
    return is_true(condition) ? yes : no;
}

void pi(Evaluation& state) {
    state.push(double_operand(mathematics::pi));
}
void degree(Evaluation& state) {
    state.push(double_operand(mathematics::degree));
}

// Both division operators: a divisor of zero is an error, one that only rounds to zero a fault.
template <Operand (*Quotient)(Operand const&, Operand const&)>
void division(Evaluation& state) {
    const Number divisor = number_in(state.top);
    if (!divisor.faulted() && divisor.value == 0) return state.end_with_domain_error("Div by zero");
    binary<Quotient>(state);
}

bool has_power(double base, double exponent) {
    return base >= 0 || mathematics::finite(mathematics::power(-1, exponent));
}

void power(Evaluation& state) {
    const Number a = number_in(state.below());
    const Number b = number_in(state.top);
    if (!a.faulted() && !b.faulted() && !has_power(a.value, b.value))
        return state.end_with_domain_error("(" + FormatReal(a.value) + ") ^ " + FormatReal(b.value));
    binary<real_pair<mathematics::power>>(state);
}

// Between 0 inclusive and 1, at the 24 bits of a single.
Operand random_single(std::uint64_t& generator) {
    generator = generator * 6364136223846793005U + 1442695040888963407U;
    Operand result = double_operand(static_cast<double>(generator >> 40) * 0x1p-24);
    result.kind = Kind::Single;
    return result;
}

void random(Evaluation& state) {
    state.store(product(state.top, random_single(state.engine.random_state)));
}

// Outside its range a factorial is 0 and the evaluation goes on.
void factorial(Evaluation& state) {
    const Number x = number_in(state.top);
    if (x.faulted()) return state.fault();
    double const value = mathematics::factorial(x.value);
    if (!mathematics::finite(value)) state.domain_error(argument_text("FACT", x.value));
    state.store(double_operand(mathematics::finite(value) ? value : 0));
}

template <double (*Function)(double, double)>
void selections(Evaluation& state, std::string_view name) {
    const Number n = number_in(state.below());
    const Number r = number_in(state.top);
    --state.sp;
    if (n.faulted() || r.faulted()) return state.fault();
    double const value = Function(n.value, r.value);
    if (mathematics::finite(value)) return state.store(double_operand(value));
    std::string text(name);
    state.domain_error(text + "(" + FormatReal(n.value) + "," + FormatReal(r.value) + ")");
}

void combinations(Evaluation& state) {
    selections<mathematics::combinations>(state, "nCr");
}
void permutations(Evaluation& state) {
    selections<mathematics::permutations>(state, "nPr");
}

void internal_error(Evaluation& state) {
    state.fault();
}

// How many values below and with the accumulator a step reads.
int operands_of(Engine const& engine, OpcodeNumber number) {
    if (number == opcode::push || number == opcode::pi || number == opcode::degree) return 0;
    if (number < 0)
        return engine.arrays.size() > static_cast<std::size_t>(-number)
                   ? engine.arrays[static_cast<std::size_t>(-number)].dimensions
                   : 0;
    if (number < opcode::pi) return number <= opcode::logical_not ? 1 : 2;
    return engine.opcodes[static_cast<std::size_t>(number)].arguments;
}

// A text that has to be read as a number is gone through again and again.
constexpr std::size_t cost_of_number = 8;

bool reads_numbers(OpcodeNumber number, Operand const& left, Operand const& right) {
    if (number == opcode::add) return text_bytes(left) == 0 || text_bytes(right) == 0;
    bool const is_function = number >= opcode::absolute && number <= opcode::permutations;
    bool const selects = number == opcode::minimum || number == opcode::maximum;
    return number <= opcode::subtract || number == opcode::modulo || (is_function && !selects)
           || number == opcode::spaces;
}

// A text costs the time and the memory of its bytes wherever it is read.
std::size_t bytes_read(Evaluation const& state, Step const& step) {
    int const operands = operands_of(state.engine, step.number);
    std::size_t bytes = operands > 0 ? text_bytes(state.top) : 0;
    for (int depth = 0; depth + 1 < operands; ++depth) bytes += text_bytes(state.below(depth));
    if (bytes > 0 && reads_numbers(step.number, state.below(), state.top)) bytes *= cost_of_number;
    return bytes;
}

struct StepRow {
    OpcodeNumber number;
    StepCode run;
};

namespace m = mathematics;

constexpr StepRow step_rows[] = {
    {opcode::negate, unary<negated>},
    {opcode::logical_not, unary<logical_not>},
    {opcode::power, power},
    {opcode::multiply, binary<product>},
    {opcode::divide, division<real_pair<m::divide>>},
    {opcode::integer_divide, division<whole_pair<m::integer_quotient>>},
    {opcode::modulo, binary<whole_pair<m::remainder>>},
    {opcode::add, binary<sum>},
    {opcode::subtract, binary<difference>},
    {opcode::equal, binary<comparison<std::is_eq>>},
    {opcode::not_equal, binary<comparison<std::is_neq>>},
    {opcode::less_or_equal, binary<comparison<std::is_lteq>>},
    {opcode::less, binary<comparison<std::is_lt>>},
    {opcode::greater_or_equal, binary<comparison<std::is_gteq>>},
    {opcode::greater, binary<comparison<std::is_gt>>},
    {opcode::logical_and, binary<logical_and>},
    {opcode::logical_or, binary<logical_or>},
    {opcode::logical_xor, binary<logical_xor>},
    {opcode::concatenate, binary<concatenated>},
    {opcode::pi, pi},
    {opcode::degree, degree},
    {opcode::absolute, unary<absolute_value>},
    {opcode::floor, unary<largest_whole>},
    {opcode::truncate, unary<truncated>},
    {opcode::sign, unary<sign_of>},
    {opcode::random, random},
    {opcode::square_root, unary<real<m::square_root>>},
    {opcode::log10, real_within<m::log10, above_zero, opcode::log10>},
    {opcode::ln, real_within<m::ln, above_zero, opcode::ln>},
    {opcode::exponential, unary<real<m::exponential>>},
    {opcode::sine, unary<real<m::sine>>},
    {opcode::arcsine, real_within<m::arcsine, within_one, opcode::arcsine>},
    {opcode::cosine, unary<real<m::cosine>>},
    {opcode::arccosine, real_within<m::arccosine, within_one, opcode::arccosine>},
    {opcode::tangent, unary<real<m::tangent>>},
    {opcode::arctangent, unary<real<m::arctangent>>},
    {opcode::hyperbolic_sine, unary<real<m::hyperbolic_sine>>},
    {opcode::hyperbolic_cosine, unary<real<m::hyperbolic_cosine>>},
    {opcode::hyperbolic_tangent, unary<real<m::hyperbolic_tangent>>},
    {opcode::area_sine, unary<real<m::area_sine>>},
    {opcode::area_cosine, real_within<m::area_cosine, from_one, opcode::area_cosine>},
    {opcode::area_tangent, real_within<m::area_tangent, above_minus_one, opcode::area_tangent>},
    {opcode::factorial, factorial},
    {opcode::minimum, binary<lesser>},
    {opcode::maximum, binary<greater>},
    {opcode::combinations, combinations},
    {opcode::permutations, permutations},
    {opcode::choose, ternary<chosen>},
    {opcode::length, unary<text_length>},
    {opcode::character_code, unary<character_code>},
    {opcode::spaces, unary<spaces>},
    {opcode::repeat, binary<repeated>},
    {opcode::left, binary<left_part>},
    {opcode::right, binary<right_part>},
    {opcode::middle, ternary<middle_part>},
    {opcode::position, ternary<position_of_text>},
};

constexpr auto step_codes = [] {
    std::array<StepCode, opcode::last + 1> codes{};
    codes.fill(internal_error);
    for (StepRow const& row : step_rows) codes[static_cast<std::size_t>(row.number)] = row.run;
    return codes;
}();

} // namespace

Operand const& Evaluation::below(int depth) const {
    int const place = sp - depth;
    return place >= 1 && place <= max_stack ? stack[static_cast<std::size_t>(place)] : no_operand;
}

void Evaluation::push(Operand const& value) {
    ++sp;
    if (sp >= 1 && sp <= max_stack)
        stack[static_cast<std::size_t>(sp)] = std::move(top);
    else
        fault();
    top = value;
}

void Evaluation::store(Operand result) {
    if (result.kind == Kind::Faulted)
        fault();
    else
        top = std::move(result);
}

void Evaluation::count_text(std::size_t bytes) {
    std::size_t& used = engine.outermost().text_bytes_used;
    used += bytes;
    if (used > max_text_bytes)
        raise_fault(
            FaultNumber::OutOfMemory,
            "Out of memory: the texts that one evaluation reads and writes may have 144 MiB together");
}

namespace {

void run_uncounted(Evaluation& state, Step const& step) {
    if (step.number == opcode::push)
        state.push(step.operand);
    else if (step.number < 0)
        run_array_element(state, -step.number);
    else if (is_user_function(step.number))
        run_user_function(state, step.number);
    else
        step_codes[static_cast<std::size_t>(step.number)](state);
}

// As many steps as there can be read no more of short texts than a moment takes.
constexpr std::size_t short_text = 64;

void count_result(Evaluation& state) {
    if (state.top.text.size() <= short_text) return;
    state.has_long_texts = true;
    state.count_text(state.top.text.size());
}

} // namespace

void run_step(Evaluation& state, Step const& step) {
    if (state.has_long_texts) state.count_text(bytes_read(state, step));
    run_uncounted(state, step);
    if (state.top.kind == Kind::Text)
        count_result(state);
    else if (step.number == opcode::push && text_bytes(state.top) > short_text)
        state.has_long_texts = true;
}

} // namespace qv::expression
