// The document records: fills, axes, data sets and graphs, field by field. Fields are named by the public
// property that reads or writes them.
#pragma once

#include "document/CategoryList.h"
#include "document/Grid.h"
#include "document/PointStore.h"
#include "document/StableList.h"
#include "qvgraph/geometry.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qv::document {

/// Which properties of a record the host has set, by their row in the table of properties. A look leaves
/// these alone.
using GivenProperties = std::bitset<256>;

/// The fill of an area: page, graph border, plot area, legend table or a data set's symbols.
struct FillSpec {
    Color EdgeColor = 0;
    std::uint8_t EdgeThickness = 0; // pixels, 0 = no outline
    Color Color1 = 0;               // the only colour of a plain fill
    Color Color2 = 0;
    std::int16_t GradientAngle = 0; // degrees
    float gShift = 0;               // place of the gradient's midpoint, -1..1
    std::int16_t gStyle = 0;
    bool Transparent = false; // the area is not filled

    bool operator==(FillSpec const&) const = default;
};

/// A colour bar is an axis too: its values have colours in place of positions.
enum class AxisKind : std::int16_t { X = 0, Y = 1, Color = 2 };

/// How an axis gets its range.
enum class AxisMode : std::uint8_t { Automatic = 0, Fixed = 1, TextLabels = 2 };

/// The range that an automatic axis was drawn with, and the fields that it had then.
struct DrawnRange {
    double low = 0; // rounded: beyond AxisValue1 where the axis is zoomed
    double high = 0;
    double AxisValue1 = 0;
    double AxisValue2 = 0;
    std::int16_t AxisMajorDivs = 0;
    std::int16_t AxisMinorDivs = 0;
    bool AxisLog = false;
    bool round_ticks = false; // by the rule of RoundTicks
};

/// What an axis shows, and its full range.
struct AxisRanges {
    double AxisValue1 = 0;
    double AxisValue2 = 0;
    double ScaleMin = 0;
    double ScaleMax = 0;

    bool shows_all() const { return AxisValue1 == ScaleMin && AxisValue2 == ScaleMax; }
    bool operator==(AxisRanges const&) const = default;
};

/// The ranges that an axis was to have, and those that it got so that units are equally long both ways.
struct EvenedRanges {
    AxisRanges asked;
    AxisRanges evened;
};

/// Who has fitted the range of an axis to its data, so that it is no round one.
enum class FittedBy : std::uint8_t { Nobody, FitAxes, AutoFit };

/// What FitAxes leaves free at each end of a fitted axis when it is not told, a share of the range.
constexpr double usual_fit_margin = 0.05;

/// The scale on which the page shows an axis: a range, and where on the page it begins and how far it goes.
struct ShownScale {
    double first = 0;
    double last = 0;
    bool is_log = false;
    double start = 0;  // twips
    double length = 0; // twips, negative leftward and upward
};

/// What was worked out of a record, such as the bins of a data set's histogram or the ticks of an axis, kept
/// while it holds.
struct DerivedData {
    virtual ~DerivedData() = default;
};

