// Axes by handle: those of a graph, new ones, their ticks and categories.
#include "control/category_entry.h"
#include "control/data_entry.h"
#include "control/document.h"
#include "control/handle_records.h"
#include "control/settings.h"

namespace qv::control {
namespace {

Axis& first_axis(Graph& graph, AxisKind kind) {
    for (Axis& axis : graph.Axes)
        if (axis.AxisXY == kind) return axis;
    raise_fault(FaultNumber::SubscriptOutOfRange, "The graph has no axis of this kind.");
}

AxisHandle axis_handle(Handle const& graph, AxisKind kind) {
    ControlState& state = Access::page(graph);
    return Access::make<AxisHandle>(state, Access::graph(graph), first_axis(Access::graph(graph), kind));
}

AxisHandle add_axis(Handle const& handle, AxisKind kind, AxisOptions const& options) {
    ControlState& state = Access::page(handle);
    Graph& graph = Access::graph(handle);
    Axis& axis = append_axis(state, graph, fresh_axis(state, "", kind, 0, 0));
    whole_or_not_at_all(graph.Axes,
                        [&] { apply({.control = &state, .graph = &graph, .axis = &axis}, options); });
    auto const made = Access::make<AxisHandle>(state, graph, axis);
    raise_scale_changed(state);
    return made;
}

} // namespace
} // namespace qv::control

namespace qv {

using control::Access;
using document::AxisKind;

bool AxisHandle::is_x() const {
    Access::page(*this);
    return Access::record<document::Axis>(*this).AxisXY == AxisKind::X;
}

bool AxisHandle::is_color_bar() const {
    Access::page(*this);
    return Access::record<document::Axis>(*this).AxisXY == AxisKind::Color;
}

GraphHandle AxisHandle::graph() const {
    return control::graph_of(*this);
}

void AxisHandle::ticks(std::span<double const> major, std::span<double const> minor) const {
    Access::page(*this);
    control::set_ticks(Access::record<document::Axis>(*this), major, minor);
}

void AxisHandle::set_categories(TextList const& texts) const {
    Access::page(*this);
    control::take_categories(Access::record<document::Axis>(*this), document::CategoryList(texts));
}

void AxisHandle::set_category_times(std::span<double const> times) const {
    Access::page(*this);
    control::take_category_times(Access::record<document::Axis>(*this), times);
}

AxisHandle GraphHandle::x_axis() const {
    return control::axis_handle(*this, AxisKind::X);
}

AxisHandle GraphHandle::x_axis(AxisOptions const& options) const {
    AxisHandle const axis = x_axis();
    axis.set(options);
    return axis;
}

AxisHandle GraphHandle::y_axis() const {
    return control::axis_handle(*this, AxisKind::Y);
}

AxisHandle GraphHandle::y_axis(AxisOptions const& options) const {
    AxisHandle const axis = y_axis();
    axis.set(options);
    return axis;
}

AxisHandle GraphHandle::add_x_axis(AxisOptions const& options) const {
    return control::add_axis(*this, AxisKind::X, options);
}

AxisHandle GraphHandle::add_y_axis(AxisOptions const& options) const {
    return control::add_axis(*this, AxisKind::Y, options);
}

AxisHandle GraphHandle::color_axis() const {
    for (AxisHandle const& axis : axes())
        if (axis.is_color_bar()) return axis;
    return add_color_axis();
}

AxisHandle GraphHandle::color_axis(AxisOptions const& options) const {
    AxisHandle const axis = color_axis();
    axis.set(options);
    return axis;
}

AxisHandle GraphHandle::add_color_axis(AxisOptions const& options) const {
    return control::add_axis(*this, AxisKind::Color, options);
}

std::vector<AxisHandle> GraphHandle::axes() const {
    Access::page(*this);
    return control::handles_of<AxisHandle>(*this, Access::graph(*this).Axes);
}

} // namespace qv
