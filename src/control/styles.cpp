#include "control/styles.h"

#include "control/property_access.h"
#include "control/style_rules.h"
#include "document/trap.h"

namespace qv::control {
namespace {

void nothing_more(ControlState&, auto const&) {}

void store_divisions(ControlState& state, AxisScaleStyleArguments const& given) {
    if (given.MajorDivs != -1) property::AxisMajorDivs(state, std::int32_t(given.MajorDivs));
    if (given.MinorDivs != -1) property::AxisMinorDivs(state, std::int32_t(given.MinorDivs));
}

void leave_whole_page(ControlState& state, GraphPositionArguments const&) {
    property::GraphWholePage(state, false);
}

void set_border_widths(ControlState& state, BorderStyleArguments const& given) {
    BorderWidthsArguments widths{given.Left, given.Top, given.Right, given.Bottom};
    BorderWidths(state, widths);
}

void store_line_thickness(ControlState& state, DataLineArguments const& given) {
    if (given.Thickness != -1)
        selected_data_set(state).DataLineThickness = to_i16(std::int32_t(given.Thickness));
}

} // namespace

// The target is looked up first, so that a call without any argument fails too when it is missing.
#define QV_STYLE(method, target_)                                                                            \
    void method(ControlState& state, method##Arguments& given) {                                             \
        trapped(state, #method, [&] {                                                                        \
            target::target_(state);
#define QV_PARAMETER(method, name, kind_, default_, rule, property_)                                         \
    if (rule(given, given.name)) property::property_(state, static_cast<kind::kind_::value>(given.name));
#define QV_STYLE_END(method, then)                                                                           \
    then(state, given);                                                                                      \
    });                                                                                                      \
    }
#include "control/styles.def"

} // namespace qv::control
