#include "expression/numeric_operations.h"

#include "expression/mathematics.h"

#include <utility>

namespace qv::expression {
namespace {

template <std::size_t Joint>
double run_next(Instruction const* instruction, double* cells, double value) {
    if constexpr ((Joint & is_kept) != 0) cells[instruction->target] = value;
    if constexpr ((Joint & is_last) != 0)
        return value;
    else
        return instruction[1].run(instruction + 1, cells, value);
}

// Every operation is a type with a static `apply`, so that the three ways to run it are written once for
// each number of operands.
template <double (*Function)(double)>
struct Unary {
    static constexpr std::uint8_t operands = 1;

    static double on_values(double a, double, double) { return Function(a); }

    template <std::size_t Joint>
    static double on_cells(Instruction const* at, double* cells, double previous) {
        return run_next<Joint>(at, cells, Function(Joint & first_is_previous ? previous : cells[at->first]));
    }

    static void on_columns(Instruction const& at, Columns const& columns) {
        double* const target = columns.write[at.target];
        double const* const a = columns.read[at.first];
        for (std::size_t i = 0; i < block_length; ++i) target[i] = Function(a[i]);
    }
};

template <double (*Function)(double, double)>
struct Binary {
    static constexpr std::uint8_t operands = 2;

    static double on_values(double a, double b, double) { return Function(a, b); }

    template <std::size_t Joint>
    static double on_cells(Instruction const* at, double* cells, double previous) {
        double const a = Joint & first_is_previous ? previous : cells[at->first];
        double const b = Joint & second_is_previous ? previous : cells[at->second];
        return run_next<Joint>(at, cells, Function(a, b));
    }

    static void on_columns(Instruction const& at, Columns const& columns) {
        double* const target = columns.write[at.target];
        double const* const a = columns.read[at.first];
        double const* const b = columns.read[at.second];
        for (std::size_t i = 0; i < block_length; ++i) target[i] = Function(a[i], b[i]);
    }
};

template <double (*Function)(double, double, double)>
struct Ternary {
    static constexpr std::uint8_t operands = 3;

    static double on_values(double a, double b, double c) { return Function(a, b, c); }

    template <std::size_t Joint>
    static double on_cells(Instruction const* at, double* cells, double previous) {
        double const a = Joint & first_is_previous ? previous : cells[at->first];
        double const b = Joint & second_is_previous ? previous : cells[at->second];
        return run_next<Joint>(at, cells, Function(a, b, cells[at->third]));
    }

