#include "control/styles.h"

#include "control/looks.h"
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

// A font or colour left out is stored as none and black, but nobody has asked for these: a look may give
// others.
void leave_to_look(ControlState& state, SymbolStyleArguments const& given) {
    DataSet& set = selected_data_set(state);
    if (given.TextFont.empty()) unmark_given(set.given, Row::DataTextFont);
    if (given.ErrorBarColor == 0) unmark_given(set.given, Row::ErrorBarColor);
    redress(state, current_graph(state), set);
}

void store_line_thickness(ControlState& state, DataLineArguments const& given) {
    if (given.Thickness == -1) return;
    DataSet& set = selected_data_set(state);
    set.DataLineThickness = to_i16(std::int32_t(given.Thickness));
    mark_given(set.given, Row::DataLineThickness);
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
