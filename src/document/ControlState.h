// ControlState: everything that one control owns. Procedures of the other folders are free functions on it.
#pragma once

#include "base/fault_report.h"
#include "document/handle_anchor.h"
#include "document/interaction.h"
#include "document/records.h"
#include "qvgraph/ChildControls.h"
#include "qvgraph/DrawSurface.h"
#include "qvgraph/EventSink.h"
#include "qvgraph/Host.h"
#include "qvgraph/fault.h"
#include "qvgraph/qvExpression.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace qv {
struct Look;
}

namespace qv::document {

constexpr float twips_per_mm = static_cast<float>(twips_per_inch / millimetres_per_inch);

/// What is left of the control's picture for the page, in twips, is its size less this.
constexpr std::int32_t page_inset = 70;

/// Where the last point went and how it was found, so that the next one of a series gets there at once.
/// Axes and data sets stay where they are until Reset, which forgets this too.
struct PointTarget {
    Graph* graph = nullptr; // nullptr: not known
    Axis* x = nullptr;
    Axis* y = nullptr;
    PointStore* points = nullptr;
    std::int16_t selected_x = 0;
    std::int16_t selected_y = 0;
    std::int16_t current_graph = 0;
    std::int16_t data_set = 0;
    std::size_t data_sets = 0;

    bool leads_on(std::int16_t graph_now, std::int16_t data_set_now) const {
        return graph && current_graph == graph_now && data_set == data_set_now
               && graph->SelectedXAxis == selected_x && graph->SelectedYAxis == selected_y
               && graph->DataSets.size() == data_sets;
    }
};

/// What all graphs of a page are drawn by.
struct PageSettings {
    FillSpec PageFill;
    float UnitsPerMmX = twips_per_mm;
    float UnitsPerMmY = twips_per_mm;
    std::int32_t PageWidth = 0; // twips
    std::int32_t PageHeight = 0;
    bool AxisMarksInFront = false;
    bool ThinTickLabels = false; // leave out tick labels that would overlap
    bool Smooth = true;          // antialiased drawing
    bool FitMargins = false;     // margins grow until axes, titles and legends fit
    bool AlignPlots = false;     // graphs of a column or row have equal margins
    bool DotLonePoints = false;  // points of lines that no segment reaches are dots
    bool AdaptiveCurves = false; // function curves true to a pixel, broken where they have gaps
    bool RoundTicks = false;     // ticks at round values on every axis
    bool RichText = false;       // raised and lowered parts in the host's texts
    bool AutoFit = false;        // automatic axes fit their data at each drawing
    // Of the slices of pies, by the look; none: the classic ones.
    std::vector<Color> slice_colors;

    bool operator==(PageSettings const&) const = default;
};

/// What Picture2 was composed of.
struct PageGround {
    PageSettings settings;
    std::vector<Graph const*> graphs; // back to front; Picture2 holds all but the last
    PixelSize size;
    std::vector<AxisRanges> linked; // of the linked axes on it

    bool operator==(PageGround const&) const = default;
};

/// A legend on Picture1 alone: GraphImage holds the page below it, ScratchPic1 the legend.
struct LegendOnPage {
    Graph const* graph = nullptr;
    Box reach; // twips, its edge included
    Box drawn; // where it was drawn to be kept in ScratchPic1
    FillSpec fill;
};

struct ControlState : PageSettings {
    explicit ControlState(host::Host& owner) : host(&owner) {}
    ControlState(ControlState const&) = delete;
    ControlState& operator=(ControlState const&) = delete;

    ColumnPool column_pool; // outlives the graphs

    /// \name Document
    /// \{
    std::int16_t CurrentGraph = 0;
    std::vector<std::unique_ptr<Graph>> Graphs;
    std::vector<std::string> GraphTitles; // the name of each graph
    std::vector<std::int16_t> GraphOrder; // back to front
    PointTarget point_target;
    std::int16_t NumGraphs() const { return static_cast<std::int16_t>(Graphs.size()); }
    AnchorOfPage handle_anchor;
    /// \}

