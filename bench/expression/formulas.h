// The formulas that are measured, in three spellings, and the samples they run over.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace qv::bench {

struct Formula {
    char const* text;     ///< as this library spells it
    char const* muparser; ///< as muParser spells it
    void (*native)(double const* x, double* y, std::size_t count);
};

void native_1(double const* x, double* y, std::size_t count);
void native_2(double const* x, double* y, std::size_t count);
void native_3(double const* x, double* y, std::size_t count);

inline constexpr std::array formulas{
    Formula{"x^2*SIN(x)+3*x-1", "x^2*sin(x)+3*x-1", native_1},
    Formula{"SQR(ABS(x))*EXP(-x/10)", "sqrt(abs(x))*exp(-x/10)", native_2},
    Formula{"SIN(x)*COS(x)+SIN(2*x)", "sin(x)*cos(x)+sin(2*x)", native_3},
};

inline constexpr std::size_t sample_count = 100000;

/// Even samples of [0, 100).
inline std::vector<double> samples() {
    std::vector<double> x(sample_count);
    for (std::size_t i = 0; i < x.size(); ++i)
        x[i] = 100.0 * static_cast<double>(i) / static_cast<double>(x.size());
    return x;
}

} // namespace qv::bench