    static void on_columns(Instruction const& at, Columns const& columns) {
        double* const target = columns.write[at.target];
        double const* const a = columns.read[at.first];
        double const* const b = columns.read[at.second];
        double const* const c = columns.read[at.third];
        for (std::size_t i = 0; i < block_length; ++i) target[i] = Function(a[i], b[i], c[i]);
    }
};

template <class Operation, std::size_t... Joint>
constexpr NumericRow row(OpcodeNumber number, KindRule rule, std::index_sequence<Joint...>) {
    return {number,
            Operation::operands,
            rule,
            &Operation::on_values,
            {&Operation::template on_cells<Joint>...},
            &Operation::on_columns,
            {}};
}
template <class Operation>
constexpr NumericRow row(OpcodeNumber number, KindRule rule) {
    return row<Operation>(number, rule, std::make_index_sequence<joints>());
}

template <double (*Function)(double)>
constexpr NumericRow unary(OpcodeNumber number, KindRule rule = KindRule::Double) {
    return row<Unary<Function>>(number, rule);
}
template <double (*Function)(double, double)>
constexpr NumericRow binary(OpcodeNumber number, KindRule rule = KindRule::Double) {
    return row<Binary<Function>>(number, rule);
}

namespace m = mathematics;

// A loop over a block for a function of the library, together with its companions.
template <double (*Function)(double), Before What, After Then>
void with_companions(Instruction const& at, Columns const& columns) {
    double* const target = columns.write[at.target];
    double const* const a = columns.read[at.first];
    double const* const b = columns.read[at.second];
    double const* const factor = columns.read[at.third];
    for (std::size_t i = 0; i < block_length; ++i) {
        double operand = a[i];
        if constexpr (What == Before::Product) operand = m::multiply(a[i], b[i]);
        if constexpr (What == Before::Quotient) operand = m::divide(a[i], b[i]);
        if constexpr (What == Before::Magnitude) operand = m::absolute(a[i]);
        double const value = Function(operand);
        target[i] = Then == After::Product ? m::multiply(value, factor[i]) : value;
    }
}

template <double (*Function)(double)>
constexpr NumericRow costly(OpcodeNumber number) {
    NumericRow row = unary<Function>(number);
    row.with_companions = {&with_companions<Function, Before::Nothing, After::Nothing>,
                           &with_companions<Function, Before::Nothing, After::Product>,
                           &with_companions<Function, Before::Product, After::Nothing>,
                           &with_companions<Function, Before::Product, After::Product>,
                           &with_companions<Function, Before::Quotient, After::Nothing>,
                           &with_companions<Function, Before::Quotient, After::Product>,
                           &with_companions<Function, Before::Magnitude, After::Nothing>,
                           &with_companions<Function, Before::Magnitude, After::Product>};
    return row;
}

constexpr std::array rows{
    unary<m::negate>(opcode::negate, KindRule::Negation),
    unary<m::logical_not>(opcode::logical_not, KindRule::Truth),
    binary<m::power>(opcode::power),
    binary<m::multiply>(opcode::multiply, KindRule::Product),
    binary<m::divide>(opcode::divide),
    binary<m::integer_quotient>(opcode::integer_divide, KindRule::Whole),
    binary<m::remainder>(opcode::modulo, KindRule::Whole),
    binary<m::add>(opcode::add, KindRule::Sum),
    binary<m::subtract>(opcode::subtract, KindRule::Difference),
    binary<m::equal>(opcode::equal, KindRule::Truth),
    binary<m::not_equal>(opcode::not_equal, KindRule::Truth),
    binary<m::less_or_equal>(opcode::less_or_equal, KindRule::Truth),
    binary<m::less>(opcode::less, KindRule::Truth),
    binary<m::greater_or_equal>(opcode::greater_or_equal, KindRule::Truth),
    binary<m::greater>(opcode::greater, KindRule::Truth),
    binary<m::logical_and>(opcode::logical_and, KindRule::Truth),
    binary<m::logical_or>(opcode::logical_or, KindRule::Truth),
    binary<m::logical_xor>(opcode::logical_xor, KindRule::Truth),
    unary<m::absolute>(opcode::absolute, KindRule::Kept),
    unary<m::floor>(opcode::floor, KindRule::Kept),
    unary<m::truncate>(opcode::truncate, KindRule::Kept),
    unary<m::sign>(opcode::sign, KindRule::Sign),
    costly<m::square_root>(opcode::square_root),
    costly<m::log10>(opcode::log10),
    costly<m::ln>(opcode::ln),
    costly<m::exponential>(opcode::exponential),
    costly<m::sine>(opcode::sine),
    unary<m::arcsine>(opcode::arcsine),
    costly<m::cosine>(opcode::cosine),
    unary<m::arccosine>(opcode::arccosine),
    costly<m::tangent>(opcode::tangent),
    costly<m::arctangent>(opcode::arctangent),
    unary<m::hyperbolic_sine>(opcode::hyperbolic_sine),
    unary<m::hyperbolic_cosine>(opcode::hyperbolic_cosine),
    unary<m::hyperbolic_tangent>(opcode::hyperbolic_tangent),
    unary<m::area_sine>(opcode::area_sine),
    unary<m::area_cosine>(opcode::area_cosine),
    unary<m::area_tangent>(opcode::area_tangent),
    unary<m::factorial>(opcode::factorial),
    binary<m::minimum>(opcode::minimum, KindRule::Either),
    binary<m::maximum>(opcode::maximum, KindRule::Either),
    binary<m::combinations>(opcode::combinations),
    binary<m::permutations>(opcode::permutations),
    row<Ternary<m::choose>>(opcode::choose, KindRule::Either),
};

constexpr auto row_of_opcode = [] {
    std::array<NumericRow const*, opcode::last + 1> table{};
    for (NumericRow const& each : rows) table[static_cast<std::size_t>(each.number)] = &each;
    return table;
}();

// Side by side, the compiler turns the two calls into one that reduces the angle once; both results keep
// their bits.
struct SineAndCosine {
    static constexpr std::uint8_t operands = 1;

    static double on_values(double a, double, double) { return std::sin(a); }

    template <std::size_t Joint>
    static double on_cells(Instruction const* at, double* cells, double previous) {
        double const angle = Joint & first_is_previous ? previous : cells[at->first];
        double const sine = std::sin(angle);
        cells[at->second] = std::cos(angle);
        return run_next<Joint>(at, cells, sine);
    }

    static void on_columns(Instruction const& at, Columns const& columns) {
        double* const sines = columns.write[at.target];
        double* const cosines = columns.write[at.second];
        double const* const angles = columns.read[at.first];
        for (std::size_t i = 0; i < block_length; ++i) {
            double const angle = angles[i];
            sines[i] = std::sin(angle);
            cosines[i] = std::cos(angle);
        }
    }
};

} // namespace

const NumericRow square_row = unary<m::square>(opcode::power);
const NumericRow integer_product_row = binary<m::multiply_integers>(opcode::multiply, KindRule::Product);
const NumericRow integer_negation_row = unary<m::negate_integer>(opcode::negate, KindRule::Negation);

const NumericRow product_plus_row = row<Ternary<m::product_plus>>(opcode::add, KindRule::Double);
const NumericRow product_minus_row = row<Ternary<m::product_minus>>(opcode::subtract, KindRule::Double);
const NumericRow minus_product_row = row<Ternary<m::minus_product>>(opcode::subtract, KindRule::Double);
const NumericRow sine_and_cosine_row = row<SineAndCosine>(opcode::sine, KindRule::Double);

NumericRow const* numeric_row(OpcodeNumber number) {
    if (number < 0 || number > opcode::last) return nullptr;
    return row_of_opcode[static_cast<std::size_t>(number)];
}

double return_cell(Instruction const* instruction, double* cells, double) {
    return cells[instruction->first];
}

} // namespace qv::expression