    /// \name Switches of the host
    /// \{
    bool SuppressRaisingEvents = false; // the others are settings of the page
    std::string LookName = "classic";
    std::shared_ptr<Look const> look; // none: the classic one
    GivenProperties given;            // of the control and its page
    bool TellFormulaErrors = false;
    std::set<std::string> told_formulas;       // that did not compile
    std::vector<std::string> formula_failures; // still to be told
    bool DataOwnAxes = false; // points widen the axes of their data set, not the selected ones
    /// \}

    /// \name Interaction and zoom
    /// \{
    bool CrossHairOn = false;
    std::uint8_t CrossHairStyle = 0;
    double PointerX = 0; // pointer in data coordinates
    double PointerY = 0;
    std::int16_t MouseGraph = -1;
    std::int16_t BarsGraph = -1; // the graph whose span the scroll bars show
    Pointing pointing;
    PointerTrack pointer;
    PageMarks marks;
    Gestures gestures;
    ZoomHistory zoom_history;
    ZoomAnchor zoom_anchor;
    std::optional<ReadPoint> read_point;
    std::string PointTooltip; // names the data point under the pointer
    host::PointerShape MousePointer = host::PointerShape::Default;
    double MaxZoomFactor = 1e6;
    bool Zoomed = false; // the current graph's selected axes show less than their full range
    std::string Tooltip; // the host's; where it is empty, PointTooltip is shown
    std::string const& shown_tooltip() const { return Tooltip.empty() ? PointTooltip : Tooltip; }
    /// \}

    /// \name Drawing
    /// \{
    bool NoRedraw = false;
    bool Refreshing = false;
    bool refresh_asked_meanwhile = false;
    bool keeps_drawn_ranges = false; // automatic axes that have not been changed are drawn as the last time
    std::unique_ptr<qvExpression> Evaluator; // of function curves, made on first use
    std::int32_t PointCounter = 0;           // numbers or letters the points of a data set
    /// Running offsets in twips of stacked axes: left and right (y), near and far (x).
    struct StackOffsets {
        std::int32_t left = 0, right = 0, near = 0, far = 0;
    } AxisStackOffsets;
    document::Margins
        axes_reach; // of the graph drawn last, out of its plot area: lines, ticks, labels, titles
    std::unique_ptr<DrawSurface> Picture1;    // visible page
    std::unique_ptr<DrawSurface> GraphImage;  // page being composed
    std::unique_ptr<DrawSurface> Picture2;    // page without the front graph
    std::unique_ptr<DrawSurface> ScratchPic1; // gradients, legend
    std::unique_ptr<DrawSurface> ScratchPic2; // page being printed
    std::optional<PageGround> ground;         // nothing before the first refresh and after Reset
    std::optional<LegendOnPage> legend_on_page;
    /// \}

    /// \name Child controls, host
    /// \{
    /// Called whenever the page shows another picture, for what stands beside it.
    void (*page_follower)(ControlState&) = nullptr;
    bool* gone_while_asking = nullptr; // set to True when the control goes while a person is asked
    host::Label Label1;
    host::ScrollBar HScroll1;
    host::ScrollBar VScroll1;
    double inner_width = 0; // of the control, twips
    double inner_height = 0;
    host::Host* host;
    host::EventSink silent;
    host::EventSink* events = &silent;
    /// \}

    /// \name Failures
    /// \{
    FaultReport report_room = FaultReport::with_room();
    bool memory_has_ended = false; // a procedure has failed for want of it
    /// \}

    /// \name Calls in progress
    /// Graphs that Reset discards live on until the outermost procedure has ended, because an event may ask
    /// for Reset while a drawing procedure still holds references into them.
    /// \{
    int calls_in_progress = 0;
    std::uint64_t failures = 0; // reported so far
    std::vector<std::unique_ptr<Graph>> discarded_graphs;
    /// \}
};

/// Raises GraphScaleChanged unless notifications are suppressed.
inline void raise_scale_changed(ControlState& state) {
    if (!state.SuppressRaisingEvents) state.events->GraphScaleChanged();
}

} // namespace qv::document