struct Axis {
    AxisKind AxisXY = AxisKind::X;
    bool AxisRescale = true; // the range must be computed at the next drawing
    bool AxisHide = false;
    Color AxisMajGridColor = rgb(210, 210, 210);
    Color AxisMinGridColor = rgb(225, 225, 225);
    Color AxisColor = 0;
    Color AxisLabelColor = 0;
    Color AxisTitleColor = 0;
    double AxisValue1 = 0; // range drawn
    double AxisValue2 = 0;
    double ScaleMin = 0; // full range, to which unzooming returns
    double ScaleMax = 0;
    double DataMin = 0; // extent of the data
    double DataMax = 0;
    float ZoomFrom = 0;              // twips along the axis where a zoom drag started
    float ZoomTo = 0;                // its current end, 0 while no rubber band is drawn
    std::int32_t AxisLength = 0;     // twips
    std::int16_t AxisTickLength = 0; // twips
    bool AxisTicksBothEnds = true;
    bool AxisTicksInside = true;
    bool AxisTicksOutside = false;
    std::uint8_t AxisThickness = 1;     // pixels
    std::uint8_t AxisTickThickness = 1; // pixels
    std::string AxisTitle;
    bool AxisLog = false;
    bool AxisGridMajor = false;
    bool AxisGridMinor = false;
    std::int16_t AxisMajorDivs = 5;
    std::int16_t AxisMinorDivs = 1;
    std::int16_t AxisDP = 1;
    bool AxisReverse = false;
    bool AxisTime = false; // values are seconds since 1970 in UTC
    std::string AxisTimeZone = "UTC";
    bool AxisCategories = false; // value n is category n
    CategoryList categories;
    std::uint8_t AxisScale = 0; // AxisMode; other values are kept but mean nothing
    std::string AxisTextLabels; // labels separated by ",", or the format of numeric labels
    std::string AxisLabelFont = "Font=Arial|9";
    std::string AxisTitleFont = "Font=Arial|9";
    bool AxisSIPrefix = false; // of RoundTicks: labels such as 20 k
    bool AxisOffset = false;   // of RoundTicks: what labels share stands in the title
    bool AxisShowLabels = true;
    bool AxisShowTitle = true;
    std::int16_t AxisLabelsHoriz = 0; // degrees
    float AxisLabelShift = 0;         // millimetres
    float AxisTitleShift = 0;         // millimetres
    bool AxisFarSide = false;
    bool AxisNoData = true;                // no point has been added on this axis yet
    std::vector<double> major_tick_values; // where ticks stand; empty: evenly divided by AxisMajorDivs
    std::vector<double> minor_tick_values; // count only beside given major ones
    std::optional<DrawnRange> drawn;       // the last time, if it was automatic then
    std::optional<ShownScale> shown;       // by the last drawing
    GivenProperties given;
    std::string AxisColors;             // of a colour bar: a table's name or colours; "" for the usual one
    std::int16_t AxisBarWidth = 0;      // of a colour bar, twips
    std::string AxisLink;               // axes of a page with one name share their ranges; "" for none
    std::optional<AxisRanges> linked;   // as they were shared last
    std::optional<EvenedRanges> evened; // where KeepEqualUnits has widened it
    FittedBy fitted_by = FittedBy::Nobody;
    double fit_margin = usual_fit_margin;             // of the last FitAxes
    mutable std::shared_ptr<DerivedData> round_ticks; // those chosen last

    AxisRanges ranges() const { return {AxisValue1, AxisValue2, ScaleMin, ScaleMax}; }
    void take_ranges(AxisRanges const& ranges) {
        AxisValue1 = ranges.AxisValue1;
        AxisValue2 = ranges.AxisValue2;
        ScaleMin = ranges.ScaleMin;
        ScaleMax = ranges.ScaleMax;
    }
    bool has_mode(AxisMode mode) const { return AxisScale == static_cast<std::uint8_t>(mode); }
};

/// A text that belongs to a data set.
struct GraphText {
    std::string DataText;
    double DataTextX = 0;
    double DataTextY = 0;
    std::uint8_t DataTextOri = 0; // horizontal alignment in the remainder by 3, vertical in the quotient
    std::string DataTextFont;
    Color DataTextColor = 0;
    std::int16_t DataTextAngle = 0; // degrees
    bool DataTextPercent = false;   // position in percent of the plot area, y from the bottom
};

/// What a data set of the kind Mark marks; see render/marks/marks.h for the shapes.
struct MarkSettings {
    std::uint8_t MarkShape = 0;
    double MarkX1 = 0; // values on the axes, or percent of the plot area
    double MarkY1 = 0;
    double MarkX2 = 0;
    double MarkY2 = 0;
    bool MarkPercent = false;  // y from the bottom
    bool MarkDragging = false; // a person may move it
};

/// How a data set of the kind Pie shows its points.
struct PieSettings {
    float PieHole = 0;    // percent of the radius
    float PieStart = 0;   // degrees from the top, clockwise, where the first slice begins
    bool PieLeft = false; // slices follow one another counter-clockwise
    std::uint8_t PieLabels = 0;
    float PieGather = 0; // percent of the whole below which slices are gathered
    std::string PieGatherName = "Other";
};

