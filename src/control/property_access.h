// Properties as functions of the state, one overloaded pair a row of properties.def:
// property::AxisColor(state) reads, property::AxisColor(state, value) stores with the row's conversion and
// does what follows from it, on what is selected; property::of::AxisColor(records, value) on any axis. A
// missing graph, axis or data set is fault 9, a value that does not fit fault 6.
#pragma once

#include "control/document_names.h"
#include "control/kinds.h"
#include "document/selection.h"

#include <span>

namespace qv::control {

/// The rows of properties.def by number.
enum class Row : std::uint8_t {
#define QV_READ_ONLY_PROPERTY(name, kind_, target_, field_, conversion_) name,
#define QV_PROPERTY(name, kind_, target_, field_, conversion_, then_) name,
#include "control/properties.def"
};

/// Records named one by one, where it is not the selected ones that a row is about.
struct Records {
    ControlState* control = nullptr;
    Graph* graph = nullptr;
    Axis* axis = nullptr;
    DataSet* data = nullptr;
};

/// The records on which properties act.
namespace target {
inline Axis& axis(Records const& records) {
    return *records.axis;
}
inline Graph& graph(Records const& records) {
    return *records.graph;
}
inline DataSet& data(Records const& records) {
    return *records.data;
}
inline FillSpec& page(Records const& records) {
    return records.control->PageFill;
}
inline ControlState& control(Records const& records) {
    return *records.control;
}
auto& axis(auto& state) {
    return selected_axis(state);
}
auto& graph(auto& state) {
    return current_graph(state);
}
auto& data(auto& state) {
    return selected_data_set(state);
}
/// The page belongs to the control, but its properties need a current graph.
auto& page(auto& state) {
    current_graph(state);
    return state.PageFill;
}
auto& control(auto& state) {
    return state;
}
} // namespace target

/// Their types.
namespace record {
using axis = Axis;
using graph = Graph;
using data = DataSet;
using page = FillSpec;
using control = ControlState;
} // namespace record

namespace property {

#define QV_READ_ONLY_PROPERTY(name, kind_, target_, field_, conversion_)                                     \
    kind::kind_::value name(ControlState const& state);                                                      \
    namespace of {                                                                                           \
    kind::kind_::value name(ControlState const& state, record::target_ const& record);                       \
    }
#define QV_PROPERTY(name, kind_, target_, field_, conversion_, then_)                                        \
    QV_READ_ONLY_PROPERTY(name, kind_, target_, field_, conversion_)                                         \
    void name(ControlState& state, kind::kind_::argument value);                                             \
    namespace of {                                                                                           \
    void name(Records const& records, kind::kind_::argument value);                                          \
    }
#include "control/properties.def"

/// Renames the current graph.
void GraphTitle(ControlState& state, std::string_view title);

} // namespace property

/// A row for records named one by one.
struct RecordRow {
    std::string_view name;
    std::string_view target;
    bool only_stores = true; // a Let has no consequence for anything else than how the record looks
    Row row{};
    GivenProperties const& (*given)(Records const& records);
    void (*store)(Records const& records, Variant const& value);
    void (*copy)(Records const& to, Records const& from);
    void (*then)(Records const& records); // what a Let does after storing
};
/// The rows that can be set.
std::span<RecordRow const> record_rows();

/// Whether the host has set a property, by this row or another one of the same field.
bool is_given(GivenProperties const& given, Row row);
/// Says that it has, or has not.
void mark_given(GivenProperties& given, Row row);
void unmark_given(GivenProperties& given, Row row);

/// Gives the page surfaces the page's first colour as their background.
void color_page_surfaces(ControlState& state);

} // namespace qv::control
