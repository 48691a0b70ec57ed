#include "scale/numeric.h"

#include "document/trap.h"
#include "qvgraph/fault.h"

#include <cmath>

namespace qv::scale {

float Frac(float value) {
    float const magnitude = std::abs(value);
    return std::isfinite(magnitude) ? magnitude - std::trunc(magnitude) : 0;
}

double Log10(double value) {
    return value > 0 ? std::log10(value) : 0;
}

double xxLog(double value, bool is_log) {
    if (!is_log) return value;
    if (!(value > 0)) raise_fault(FaultNumber::InvalidProcedureCall);
    return std::log(value);
}

double xxExp(double value, bool is_log) {
    if (!is_log) return value;
    double const power = std::exp(value);
    if (!std::isfinite(power)) raise_fault(FaultNumber::Overflow);
    return power;
}

double xxLog(document::ControlState& state, double value, bool is_log) {
    double result = 0;
    trapped(state, "xxLog", [&] { result = xxLog(value, is_log); });
    return result;
}

double xxExp(document::ControlState& state, double value, bool is_log) {
    double result = 0;
    trapped(state, "xxExp", [&] { result = xxExp(value, is_log); });
    return result;
}

} // namespace qv::scale