/// Second derivatives of the smooth curve through a data set's points, kept while the points stay.
struct CurveMemory {
    std::vector<double> second_derivatives;
    std::size_t size = 0; // of the points they belong to
    std::size_t dropped = 0;
};

/// Everything of a data set but its points.
struct DataSetSettings : GraphText, MarkSettings, PieSettings {
    std::string DataLegend;
    bool DataInLegendTable = false;
    std::int16_t DataSymbol = 0;
    std::int16_t DataSymbolSize = 0; // half the size, twips
    FillSpec DataSymbolFill;
    std::int16_t DataLineStyle = 0;
    Color DataLineColor = 0;
    std::int16_t DataLineThickness = 0; // pixels
    std::uint8_t DataLineDash = 0;      // 1 dashes, 2 dots, 3 and 4 dashes with one and two dots
    std::string DataLinePattern;        // lengths of dashes and gaps in turn, in line widths; "" for none
    std::uint8_t DataLineAlpha = 255;   // of lines and error bars, 0 invisible
    std::uint8_t DataFillAlpha = 255;   // of symbols, bars and areas
    std::uint8_t DataSteps = 0;         // how a line gets from point to point; 0: straight
    float DataSymbolSpacing = 0;        // twips between symbols on a line, at least; 0: at each point
    std::int32_t DataSymbolEvery = 0;   // points from one symbol on a line to the next; 0 and 1: at each
    std::uint8_t DataKind = 0;          // what is made of the points; 0: lines, symbols and bars at them
    std::int32_t HistogramBins = 0;
    double HistogramBinWidth = 0;
    std::uint8_t HistogramMeasure = 0; // 0 counts, 1 shares, 2 densities
    bool HistogramCumulative = false;
    std::vector<double> histogram_edges; // rising, or none
    double BoxWhiskers = 1.5;            // their most, in distances of the quartiles
    bool BoxNotches = false;
    double GroupWidth = 0.5; // of boxes and strips, in distances of neighbouring groups
    bool DataHide = false;
    bool ShowErrorBar = false;
    Color ErrorBarColor = 0;
    std::uint8_t ErrorStyle = 0;        // 0 bars, 1 a band, 2 both
    float ErrorBarCap = 2;              // millimetres, from end to end
    std::uint8_t ErrorBarThickness = 1; // pixels
    std::uint8_t ErrorBandAlpha = 64;
    bool AreaBase = false; // areas begin at AreaBaseValue, not at the start of the y axis
    double AreaBaseValue = 0;
    Color AreaBelowColor = -1;    // where an area lies below where it begins; -1: as above it
    std::int16_t AreaTo = -1;     // the data set at which the area begins; -1: none
    std::uint8_t AreaStacked = 0; // 1 on the stacked areas before, 2 in percent of all
    bool BarHoriz = false;
    bool Bar3D = false;
    bool BarStacked = false;
    bool BarBase = false;
    double BarBaseValue = 0;
    double BarOffset = 0;       // across the bar, in millimetres or, with a BarWidth, in values
    double BarWidth = 0;        // values of the axis across the bar; 0: twice DataSymbolSize, less a tenth
    std::uint8_t BarLabels = 0; // BarLabelling; other values mean none
    std::string BarLabelFormat;
    std::uint8_t CandleStyle = 0; // 0 bodies with wicks, 1 bars with two ticks
    Color CandleRisingColor = rgb(34, 146, 104);
    Color CandleFallingColor = rgb(208, 66, 60);
    std::int16_t CandleVolumeAxis = 0; // of the y axes, counted from 1; 0: volumes are not shown
    bool BarShadow = false;
    Color BarShadowColor = 0;
    std::string MathFunc;
    double MathFuncX1 = 0;
    double MathFuncX2 = 0;
    std::int16_t xAxisIndex = 0;
    std::int16_t yAxisIndex = 0;
    std::int16_t ColorAxisIndex = 0;  // a colour bar among the axes of the graph; 0: none
    std::shared_ptr<Grid const> grid; // cells given as a matrix
    Color MissingColor = -1;          // of cells without a value; -1: none
    bool CellValues = false;          // are written on the cells
    std::int16_t GridBinsX = 0;       // cells in which points are counted; 0: as many as suit their number
    std::int16_t GridBinsY = 0;
    std::string ContourLevels; // how many, or which
    bool ContourLabels = false;
    GivenProperties given;
};

