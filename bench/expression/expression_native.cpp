// The loops a programmer would write by hand, apart from the measuring code so that nothing is folded away.
#include "expression/formulas.h"

#include <cmath>

namespace qv::bench {

void native_1(double const* x, double* y, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) y[i] = x[i] * x[i] * std::sin(x[i]) + 3 * x[i] - 1;
}

void native_2(double const* x, double* y, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) y[i] = std::sqrt(std::fabs(x[i])) * std::exp(-x[i] / 10);
}

void native_3(double const* x, double* y, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) y[i] = std::sin(x[i]) * std::cos(x[i]) + std::sin(2 * x[i]);
}

} // namespace qv::bench
