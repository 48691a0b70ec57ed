// Handles themselves, and their properties by the table.
#include "control/handle_records.h"

namespace qv::control {
namespace {

// The records behind the kinds of handles; a legend's settings are its graph's.
struct RecordOf {
    using Axis = document::Axis;
    using Legend = document::Graph;
    using Graph = document::Graph;
    using Data = document::DataSet;
};

/// Sets the properties that are given. A row of another owner compiles to nothing.
template <class Options>
void set_given(Records const& records, Options const& options) {
#define QV_HANDLE_READ_ONLY_PROPERTY(owner, name, property_, kind)
#define QV_HANDLE_PROPERTY(owner, name, property_, kind)                                                     \
    if constexpr (std::is_same_v<Options, owner##Options>) {                                                 \
        if (options.name) property::of::property_(records, *options.name);                                   \
    }
#define QV_HANDLE_COLOR(owner, name, property_) QV_HANDLE_PROPERTY(owner, name, property_, color)
#include "control/handle_properties.def"
}

} // namespace

void apply(Records const& records, AxisOptions const& options) {
    set_given(records, options);
}

void apply(Records const& records, LegendOptions const& options) {
    set_given(records, options);
}

void apply(Records const& records, GraphOptions const& options) {
    set_given(records, options);
}

void apply(Records const& records, DataOptions const& options) {
    set_given(records, options);
}

GraphHandle graph_handle(ControlState& state, Graph& graph) {
    return Access::make<GraphHandle>(state, graph, graph);
}

GraphHandle graph_of(Handle const& handle) {
    ControlState& state = Access::page(handle);
    return graph_handle(state, Access::graph(handle));
}

} // namespace qv::control

namespace qv {

using control::Access;
using control::Records;
using document::ControlState;
using document::DataSet;

Handle::Handle(Handle const& other)
    : anchor_(other.anchor_), generation_(other.generation_), graph_(other.graph_), record_(other.record_) {
    if (anchor_) ++anchor_->holders;
}

Handle& Handle::operator=(Handle const& other) {
    if (this == &other) return *this;
    if (other.anchor_) ++other.anchor_->holders;
    document::let_go(anchor_);
    anchor_ = other.anchor_;
    generation_ = other.generation_;
    graph_ = other.graph_;
    record_ = other.record_;
    return *this;
}

Handle::~Handle() {
    document::let_go(anchor_);
}

bool Handle::discarded() const {
    return !Access::leads_on(*this);
}

#define QV_HANDLE_COLOR(owner, name, property_)
#define QV_HANDLE_READ_ONLY_PROPERTY(owner, name, property_, kind_)                                          \
    control::kind::kind_::value owner##Properties::name() const {                                            \
        ControlState const& state = Access::page(*this);                                                     \
        return control::property::of::property_(state, Access::record<control::RecordOf::owner>(*this));     \
    }
#define QV_HANDLE_PROPERTY(owner, name, property_, kind_)                                                    \
    QV_HANDLE_READ_ONLY_PROPERTY(owner, name, property_, kind_)                                              \
    void owner##Properties::name(control::kind::kind_::argument value) const {                               \
        control::property::of::property_(control::records_of<control::RecordOf::owner>(*this), value);       \
    }
#include "control/handle_properties.def"

void AxisProperties::set(AxisOptions const& options) const {
    control::apply(control::records_of<document::Axis>(*this), options);
}

void LegendProperties::set(LegendOptions const& options) const {
    control::apply(control::records_of<document::Graph>(*this), options);
}

void GraphProperties::set(GraphOptions const& options) const {
    control::apply(control::records_of<document::Graph>(*this), options);
}

void DataProperties::set(DataOptions const& options) const {
    Records const records = control::records_of<DataSet>(*this);
    control::lay_on_axes(*records.graph, *records.data, options);
    control::apply(records, options);
}

} // namespace qv