/// The axes that a data set lies on, kept for the next point.
struct FoundAxes {
    Axis* x = nullptr; // nullptr: not looked for yet
    Axis* y = nullptr;
    std::int16_t x_index = 0; // by which they were found
    std::int16_t y_index = 0;
};

struct DataSet : DataSetSettings {
    PointStore points;
    FoundAxes found_axes;
    std::size_t points_kept = 0;                  // older ones are forgotten; 0: none is
    mutable CurveMemory curve;                    // written by drawing
    mutable std::unique_ptr<DerivedData> derived; // by its kind

    std::int32_t DataSetPointCount() const { return static_cast<std::int32_t>(points.size()); }
};

/// The room between a graph's frame and its plot area, twips.
struct Margins {
    float left = 0;
    float top = 0;
    float right = 0;
    float bottom = 0;
    bool operator==(Margins const&) const = default;
};

/// What small graphs leave out for their plot area's sake, each with what comes before it.
enum class LeftOut : std::uint8_t { Nothing, AxisTitles, Title, Labels };

/// Where a legend stands; other values of LegendPlace mean the first.
enum class LegendPlacing : std::uint8_t { AsSet = 0, WhereItHidesLeast = 1, BesideThePlot = 2 };

/// How the bars of a graph's data sets share the room of their values.
enum class BarArranging : std::uint8_t { AsSet = 0, Grouped = 1, Stacked = 2, Percent = 3 };

/// Where bars have their values written.
enum class BarLabelling : std::uint8_t { None = 0, Inside = 1, AtEnd = 2 };

/// What is worked out for a graph when it is drawn under FitMargins or with a legend that finds its place.
struct Fitting {
    Margins needed; // for axes, titles and a legend beside the plot area
    LeftOut left_out = LeftOut::Nothing;
    bool legend_beside = false;     // in the plot area it would hide too much
    bool legend_left_out = false;   // it has no room anywhere
    float legend_room = 0;          // what it takes of `needed`, beside the plot area
    std::int8_t legend_corner = -1; // the last place among those for a legend, so that it does not wander
    bool operator==(Fitting const&) const = default;
};

