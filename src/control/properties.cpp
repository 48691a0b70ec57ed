#include "control/looks.h"
#include "control/property_access.h"
#include "qvgraph/qvGraph.h"
#include "render/dashes.h"
#include "render/grids/color_map.h"
#include "render/grids/contour_levels.h"
#include "scale/axis_range.h"
#include "scale/time_zone.h"

#include <array>
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
struct TimeZoneName {
} constexpr time_zone;
struct ColorTable {
} constexpr color_table;
struct Levels {
} constexpr levels;
struct DashPattern {
} constexpr dashes;

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
constexpr bool has_factor = requires {
    &Conversion::stored;
};

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
    } else {
        if constexpr (std::is_same_v<Conversion, TimeZoneName>) scale::TimeZone::named(value);
        if constexpr (std::is_same_v<Conversion, ColorTable>) render::color_map(value);
        if constexpr (std::is_same_v<Conversion, Levels>) render::level_choice(value);
        if constexpr (std::is_same_v<Conversion, DashPattern>) render::dash_pattern(value);
        field = converted<Field>(value);
    }
}

// What a Let does after storing, told of the records that it is about or of the control.
void nothing(ControlState&) {}

void find_axes_anew(ControlState& state) {
    state.point_target = {};
}

void dress_axis(Records const& records) {
    redress(*records.control, *records.graph, *records.axis);
}

void dress_data(Records const& records) {
    redress(*records.control, *records.graph, *records.data);
}

void follow_mode(Records const& records) {
    scale::SetAxisScale(*records.axis);
    bool const fits = records.control->AutoFit && records.axis->has_mode(AxisMode::Automatic);
    if (fits) records.axis->AxisRescale = true;
}

// Other categories are another scale.
void follow_categories(Records const& records) {
    if (records.axis->has_mode(AxisMode::Automatic)) records.axis->AxisRescale = true;
}

// The host has said where it stands.
void place_legend(Records const& records) {
    records.graph->LegendPlace = 0;
    mark_given(records.graph->given, Row::LegendPlace);
}

void fix_range(Records const& records) {
    records.axis->AxisScale = static_cast<std::uint8_t>(AxisMode::Fixed);
    scale::SetAxisScale(*records.axis);
}

void follow(Records const& records, void (*then)(ControlState&)) {
    then(*records.control);
}
void follow(Records const& records, void (*then)(Records const&)) {
    then(records);
}

/// The records that are selected, as far as a property of a target is about them.
namespace selected {
Records control(ControlState& state) {
    return {.control = &state};
}
Records graph(ControlState& state) {
    return {.control = &state, .graph = &current_graph(state)};
}
Records page(ControlState& state) {
    return graph(state);
}
Records axis(ControlState& state) {
    return {.control = &state, .graph = &current_graph(state), .axis = &selected_axis(state)};
}
Records data(ControlState& state) {
    return {.control = &state, .graph = &current_graph(state), .data = &selected_data_set(state)};
}
} // namespace selected

/// The value inside a checked parameter, or the text or variant itself.
template <class Kind, class Argument>
decltype(auto) value_of(Argument const& argument) {
    if constexpr (Kind::accepts == Accepts::Number)
        return static_cast<typename Kind::value>(argument);
    else
        return (argument);
}

// Where it is kept which properties of a record the host has set. The page's are kept with the control's.
namespace given_to {
auto& axis(auto&& records) {
    return target::axis(records).given;
}
auto& graph(auto&& records) {
    return target::graph(records).given;
}
auto& data(auto&& records) {
    return target::data(records).given;
}
auto& page(auto&& records) {
    return target::control(records).given;
}
auto& control(auto&& records) {
    return target::control(records).given;
}
} // namespace given_to

constexpr std::string_view fields[] = {
#define QV_READ_ONLY_PROPERTY(name, kind_, target_, field_, conversion_) #target_ "." #field_,
#define QV_PROPERTY(name, kind_, target_, field_, conversion_, then_) #target_ "." #field_,
#include "control/properties.def"
};

// The first row of each row's field: two properties may have one field.
constexpr auto first_rows = [] {
    std::array<std::uint8_t, std::size(fields)> first{};
    for (std::size_t row = 0; row < first.size(); ++row)
        while (fields[first[row]] != fields[row]) ++first[row];
    return first;
}();
static_assert(first_rows.size() <= GivenProperties().size());

std::size_t place_of(Row row) {
    return first_rows[static_cast<std::size_t>(row)];
}

} // namespace

bool is_given(GivenProperties const& given, Row row) {
    return given[place_of(row)];
}

void mark_given(GivenProperties& given, Row row) {
    given[place_of(row)] = true;
}

void unmark_given(GivenProperties& given, Row row) {
    given[place_of(row)] = false;
}

std::span<RecordRow const> record_rows() {
    using namespace std::string_view_literals;
    static constexpr RecordRow rows[] = {
#define QV_READ_ONLY_PROPERTY(name, kind_, target_, field_, conversion_)
#define QV_PROPERTY(name, kind_, target_, field_, conversion_, then_)                                        \
    {#name,                                                                                                  \
     #target_,                                                                                               \
     #then_ != "fix_range"sv && #then_ != "follow_mode"sv && #then_ != "follow_categories"sv,                \
     Row::name,                                                                                              \
     [](Records const& records) -> GivenProperties const& { return given_to::target_(records); },            \
     [](Records const& records, Variant const& value) {                                                      \
         store(*records.control, target::target_(records).field_, kind::kind_::from(value), conversion_);    \
     },                                                                                                      \
     [](Records const& to, Records const& from) {                                                            \
         target::target_(to).field_ = target::target_(from).field_;                                          \
     },                                                                                                      \
     [](Records const& records) { follow(records, then_); }},
#include "control/properties.def"
    };
    return rows;
}

namespace property {

#define QV_READ_ONLY_PROPERTY(name, kind_, target_, field_, conversion_)                                     \
    kind::kind_::value of::name(ControlState const& state, record::target_ const& record) {                  \
        return read<kind::kind_::value>(state, record.field_, conversion_);                                  \
    }                                                                                                        \
    kind::kind_::value name(ControlState const& state) {                                                     \
        return of::name(state, target::target_(state));                                                      \
    }
#define QV_PROPERTY(name, kind_, target_, field_, conversion_, then_)                                        \
    QV_READ_ONLY_PROPERTY(name, kind_, target_, field_, conversion_)                                         \
    void of::name(Records const& records, kind::kind_::argument value) {                                     \
        store(*records.control, target::target_(records).field_, value_of<kind::kind_>(value), conversion_); \
        mark_given(given_to::target_(records), Row::name);                                                   \
        follow(records, then_);                                                                              \
    }                                                                                                        \
    void name(ControlState& state, kind::kind_::argument value) {                                            \
        of::name(selected::target_(state), value);                                                           \
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
