#include "control/property_access.h"
#include "qvgraph/qvGraph.h"
#include "scale/axis_range.h"

#include <cmath>

namespace qv::control {

void color_page_surfaces(ControlState& state) {
    for (auto const& surface :
         {std::ref(state.Picture1), std::ref(state.GraphImage), std::ref(state.Picture2)})
        surface.get()->state.BackColor = state.PageFill.Color1;
}

namespace {

// Conversions between what the host gives and what the field holds. Those without a factor only change type.
struct Plain {};
constexpr Plain plain, text, byte, rounded, flag, widened;

struct Percent {
    static double stored(ControlState const&, double value) { return value / 100; }
    static double read(ControlState const&, double field) { return field * 100; }
} constexpr percent;

struct MillimetresAcross {
    static double stored(ControlState const& state, double value) { return value * state.UnitsPerMmX; }
    static double read(ControlState const& state, double field) { return field / state.UnitsPerMmX; }
} constexpr mm_across;

struct MillimetresDown {
    static double stored(ControlState const& state, double value) { return value * state.UnitsPerMmY; }
    static double read(ControlState const& state, double field) { return field / state.UnitsPerMmY; }
} constexpr mm_down;

struct HalfMillimetresAcross {
    static double stored(ControlState const& state, double value) { return value * state.UnitsPerMmX / 2; }
    static double read(ControlState const& state, double field) { return field / state.UnitsPerMmX * 2; }
} constexpr half_mm_across;

template <class Conversion>
constexpr bool has_factor = !std::is_same_v<Conversion, Plain>;

template <class To, class From>
To converted(From const& value) {
    if constexpr (std::is_same_v<From, Variant>)
        return text_of(value);
    else if constexpr (!Number<To>)
        return To(value);
    else if constexpr (std::is_same_v<From, bool> && !std::is_same_v<To, bool>)
        return value ? To(-1) : To(0);
    else
        return checked<To>(value);
}

template <class Value, class Field, class Conversion>
Value read(ControlState const& state, Field const& field, Conversion conversion) {
    if constexpr (has_factor<Conversion>)
        return converted<Value>(conversion.read(state, field));
    else
        return converted<Value>(field);
}

template <class Value, class Field, class Conversion>
void store(ControlState const& state, Field& field, Value const& value, Conversion conversion) {
    if constexpr (has_factor<Conversion>) {
        double const stored = conversion.stored(state, value);
        if (!std::isfinite(stored)) raise_fault(FaultNumber::Overflow); // a length no page can have
        field = converted<Field>(stored);
    } else
        field = converted<Field>(value);
}

// What a Let does after storing.
void nothing(ControlState&) {}

void follow_mode(ControlState& state) {
    scale::SetAxisScale(state);
    Axis& axis = selected_axis(state);
    if (state.AutoFit && axis.has_mode(AxisMode::Automatic)) axis.AxisRescale = true;
}

void find_axes_anew(ControlState& state) {
    state.point_target = {};
}

void fix_range(ControlState& state) {
    selected_axis(state).AxisScale = static_cast<std::uint8_t>(AxisMode::Fixed);
    scale::SetAxisScale(state);
}

/// The value inside a checked parameter, or the text or variant itself.
template <class Kind, class Argument>
decltype(auto) value_of(Argument const& argument) {
    if constexpr (Kind::accepts == Accepts::Number)
        return static_cast<typename Kind::value>(argument);
    else
        return (argument);
}

} // namespace

namespace property {

#define QV_READ_ONLY_PROPERTY(name, kind_, target_, field_, conversion_)                                     \
    kind::kind_::value name(ControlState const& state) {                                                     \
        return read<kind::kind_::value>(state, target::target_(state).field_, conversion_);                  \
    }
#define QV_PROPERTY(name, kind_, target_, field_, conversion_, then_)                                        \
    QV_READ_ONLY_PROPERTY(name, kind_, target_, field_, conversion_)                                         \
    void name(ControlState& state, kind::kind_::argument value) {                                            \
        store(state, target::target_(state).field_, value_of<kind::kind_>(value), conversion_);              \
        then_(state);                                                                                        \
    }
#include "control/properties.def"

void GraphTitle(ControlState& state, std::string_view title) {
    at(state.GraphTitles, state.CurrentGraph, "graph") = title;
}

} // namespace property
} // namespace qv::control

namespace qv {

#define QV_READ_ONLY_PROPERTY(name, kind_, target_, field_, conversion_)                                     \
    control::kind::kind_::value qvGraph::name() const {                                                      \
        return control::property::name(*state_);                                                             \
    }
#define QV_PROPERTY(name, kind_, target_, field_, conversion_, then_)                                        \
    QV_READ_ONLY_PROPERTY(name, kind_, target_, field_, conversion_)                                         \
    void qvGraph::name(control::kind::kind_::argument value) {                                               \
        control::property::name(*state_, value);                                                             \
    }
#include "control/properties.def"

} // namespace qv