/// Everything of a graph but its axes and data sets.
struct GraphSettings {
    float GraphLeft = 0; // position and size as fractions of the page
    float GraphTop = 0;
    float GraphWidth = 1;
    float GraphHeight = 1;
    bool GraphWholePage = false;
    float TopAxesHeight = 0;    // twips taken above the plot area by far-side x axes
    std::int32_t FrameLeft = 0; // twips, from the layout
    std::int32_t FrameTop = 0;
    std::int32_t FrameWidth = 0;
    std::int32_t FrameHeight = 0;
    float BorderLeft = 0; // twips between frame and plot area
    float BorderTop = 0;
    float BorderRight = 0;
    float BorderBottom = 0;
    Fitting fitting;
    std::int16_t SelectedAxis = 0;
    std::int16_t SelectedXAxis = 0;
    std::int16_t SelectedYAxis = 0;
    std::int16_t SelectedColorAxis = 0; // for data sets to come; 0: none
    std::int16_t SelectedDataSet = 0;
    std::int32_t NumPoints = 0; // of all data sets together
    bool GraphNotDrawn = true;
    FillSpec PlotAreaFill;
    FillSpec BorderFill;
    Color GraphTitleColor = 0;
    std::string GraphTitleFont;
    std::string LegendFont;
    bool LegendShow = true;
    bool LegendInFront = true;
    bool LegendDragging = true;
    float LegendTableTop = 0;    // percent of the frame
    float LegendTableLeft = 100; // percent of the frame
    std::int32_t LegendTop = 0;  // twips on the page
    std::int32_t LegendLeft = 0;
    std::int32_t LegendWidth = 0;
    std::int32_t LegendHeight = 0;
    FillSpec LegendFill;
    Color LegendFontColor = 0;
    bool ShowDataID = true;
    bool GraphInclude = true;
    bool GraphShowTitle = true;
    bool GraphAllowZoom = true;
    bool GraphShowXY = true;
    bool GraphAllowDragging = true;
    bool GraphPolar = false;      // x is an angle, y a distance from the middle
    bool PolarRadians = false;    // x is in radians, else in degrees
    float PolarZero = 0;          // degrees, counter-clockwise from rightwards, where x is 0
    bool PolarClockwise = false;  // the way x grows
    float polar_room = 0;         // twips round the outermost circle for labels, from the last drawing
    bool KeepEqualUnits = false;  // a unit of the first x axis is as long as one of the first y axis
    float GraphTitleVShift = 0;   // millimetres
    float GraphTitleHShift = 0;   // millimetres
    bool margins_by_hand = false; // a person has dragged an edge of the plot area, or the legend
    bool legend_by_hand = false;
    std::uint8_t LegendPlace = 0;
    std::uint8_t BarArrangement = 0; // BarArranging; other values mean as set
    double BarWidthShare = 0.8;      // of the room that a value has, which its arranged bars take together
    GivenProperties given;

    /// As drawn: those set, and under FitMargins as much more as is needed, but for a person who drags them.
    Margins margins() const {
        Margins const set{BorderLeft, BorderTop, BorderRight, BorderBottom};
        if (margins_by_hand) return set;
        Margins const& more = fitting.needed;
        if (leaves_out(LeftOut::Labels)) return more; // nothing stands in them
        return {std::max(set.left, more.left), std::max(set.top, more.top), std::max(set.right, more.right),
                std::max(set.bottom, more.bottom)};
    }
    void set_margins(Margins const& to) {
        BorderLeft = to.left;
        BorderTop = to.top;
        BorderRight = to.right;
        BorderBottom = to.bottom;
    }
    bool leaves_out(LeftOut part) const { return fitting.left_out >= part; }
    bool has_placing(LegendPlacing placing) const {
        return LegendPlace == static_cast<std::uint8_t>(placing);
    }
    bool finds_legend_place() const {
        return has_placing(LegendPlacing::WhereItHidesLeast) || has_placing(LegendPlacing::BesideThePlot);
    }
};

/// A plot panel.
struct Graph : GraphSettings {
    StableList<Axis> Axes;
    StableList<DataSet> DataSets;

    std::int16_t NumAxes() const { return static_cast<std::int16_t>(Axes.size()); }
    std::int16_t NumDataSets() const { return static_cast<std::int16_t>(DataSets.size()); }
};

/// The page's fill before anybody has set it.
inline FillSpec fresh_page_fill() {
    constexpr Color white = rgb(255, 255, 255);
    return {.Color1 = white, .Color2 = white, .GradientAngle = 90};
}

/// A graph as NewGraph starts it, without axes and data.
inline Graph fresh_graph(float units_per_mm_x, float units_per_mm_y) {
    constexpr Color tooltip_yellow = system_color(0x18);
    constexpr Color light_yellow = 0xC0FFFF;
    Graph graph;
    graph.BorderLeft = 14 * units_per_mm_x;
    graph.BorderRight = 7 * units_per_mm_x;
    graph.BorderTop = 7 * units_per_mm_y;
    graph.BorderBottom = 10 * units_per_mm_y;
    auto const fill = [](Color color) {
        return FillSpec{.EdgeThickness = 1, .Color1 = color, .Color2 = color, .GradientAngle = 90};
    };
    graph.PlotAreaFill = graph.LegendFill = fill(tooltip_yellow);
    graph.BorderFill = fill(light_yellow);
    return graph;
}

} // namespace qv::document
