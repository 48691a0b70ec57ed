// The properties of axes, legends, graphs and data sets as handles have them: one by one, and as options of
// which any may be left out, y_axis.set({.title = "speed", .log = true}). Made by scripts/make_members.py.
#pragma once

#include "qvgraph/checked.h"
#include "qvgraph/handle.h"

#include <optional>
#include <string>
#include <string_view>

namespace qv {

/// What an axis can be given, in this order; what is left out stays as it is.
struct AxisOptions {
    /// AxisTitle: Text beside the axis, of one or more lines; numbers are taken as text.
    std::optional<std::string> title = {};
    /// AxisGridMajor: Whether lines cross the plot area at the major ticks.
    std::optional<Checked<bool>> major_grid = {};
    /// AxisGridMinor: Whether lines cross the plot area at the minor ticks.
    std::optional<Checked<bool>> minor_grid = {};
    /// AxisTickLength: Length of the major ticks in millimetres; minor ticks have 0.7 of it.
    std::optional<Checked<float>> tick_length = {};
    /// AxisTicksBothEnds: Whether the opposite edge of the plot area has the same ticks.
    std::optional<Checked<bool>> ticks_both_ends = {};
    /// AxisTicksInside: Whether ticks reach into the plot area.
    std::optional<Checked<bool>> ticks_inside = {};
    /// AxisTicksOutside: Whether ticks reach out of the plot area, which moves labels and title outwards.
    std::optional<Checked<bool>> ticks_outside = {};
    /// AxisTickThickness: Width of the ticks in pixels at 96 to the inch, drawn as at least 1.
    std::optional<Checked<std::uint8_t>> tick_thickness = {};
    /// AxisMajGridColor: Colour of the lines at major ticks.
    std::optional<ColorValue> major_grid_color = {};
    /// AxisMinGridColor: Colour of the lines at minor ticks.
    std::optional<ColorValue> minor_grid_color = {};
    /// AxisColor: Colour of the axis line, its ticks and its edge of the plot area.
    std::optional<ColorValue> color = {};
    /// AxisThickness: Width in pixels at 96 to the inch of the axis line and of the plot area's edge it
    /// stands on, drawn as at least 1.
    std::optional<Checked<std::uint8_t>> thickness = {};
    /// AxisLabelFont: Font of the tick labels, e.g. Font=Arial|9|Bold.
    std::optional<std::string> label_font = {};
    /// AxisLabelColor: Colour of the tick labels.
    std::optional<ColorValue> label_color = {};
    /// AxisLabelsHoriz: Angle of the tick labels in degrees, counter-clockwise; a y axis starts with 90.
    std::optional<Checked<std::int16_t>> label_angle = {};
    /// AxisLabelShift: Millimetres by which the tick labels move towards the plot area.
    std::optional<Checked<float>> label_shift = {};
    /// AxisShowLabels: Whether ticks have labels.
    std::optional<Checked<bool>> show_labels = {};
    /// AxisTitleFont: Font of the axis title.
    std::optional<std::string> title_font = {};
    /// AxisTitleColor: Colour of the axis title.
    std::optional<ColorValue> title_color = {};
    /// AxisTitleShift: Millimetres by which the axis title moves towards the plot area.
    std::optional<Checked<float>> title_shift = {};
    /// AxisShowTitle: Whether the title is shown.
    std::optional<Checked<bool>> show_title = {};
    /// AxisFarSide: Puts an x axis above the plot area, a y axis to its right.
    std::optional<Checked<bool>> far_side = {};
    /// AxisHide: Leaves the axis out; it takes no room, data are still drawn on it.
    std::optional<Checked<bool>> hide = {};
    /// AxisValue1: First end of the range shown; setting it makes an automatic axis fixed.
    std::optional<Checked<double>> from = {};
    /// AxisValue2: Last end of the range shown; setting it makes an automatic axis fixed.
    std::optional<Checked<double>> to = {};
    /// AxisScale: How the range is found: 0 automatic and round, 1 fixed, 2 fixed with texts as labels.
    std::optional<Checked<std::uint8_t>> scale = {};
    /// AxisLog: Whether the axis is logarithmic; cleared at drawing where the range is not wholly positive.
    std::optional<Checked<bool>> log = {};
    /// AxisReverse: Lets values grow to the left, or downwards.
    std::optional<Checked<bool>> reverse = {};
    /// AxisTextLabels: With AxisScale 2 the labels, separated by commas; else the format of the numbers or
    /// times, e.g. 0.00 or d mmm yyyy.
    std::optional<std::string> text_labels = {};
    /// AxisTime: Whether values are seconds since 1970 in UTC, shown as dates and times; an axis of time is
    /// never logarithmic.
    std::optional<Checked<bool>> time = {};
    /// AxisTimeZone: Time zone in which an axis of time is shown, e.g. Europe/Berlin; UTC at first, local is
    /// the system's own.
    std::optional<std::string> time_zone = {};
    /// AxisCategories: Whether value n of the axis is category n, from 0 on, written as its text; the axis
    /// reaches half a category beyond the first and the last. Categories that are times leave gaps such as
    /// weekends out.
    std::optional<Checked<bool>> categories = {};
    /// AxisCategoryTexts: The texts of the categories, separated by ","; "\," is a comma within a text. Texts
    /// of AddCategoryPoint that are not among them follow. Empty where the categories are times.
    std::optional<std::string> category_texts = {};
    /// AxisMajorDivs: Number of divisions between major ticks, 0 for ticks at both ends alone; automatic axes
    /// choose their own.
    std::optional<Checked<std::int16_t>> major_divs = {};
    /// AxisMinorDivs: Number of parts of each division; 1 gives no minor ticks.
    std::optional<Checked<std::int16_t>> minor_divs = {};
    /// AxisSIPrefix: With RoundTicks, shortens the labels by a prefix of the SI: 20 k, 1.5 µ.
    std::optional<Checked<bool>> si_prefix = {};
    /// AxisOffset: With RoundTicks, takes what long labels share out of them and puts it behind the axis
    /// title.
    std::optional<Checked<bool>> offset = {};
    /// AxisDP: Kept for hosts that store it; labels find their own number of decimals.
    std::optional<Checked<std::int16_t>> decimal_places = {};
    /// AxisLink: A name; the axes of a page with the same one share their range, whoever moves it; empty for
    /// none.
    std::optional<std::string> link = {};
    /// AxisColors: Colours of a colour bar: night, ember or meadow, tide or moor about a middle, dial for
    /// angles, or two or more of one's own such as `#000000; #FF8000; #FFFFFF`. A minus before it turns it
    /// round; empty is night.
    std::optional<std::string> colors = {};
    /// AxisBarWidth: Width of a colour bar in millimetres.
    std::optional<Checked<float>> bar_width = {};
};

/// The properties of an axis, read without an argument and set with one.
class QV_EXPORT AxisProperties : public Handle {
public:
    /// Sets what is given, in the order of the options; a fault leaves those before it set.
    void set(AxisOptions const& options) const;

    /// AxisTitle: Text beside the axis, of one or more lines; numbers are taken as text.
    std::string title() const;
    void title(std::string_view value) const; ///< sets it
    /// AxisGridMajor: Whether lines cross the plot area at the major ticks.
    bool major_grid() const;
    void major_grid(Checked<bool> value) const; ///< sets it
    /// AxisGridMinor: Whether lines cross the plot area at the minor ticks.
    bool minor_grid() const;
    void minor_grid(Checked<bool> value) const; ///< sets it
    /// AxisTickLength: Length of the major ticks in millimetres; minor ticks have 0.7 of it.
    float tick_length() const;
    void tick_length(Checked<float> value) const; ///< sets it
    /// AxisTicksBothEnds: Whether the opposite edge of the plot area has the same ticks.
    bool ticks_both_ends() const;
    void ticks_both_ends(Checked<bool> value) const; ///< sets it
    /// AxisTicksInside: Whether ticks reach into the plot area.
    bool ticks_inside() const;
    void ticks_inside(Checked<bool> value) const; ///< sets it
    /// AxisTicksOutside: Whether ticks reach out of the plot area, which moves labels and title outwards.
    bool ticks_outside() const;
    void ticks_outside(Checked<bool> value) const; ///< sets it
    /// AxisTickThickness: Width of the ticks in pixels at 96 to the inch, drawn as at least 1.
    std::uint8_t tick_thickness() const;
    void tick_thickness(Checked<std::uint8_t> value) const; ///< sets it
    /// AxisMajGridColor: Colour of the lines at major ticks.
    Color major_grid_color() const;
    void major_grid_color(ColorValue value) const; ///< sets it
    /// AxisMinGridColor: Colour of the lines at minor ticks.
    Color minor_grid_color() const;
    void minor_grid_color(ColorValue value) const; ///< sets it
    /// AxisColor: Colour of the axis line, its ticks and its edge of the plot area.
    Color color() const;
    void color(ColorValue value) const; ///< sets it
    /// AxisThickness: Width in pixels at 96 to the inch of the axis line and of the plot area's edge it
    /// stands on, drawn as at least 1.
    std::uint8_t thickness() const;
    void thickness(Checked<std::uint8_t> value) const; ///< sets it
    /// AxisLabelFont: Font of the tick labels, e.g. Font=Arial|9|Bold.
    std::string label_font() const;
    void label_font(std::string_view value) const; ///< sets it
    /// AxisLabelColor: Colour of the tick labels.
    Color label_color() const;
    void label_color(ColorValue value) const; ///< sets it
    /// AxisLabelsHoriz: Angle of the tick labels in degrees, counter-clockwise; a y axis starts with 90.
    std::int16_t label_angle() const;
    void label_angle(Checked<std::int16_t> value) const; ///< sets it
    /// AxisLabelShift: Millimetres by which the tick labels move towards the plot area.
    float label_shift() const;
    void label_shift(Checked<float> value) const; ///< sets it
    /// AxisShowLabels: Whether ticks have labels.
    bool show_labels() const;
    void show_labels(Checked<bool> value) const; ///< sets it
    /// AxisTitleFont: Font of the axis title.
    std::string title_font() const;
    void title_font(std::string_view value) const; ///< sets it
    /// AxisTitleColor: Colour of the axis title.
    Color title_color() const;
    void title_color(ColorValue value) const; ///< sets it
    /// AxisTitleShift: Millimetres by which the axis title moves towards the plot area.
    float title_shift() const;
    void title_shift(Checked<float> value) const; ///< sets it
    /// AxisShowTitle: Whether the title is shown.
    bool show_title() const;
    void show_title(Checked<bool> value) const; ///< sets it
    /// AxisFarSide: Puts an x axis above the plot area, a y axis to its right.
    bool far_side() const;
    void far_side(Checked<bool> value) const; ///< sets it
    /// AxisHide: Leaves the axis out; it takes no room, data are still drawn on it.
    bool hide() const;
    void hide(Checked<bool> value) const; ///< sets it
    /// AxisValue1: First end of the range shown; setting it makes an automatic axis fixed.
    double from() const;
    void from(Checked<double> value) const; ///< sets it
    /// AxisValue2: Last end of the range shown; setting it makes an automatic axis fixed.
    double to() const;
    void to(Checked<double> value) const; ///< sets it
    /// AxisScale: How the range is found: 0 automatic and round, 1 fixed, 2 fixed with texts as labels.
    std::uint8_t scale() const;
    void scale(Checked<std::uint8_t> value) const; ///< sets it
    /// AxisLog: Whether the axis is logarithmic; cleared at drawing where the range is not wholly positive.
    bool log() const;
    void log(Checked<bool> value) const; ///< sets it
    /// AxisReverse: Lets values grow to the left, or downwards.
    bool reverse() const;
    void reverse(Checked<bool> value) const; ///< sets it
    /// AxisTextLabels: With AxisScale 2 the labels, separated by commas; else the format of the numbers or
    /// times, e.g. 0.00 or d mmm yyyy.
    std::string text_labels() const;
    void text_labels(std::string_view value) const; ///< sets it
    /// AxisTime: Whether values are seconds since 1970 in UTC, shown as dates and times; an axis of time is
    /// never logarithmic.
    bool time() const;
    void time(Checked<bool> value) const; ///< sets it
    /// AxisTimeZone: Time zone in which an axis of time is shown, e.g. Europe/Berlin; UTC at first, local is
    /// the system's own.
    std::string time_zone() const;
    void time_zone(std::string_view value) const; ///< sets it
    /// AxisCategories: Whether value n of the axis is category n, from 0 on, written as its text; the axis
    /// reaches half a category beyond the first and the last. Categories that are times leave gaps such as
    /// weekends out.
    bool categories() const;
    void categories(Checked<bool> value) const; ///< sets it
    /// AxisCategoryTexts: The texts of the categories, separated by ","; "\," is a comma within a text. Texts
    /// of AddCategoryPoint that are not among them follow. Empty where the categories are times.
    std::string category_texts() const;
    void category_texts(std::string_view value) const; ///< sets it
    /// AxisMajorDivs: Number of divisions between major ticks, 0 for ticks at both ends alone; automatic axes
    /// choose their own.
    std::int16_t major_divs() const;
    void major_divs(Checked<std::int16_t> value) const; ///< sets it
    /// AxisMinorDivs: Number of parts of each division; 1 gives no minor ticks.
    std::int16_t minor_divs() const;
    void minor_divs(Checked<std::int16_t> value) const; ///< sets it
    /// AxisSIPrefix: With RoundTicks, shortens the labels by a prefix of the SI: 20 k, 1.5 µ.
    bool si_prefix() const;
    void si_prefix(Checked<bool> value) const; ///< sets it
    /// AxisOffset: With RoundTicks, takes what long labels share out of them and puts it behind the axis
    /// title.
    bool offset() const;
    void offset(Checked<bool> value) const; ///< sets it
    /// AxisDP: Kept for hosts that store it; labels find their own number of decimals.
    std::int16_t decimal_places() const;
    void decimal_places(Checked<std::int16_t> value) const; ///< sets it
    /// AxisLink: A name; the axes of a page with the same one share their range, whoever moves it; empty for
    /// none.
    std::string link() const;
    void link(std::string_view value) const; ///< sets it
    /// AxisColors: Colours of a colour bar: night, ember or meadow, tide or moor about a middle, dial for
    /// angles, or two or more of one's own such as `#000000; #FF8000; #FFFFFF`. A minus before it turns it
    /// round; empty is night.
    std::string colors() const;
    void colors(std::string_view value) const; ///< sets it
    /// AxisBarWidth: Width of a colour bar in millimetres.
    float bar_width() const;
    void bar_width(Checked<float> value) const; ///< sets it
};

/// What the legend of a graph can be given, in this order; what is left out stays as it is.
struct LegendOptions {
    /// Both colours of the legend's ground.
    std::optional<ColorValue> color = {};
    /// LegendShow: Whether the legend table is shown.
    std::optional<Checked<bool>> show = {};
    /// LegendInFront: Whether the legend lies over the data; if not, the data are drawn over it.
    std::optional<Checked<bool>> in_front = {};
    /// LegendDragging: Whether a person can drag the legend.
    std::optional<Checked<bool>> dragging = {};
    /// LegendFontColor: Colour of the legend's texts and of the DataID texts.
    std::optional<ColorValue> font_color = {};
    /// LegendFont: Font of the legend's texts.
    std::optional<std::string> font = {};
    /// LegendTableColor1: First colour of the legend's ground.
    std::optional<ColorValue> color1 = {};
    /// LegendTableColor2: Second colour of the legend's ground; another than the first makes a gradient.
    std::optional<ColorValue> color2 = {};
    /// LegendGradient: Direction of the legend's gradient in degrees, counter-clockwise from rightwards.
    std::optional<Checked<std::int16_t>> gradient = {};
    /// LegendGshift: Moves the middle of the legend's gradient: 1 keeps the first colour longer, -1 the
    /// second.
    std::optional<Checked<float>> gradient_shift = {};
    /// LegendGStyle: Shape of the legend's gradient: 1 lines across its direction, 2 rectangles about the
    /// centre, 3 rhombi, 4 a fan from the centre, 5 rectangles about a corner, 6 a fan from a corner; zero or
    /// negative ones lead there and back.
    std::optional<Checked<float>> gradient_style = {};
    /// LegendEdgeColor: Colour of the legend's outline.
    std::optional<ColorValue> edge_color = {};
    /// LegendEdgeThickness: Width of the legend's outline in pixels at 96 to the inch; 0 for none.
    std::optional<Checked<std::int32_t>> edge_thickness = {};
    /// LegendTransparent: Whether the legend has no ground.
    std::optional<Checked<std::int32_t>> transparent = {};
    /// LegendTableLeft: Left edge of the legend in percent of the graph's width; kept inside the graph.
    std::optional<Checked<float>> left = {};
    /// LegendTableTop: Top edge of the legend in percent of the graph's height; kept inside the graph.
    std::optional<Checked<float>> top = {};
    /// LegendPlace: 0 where LegendTableLeft and LegendTableTop say, 1 in the plot area where it hides least,
    /// or beside it where it is too large or would hide data, 2 beside the plot area; a person who drags it
    /// has the last word.
    std::optional<Checked<std::uint8_t>> place = {};
};

/// The properties of the legend of a graph, read without an argument and set with one.
class QV_EXPORT LegendProperties : public Handle {
public:
    /// Sets what is given, in the order of the options; a fault leaves those before it set.
    void set(LegendOptions const& options) const;

    /// LegendShow: Whether the legend table is shown.
    bool show() const;
    void show(Checked<bool> value) const; ///< sets it
    /// LegendInFront: Whether the legend lies over the data; if not, the data are drawn over it.
    bool in_front() const;
    void in_front(Checked<bool> value) const; ///< sets it
    /// LegendDragging: Whether a person can drag the legend.
    bool dragging() const;
    void dragging(Checked<bool> value) const; ///< sets it
    /// LegendFontColor: Colour of the legend's texts and of the DataID texts.
    Color font_color() const;
    void font_color(ColorValue value) const; ///< sets it
    /// LegendFont: Font of the legend's texts.
    std::string font() const;
    void font(std::string_view value) const; ///< sets it
    /// LegendTableColor1: First colour of the legend's ground.
    Color color1() const;
    void color1(ColorValue value) const; ///< sets it
    /// LegendTableColor2: Second colour of the legend's ground; another than the first makes a gradient.
    Color color2() const;
    void color2(ColorValue value) const; ///< sets it
    /// LegendGradient: Direction of the legend's gradient in degrees, counter-clockwise from rightwards.
    std::int16_t gradient() const;
    void gradient(Checked<std::int16_t> value) const; ///< sets it
    /// LegendGshift: Moves the middle of the legend's gradient: 1 keeps the first colour longer, -1 the
    /// second.
    float gradient_shift() const;
    void gradient_shift(Checked<float> value) const; ///< sets it
    /// LegendGStyle: Shape of the legend's gradient: 1 lines across its direction, 2 rectangles about the
    /// centre, 3 rhombi, 4 a fan from the centre, 5 rectangles about a corner, 6 a fan from a corner; zero or
    /// negative ones lead there and back.
    float gradient_style() const;
    void gradient_style(Checked<float> value) const; ///< sets it
    /// LegendEdgeColor: Colour of the legend's outline.
    Color edge_color() const;
    void edge_color(ColorValue value) const; ///< sets it
    /// LegendEdgeThickness: Width of the legend's outline in pixels at 96 to the inch; 0 for none.
    std::int32_t edge_thickness() const;
    void edge_thickness(Checked<std::int32_t> value) const; ///< sets it
    /// LegendTransparent: Whether the legend has no ground.
    std::int32_t transparent() const;
    void transparent(Checked<std::int32_t> value) const; ///< sets it
    /// LegendTableLeft: Left edge of the legend in percent of the graph's width; kept inside the graph.
    float left() const;
    void left(Checked<float> value) const; ///< sets it
    /// LegendTableTop: Top edge of the legend in percent of the graph's height; kept inside the graph.
    float top() const;
    void top(Checked<float> value) const; ///< sets it
    /// LegendPlace: 0 where LegendTableLeft and LegendTableTop say, 1 in the plot area where it hides least,
    /// or beside it where it is too large or would hide data, 2 beside the plot area; a person who drags it
    /// has the last word.
    std::uint8_t place() const;
    void place(Checked<std::uint8_t> value) const; ///< sets it
};

/// What a graph can be given, in this order; what is left out stays as it is.
struct GraphOptions {
    /// Both colours of the band around the plot area.
    std::optional<ColorValue> border_color = {};
    /// Both colours of the plot area.
    std::optional<ColorValue> plot_area_color = {};
    /// ShowDataID: Whether points show their DataID above their symbols.
    std::optional<Checked<bool>> show_data_id = {};
    /// GraphInclude: Whether the graph and its legend are drawn.
    std::optional<Checked<bool>> include = {};
    /// GraphShowTitle: Whether the graph's name stands above its plot area.
    std::optional<Checked<bool>> show_title = {};
    /// GraphAllowZoom: Whether a person can zoom and scroll the graph.
    std::optional<Checked<bool>> allow_zoom = {};
    /// GraphShowXY: Whether the read-out shows coordinates over this graph.
    std::optional<Checked<bool>> show_xy = {};
    /// GraphAllowDragging: Whether a person can move and resize the graph.
    std::optional<Checked<bool>> allow_dragging = {};
    /// KeepEqualUnits: Makes a unit of the first x axis as long on the page as one of the first y axis; the
    /// axis with room to spare shows more.
    std::optional<Checked<bool>> keep_equal_units = {};
    /// BarArrangement: How the bars of the graph's data sets share the room of a value: 0 as DataSymbolSize,
    /// BarOffset and BarStacked say, 1 beside each other, 2 upon each other, those below 0 downwards, 3 the
    /// same in percent of all at a value. 1 to 3 make them as wide as the axis says at every zoom.
    std::optional<Checked<std::uint8_t>> bar_arrangement = {};
    /// BarWidthShare: Share of the room of a value, such as a category, that its bars take together under
    /// BarArrangement 1 to 3, 0 to 1; the rest is the gap.
    std::optional<Checked<double>> bar_width_share = {};
    /// GraphPolar: Makes x an angle and y, of the first y axis, the distance from the middle of the plot
    /// area; lines, symbols, areas, bars and functions follow. Nothing of such a graph is zoomed.
    std::optional<Checked<bool>> polar = {};
    /// PolarRadians: Whether the angles of a polar graph are radians, not degrees.
    std::optional<Checked<bool>> polar_radians = {};
    /// PolarZero: Where a polar graph has its angle 0: degrees counter-clockwise from rightwards, 90 at the
    /// top.
    std::optional<Checked<float>> polar_zero = {};
    /// PolarClockwise: Whether angles of a polar graph grow clockwise.
    std::optional<Checked<bool>> polar_clockwise = {};
    /// GraphTitleColor: Colour of the graph's title.
    std::optional<ColorValue> title_color = {};
    /// GraphTitleFont: Font of the graph's title.
    std::optional<std::string> title_font = {};
    /// GraphTitleVShift: Millimetres by which the title moves up.
    std::optional<Checked<float>> title_v_shift = {};
    /// GraphTitleHShift: Millimetres by which the title moves to the right.
    std::optional<Checked<float>> title_h_shift = {};
    /// GraphWholePage: Whether the graph fills the page whatever its position says; its frame cannot be
    /// dragged.
    std::optional<Checked<bool>> whole_page = {};
    /// GraphLeft: Left edge in percent of the page.
    std::optional<Checked<float>> left = {};
    /// GraphTop: Top edge in percent of the page.
    std::optional<Checked<float>> top = {};
    /// GraphWidth: Width in percent of the page.
    std::optional<Checked<float>> width = {};
    /// GraphHeight: Height in percent of the page.
    std::optional<Checked<float>> height = {};
    /// BorderLeft: Width in millimetres of the band between the graph's left edge and its plot area.
    std::optional<Checked<float>> border_left = {};
    /// BorderRight: Width in millimetres of the band at the right.
    std::optional<Checked<float>> border_right = {};
    /// BorderTop: Height in millimetres of the band above.
    std::optional<Checked<float>> border_top = {};
    /// BorderBottom: Height in millimetres of the band below.
    std::optional<Checked<float>> border_bottom = {};
    /// PlotLeftMargin: The same as BorderLeft.
    std::optional<Checked<float>> plot_left_margin = {};
    /// PlotRightMargin: The same as BorderRight.
    std::optional<Checked<float>> plot_right_margin = {};
    /// PlotTopMargin: The same as BorderTop.
    std::optional<Checked<float>> plot_top_margin = {};
    /// PlotBottomMargin: The same as BorderBottom.
    std::optional<Checked<float>> plot_bottom_margin = {};
    /// BorderColor1: First colour of the band around the plot area.
    std::optional<ColorValue> border_color1 = {};
    /// BorderColor2: Second colour of the band; another than the first makes a gradient.
    std::optional<ColorValue> border_color2 = {};
    /// BorderGradient: Direction of the band's gradient in degrees, counter-clockwise from rightwards.
    std::optional<Checked<std::int16_t>> border_gradient = {};
    /// BorderGShift: Moves the middle of the band's gradient, -1 to 1, as LegendGshift does.
    std::optional<Checked<float>> border_gradient_shift = {};
    /// BorderGStyle: Shape of the band's gradient, numbered as in LegendGStyle.
    std::optional<Checked<float>> border_gradient_style = {};
    /// BorderEdgeColor: Colour of the graph's outline.
    std::optional<ColorValue> border_edge_color = {};
    /// BorderEdgeThickness: Width of the graph's outline in pixels at 96 to the inch; 0 for none.
    std::optional<Checked<std::int16_t>> border_edge_thickness = {};
    /// BorderTransparent: Whether the band is left as the page is.
    std::optional<Checked<std::int32_t>> border_transparent = {};
    /// PlotAreaColor1: First colour of the plot area.
    std::optional<ColorValue> plot_area_color1 = {};
    /// PlotAreaColor2: Second colour of the plot area; another than the first makes a gradient.
    std::optional<ColorValue> plot_area_color2 = {};
    /// PlotAreaGradient: Direction of the plot area's gradient in degrees, counter-clockwise from rightwards.
    std::optional<Checked<std::int16_t>> plot_area_gradient = {};
    /// PlotAreaGShift: Moves the middle of the plot area's gradient, -1 to 1, as LegendGshift does.
    std::optional<Checked<float>> plot_area_gradient_shift = {};
    /// PlotAreaGStyle: Shape of the plot area's gradient, numbered as in LegendGStyle.
    std::optional<Checked<float>> plot_area_gradient_style = {};
    /// PlotAreaTransparent: Whether the plot area shows what is below it.
    std::optional<Checked<std::int32_t>> plot_area_transparent = {};
};

/// The properties of a graph, read without an argument and set with one.
class QV_EXPORT GraphProperties : public Handle {
public:
    /// Sets what is given, in the order of the options; a fault leaves those before it set.
    void set(GraphOptions const& options) const;

    /// ShowDataID: Whether points show their DataID above their symbols.
    bool show_data_id() const;
    void show_data_id(Checked<bool> value) const; ///< sets it
    /// GraphInclude: Whether the graph and its legend are drawn.
    bool include() const;
    void include(Checked<bool> value) const; ///< sets it
    /// GraphShowTitle: Whether the graph's name stands above its plot area.
    bool show_title() const;
    void show_title(Checked<bool> value) const; ///< sets it
    /// GraphAllowZoom: Whether a person can zoom and scroll the graph.
    bool allow_zoom() const;
    void allow_zoom(Checked<bool> value) const; ///< sets it
    /// GraphShowXY: Whether the read-out shows coordinates over this graph.
    bool show_xy() const;
    void show_xy(Checked<bool> value) const; ///< sets it
    /// GraphAllowDragging: Whether a person can move and resize the graph.
    bool allow_dragging() const;
    void allow_dragging(Checked<bool> value) const; ///< sets it
    /// KeepEqualUnits: Makes a unit of the first x axis as long on the page as one of the first y axis; the
    /// axis with room to spare shows more.
    bool keep_equal_units() const;
    void keep_equal_units(Checked<bool> value) const; ///< sets it
    /// BarArrangement: How the bars of the graph's data sets share the room of a value: 0 as DataSymbolSize,
    /// BarOffset and BarStacked say, 1 beside each other, 2 upon each other, those below 0 downwards, 3 the
    /// same in percent of all at a value. 1 to 3 make them as wide as the axis says at every zoom.
    std::uint8_t bar_arrangement() const;
    void bar_arrangement(Checked<std::uint8_t> value) const; ///< sets it
    /// BarWidthShare: Share of the room of a value, such as a category, that its bars take together under
    /// BarArrangement 1 to 3, 0 to 1; the rest is the gap.
    double bar_width_share() const;
    void bar_width_share(Checked<double> value) const; ///< sets it
    /// GraphPolar: Makes x an angle and y, of the first y axis, the distance from the middle of the plot
    /// area; lines, symbols, areas, bars and functions follow. Nothing of such a graph is zoomed.
    bool polar() const;
    void polar(Checked<bool> value) const; ///< sets it
    /// PolarRadians: Whether the angles of a polar graph are radians, not degrees.
    bool polar_radians() const;
    void polar_radians(Checked<bool> value) const; ///< sets it
    /// PolarZero: Where a polar graph has its angle 0: degrees counter-clockwise from rightwards, 90 at the
    /// top.
    float polar_zero() const;
    void polar_zero(Checked<float> value) const; ///< sets it
    /// PolarClockwise: Whether angles of a polar graph grow clockwise.
    bool polar_clockwise() const;
    void polar_clockwise(Checked<bool> value) const; ///< sets it
    /// GraphTitleColor: Colour of the graph's title.
    Color title_color() const;
    void title_color(ColorValue value) const; ///< sets it
    /// GraphTitleFont: Font of the graph's title.
    std::string title_font() const;
    void title_font(std::string_view value) const; ///< sets it
    /// GraphTitleVShift: Millimetres by which the title moves up.
    float title_v_shift() const;
    void title_v_shift(Checked<float> value) const; ///< sets it
    /// GraphTitleHShift: Millimetres by which the title moves to the right.
    float title_h_shift() const;
    void title_h_shift(Checked<float> value) const; ///< sets it
    /// GraphWholePage: Whether the graph fills the page whatever its position says; its frame cannot be
    /// dragged.
    bool whole_page() const;
    void whole_page(Checked<bool> value) const; ///< sets it
    /// GraphLeft: Left edge in percent of the page.
    float left() const;
    void left(Checked<float> value) const; ///< sets it
    /// GraphTop: Top edge in percent of the page.
    float top() const;
    void top(Checked<float> value) const; ///< sets it
    /// GraphWidth: Width in percent of the page.
    float width() const;
    void width(Checked<float> value) const; ///< sets it
    /// GraphHeight: Height in percent of the page.
    float height() const;
    void height(Checked<float> value) const; ///< sets it
    /// BorderLeft: Width in millimetres of the band between the graph's left edge and its plot area.
    float border_left() const;
    void border_left(Checked<float> value) const; ///< sets it
    /// BorderRight: Width in millimetres of the band at the right.
    float border_right() const;
    void border_right(Checked<float> value) const; ///< sets it
    /// BorderTop: Height in millimetres of the band above.
    float border_top() const;
    void border_top(Checked<float> value) const; ///< sets it
    /// BorderBottom: Height in millimetres of the band below.
    float border_bottom() const;
    void border_bottom(Checked<float> value) const; ///< sets it
    /// PlotLeftMargin: The same as BorderLeft.
    float plot_left_margin() const;
    void plot_left_margin(Checked<float> value) const; ///< sets it
    /// PlotRightMargin: The same as BorderRight.
    float plot_right_margin() const;
    void plot_right_margin(Checked<float> value) const; ///< sets it
    /// PlotTopMargin: The same as BorderTop.
    float plot_top_margin() const;
    void plot_top_margin(Checked<float> value) const; ///< sets it
    /// PlotBottomMargin: The same as BorderBottom.
    float plot_bottom_margin() const;
    void plot_bottom_margin(Checked<float> value) const; ///< sets it
    /// BorderColor1: First colour of the band around the plot area.
    Color border_color1() const;
    void border_color1(ColorValue value) const; ///< sets it
    /// BorderColor2: Second colour of the band; another than the first makes a gradient.
    Color border_color2() const;
    void border_color2(ColorValue value) const; ///< sets it
    /// BorderGradient: Direction of the band's gradient in degrees, counter-clockwise from rightwards.
    std::int16_t border_gradient() const;
    void border_gradient(Checked<std::int16_t> value) const; ///< sets it
    /// BorderGShift: Moves the middle of the band's gradient, -1 to 1, as LegendGshift does.
    float border_gradient_shift() const;
    void border_gradient_shift(Checked<float> value) const; ///< sets it
    /// BorderGStyle: Shape of the band's gradient, numbered as in LegendGStyle.
    float border_gradient_style() const;
    void border_gradient_style(Checked<float> value) const; ///< sets it
    /// BorderEdgeColor: Colour of the graph's outline.
    Color border_edge_color() const;
    void border_edge_color(ColorValue value) const; ///< sets it
    /// BorderEdgeThickness: Width of the graph's outline in pixels at 96 to the inch; 0 for none.
    std::int16_t border_edge_thickness() const;
    void border_edge_thickness(Checked<std::int16_t> value) const; ///< sets it
    /// BorderTransparent: Whether the band is left as the page is.
    std::int32_t border_transparent() const;
    void border_transparent(Checked<std::int32_t> value) const; ///< sets it
    /// PlotAreaColor1: First colour of the plot area.
    Color plot_area_color1() const;
    void plot_area_color1(ColorValue value) const; ///< sets it
    /// PlotAreaColor2: Second colour of the plot area; another than the first makes a gradient.
    Color plot_area_color2() const;
    void plot_area_color2(ColorValue value) const; ///< sets it
    /// PlotAreaGradient: Direction of the plot area's gradient in degrees, counter-clockwise from rightwards.
    std::int16_t plot_area_gradient() const;
    void plot_area_gradient(Checked<std::int16_t> value) const; ///< sets it
    /// PlotAreaGShift: Moves the middle of the plot area's gradient, -1 to 1, as LegendGshift does.
    float plot_area_gradient_shift() const;
    void plot_area_gradient_shift(Checked<float> value) const; ///< sets it
    /// PlotAreaGStyle: Shape of the plot area's gradient, numbered as in LegendGStyle.
    float plot_area_gradient_style() const;
    void plot_area_gradient_style(Checked<float> value) const; ///< sets it
    /// PlotAreaTransparent: Whether the plot area shows what is below it.
    std::int32_t plot_area_transparent() const;
    void plot_area_transparent(Checked<std::int32_t> value) const; ///< sets it
};

/// What a data set can be given, in this order; what is left out stays as it is.
struct DataOptions {
    /// The axis, x or y, of the same graph that the data lie on; empty, the graph's first.
    AxisProperties axis = {};
    /// The axis of the other kind, where that is not the graph's first either.
    AxisProperties other_axis = {};
    /// The colour bar that gives values their colours, of the same graph; empty, none.
    AxisProperties color_axis = {};
    /// The colour of line, symbols, bars, filled area and text at once.
    std::optional<ColorValue> color = {};
    /// DataLegend: Text of the data set in the legend table; an empty one takes no row.
    std::optional<std::string> legend = {};
    /// DataInLegendTable: Whether the data set has a row in the legend table.
    std::optional<Checked<bool>> in_legend_table = {};
    /// DataSymbol: 0 none, 1 bars, 2 dot, 3 circle, 4 square, 5 diamond, 6 and 7 triangles up and down, 8
    /// wide and 9 tall rectangle, 10 plus, 11 cross, -1 numbers, -2 letters, else the character of that code.
    std::optional<Checked<std::int16_t>> symbol = {};
    /// DataSymbolSpacing: Where a line joins the points, symbols stand at least so many millimetres apart; 0
    /// puts one at each.
    std::optional<Checked<float>> symbol_spacing = {};
    /// DataSymbolEvery: Where a line joins the points, so many points lie from one symbol to the next; 0 and
    /// 1 put one at each.
    std::optional<Checked<std::int32_t>> symbol_every = {};
    /// DataSymbolSize: Size of the symbols in millimetres.
    std::optional<Checked<float>> symbol_size = {};
    /// DataSymbolColor: Colour of symbols, bars and filled areas.
    std::optional<ColorValue> symbol_color = {};
    /// DataSymbolEdgeColor: Colour of the symbols' outlines, and of error bars along x.
    std::optional<ColorValue> symbol_edge_color = {};
    /// DataSymbolEdgeThickness: Width of the symbols' outlines in pixels at 96 to the inch; 0 for none.
    std::optional<Checked<std::uint8_t>> symbol_edge_thickness = {};
    /// DataTransparent: Leaves symbols, bars and their texts out; lines and error bars stay.
    std::optional<Checked<bool>> transparent = {};
    /// DataLineStyle: 0 none, 1 solid, 2 dotted, 3 smooth curve, 4 filled area, 5 area outlined piece by
    /// piece.
    std::optional<Checked<std::int16_t>> line_style = {};
    /// DataLineDash: 0 as DataLineStyle says, 1 dashes, 2 dots, 3 and 4 dashes with one and two dots, for any
    /// line but that of an area, going on from point to point.
    std::optional<Checked<std::uint8_t>> line_dash = {};
    /// DataLinePattern: A pattern of dashes of one's own, the lengths of dashes and gaps in turn in widths of
    /// the line, such as "6 2 1 2"; it goes on from point to point and counts before DataLineDash. A dash no
    /// longer than the line is wide is a dot. Anything but up to 16 numbers from 0 to 1000 with a sum of at
    /// least 1 is fault 5.
    std::optional<std::string> line_pattern = {};
    /// DataLineColor: Colour of the line.
    std::optional<ColorValue> line_color = {};
    /// DataLineThickness: Width of the line in pixels at 96 to the inch, drawn as at least 1.
    std::optional<Checked<std::uint8_t>> line_thickness = {};
    /// DataLineAlpha: How opaque line and error bars are, from 0, invisible, to 255.
    std::optional<Checked<std::uint8_t>> line_alpha = {};
    /// DataFillAlpha: How opaque symbols, bars and areas are, from 0, invisible, to 255.
    std::optional<Checked<std::uint8_t>> fill_alpha = {};
    /// DataSteps: Makes steps of a line, an area or a band: 1 the value of a point holds from the point
    /// before up to it, 2 from it to the next one, 3 halfway to either side; 0 goes straight from point to
    /// point.
    std::optional<Checked<std::uint8_t>> steps = {};
    /// DataKind: What is made of the points: 0 lines, symbols and bars at them, 1 a histogram of their y, 2
    /// box plots and 3 strips of the points of one x each (with BarHoriz of one y), 4 a heat map of a matrix
    /// or of the points counted in cells, 5 its contours, 6 candles: Y is the close, the extra columns open,
    /// high, low and volume, 7 a pie of their y, 8 nothing, but a mark stands on the axes. Automatic axes
    /// with other kinds fit what they show at each drawing.
    std::optional<Checked<std::uint8_t>> kind = {};
    /// HistogramBins: How many bins a histogram has between its least and its largest value; 0 lets the rule
    /// of Freedman and Diaconis decide. SetHistogramEdges and HistogramBinWidth come first.
    std::optional<Checked<std::int32_t>> histogram_bins = {};
    /// HistogramBinWidth: How wide a histogram's bins are, which then begin at multiples of it; 0 where
    /// HistogramBins decides.
    std::optional<Checked<double>> histogram_bin_width = {};
    /// HistogramMeasure: What a histogram's bars tell: 0 counts, 1 shares of all values, 2 densities, which
    /// are shares by unit of x.
    std::optional<Checked<std::uint8_t>> histogram_measure = {};
    /// HistogramCumulative: Whether each bar of a histogram counts the values of the bins before it too.
    std::optional<Checked<bool>> histogram_cumulative = {};
    /// BoxWhiskers: How far whiskers of box plots reach at most, in distances between the quartiles; values
    /// beyond them are drawn one by one.
    std::optional<Checked<double>> box_whiskers = {};
    /// BoxNotches: Whether box plots have notches; medians whose notches do not meet differ at about the 95 %
    /// level.
    std::optional<Checked<bool>> box_notches = {};
    /// GroupWidth: How wide box plots and strips are, as a share of the distance between neighbours, 0 to 1.
    std::optional<Checked<double>> group_width = {};
    /// MarkShape: Of a mark (DataKind 8): 0 a level line at MarkY1, 1 an upright line at MarkX1, 2 a level
    /// band from MarkY1 to MarkY2, 3 an upright band from MarkX1 to MarkX2, 4 an arrow from MarkX1, MarkY1 to
    /// MarkX2, MarkY2, 5 the rectangle between these corners. DataText is its label: DataTextOri puts it in
    /// its remainder by 3 at the start, middle or end of the mark, in its quotient above, on or below it.
    std::optional<Checked<std::uint8_t>> mark_shape = {};
    /// MarkX1: First x of a mark, on its x axis or in percent.
    std::optional<Checked<double>> mark_x1 = {};
    /// MarkY1: First y of a mark, on its y axis or in percent.
    std::optional<Checked<double>> mark_y1 = {};
    /// MarkX2: Second x of a mark; an arrow's tip.
    std::optional<Checked<double>> mark_x2 = {};
    /// MarkY2: Second y of a mark; an arrow's tip.
    std::optional<Checked<double>> mark_y2 = {};
    /// MarkPercent: Whether a mark's values are percent of the plot area, y from the bottom.
    std::optional<Checked<bool>> mark_percent = {};
    /// MarkDragging: Whether a person may drag a mark, as a whole or by edge, corner or end; MarkMoved tells
    /// its values.
    std::optional<Checked<bool>> mark_dragging = {};
    /// PieHole: Radius of the hole in a pie (DataKind 7) in percent of its own, 0 to 95; a pie with a hole is
    /// a ring.
    std::optional<Checked<float>> pie_hole = {};
    /// PieStart: Degrees clockwise from the top where the first slice of a pie begins.
    std::optional<Checked<float>> pie_start = {};
    /// PieLeft: Whether the slices of a pie follow one another counter-clockwise.
    std::optional<Checked<bool>> pie_left = {};
    /// PieLabels: What stands beside the slices of a pie: 0 name and percent, 1 name and value, 2 percent, 3
    /// value, 4 name, 5 nothing.
    std::optional<Checked<std::uint8_t>> pie_labels = {};
    /// PieGather: Percent of the whole; smaller slices of a pie, where there are two or more, become one. 0
    /// gathers none.
    std::optional<Checked<float>> pie_gather = {};
    /// PieGatherName: Name of the slice of those that PieGather has gathered.
    std::optional<std::string> pie_gather_name = {};
    /// ColorAxisIndex: Number of the colour bar that gives a heat map or contours their colours, among all
    /// axes of its graph; 0 for none.
    std::optional<Checked<std::int16_t>> color_axis_index = {};
    /// MissingColor: Colour of a heat map's cells that have no value; -1 leaves them out.
    std::optional<ColorValue> missing_color = {};
    /// CellValues: Writes the values of a heat map on those cells that have room for them.
    std::optional<Checked<bool>> cell_values = {};
    /// GridBinsX: How many cells across a heat map or contours of points have, 0 to 4096; 0 as many as suit
    /// their number.
    std::optional<Checked<std::int16_t>> grid_bins_x = {};
    /// GridBinsY: The same upwards.
    std::optional<Checked<std::int16_t>> grid_bins_y = {};
    /// ContourLevels: The values of contour lines as a list, 1; 2.5; 5, or one whole number of levels; empty
    /// for about eight round ones.
    std::optional<std::string> contour_levels = {};
    /// ContourLabels: Writes the values of contour lines along them.
    std::optional<Checked<bool>> contour_labels = {};
    /// DataHide: Leaves the data set out of page and legend.
    std::optional<Checked<bool>> hide = {};
    /// ShowErrorBar: Whether points with an E have error bars: upright for a positive E, lying for a negative
    /// one.
    std::optional<Checked<bool>> show_error_bar = {};
    /// ErrorBarColor: Colour of upright error bars.
    std::optional<ColorValue> error_bar_color = {};
    /// ErrorStyle: How the errors of points are shown: 0 bars, 1 a band around the points of which each y has
    /// a finite error, 2 both.
    std::optional<Checked<std::uint8_t>> error_style = {};
    /// ErrorBarCap: Length of the caps of error bars in millimetres; 0 for none.
    std::optional<Checked<float>> error_bar_cap = {};
    /// ErrorBarThickness: Width of error bars in pixels at 96 to the inch, drawn as at least 1.
    std::optional<Checked<std::uint8_t>> error_bar_thickness = {};
    /// ErrorBandAlpha: How opaque the band of errors is, in ErrorBarColor, from 0 to 255.
    std::optional<Checked<std::uint8_t>> error_band_alpha = {};
    /// AreaBase: Whether areas begin at AreaBaseValue, not where the y axis does.
    std::optional<Checked<bool>> area_base = {};
    /// AreaBaseValue: The value at which areas begin.
    std::optional<Checked<double>> area_base_value = {};
    /// AreaBelowColor: Colour of an area where it lies below its base or the data set of AreaTo, cut exactly
    /// where they cross; -1 takes DataSymbolColor there too.
    std::optional<ColorValue> area_below_color = {};
    /// AreaTo: Number of the data set at which the area begins, from 0, as SetSelectedData counts; it may be
    /// hidden or lie on other axes. Where only one of the two has a value there is no area. -1 for none.
    std::optional<Checked<std::int16_t>> area_to = {};
    /// AreaStacked: 1 puts the area upon the stacked areas of the data sets before on the same axes, 2 as
    /// percent of the sum of all of them; between points values lie on the lines that join them.
    std::optional<Checked<std::uint8_t>> area_stacked = {};
    /// MathFunc: A formula in x whose curve is drawn, e.g. sin(x)/x; see expressions.md.
    std::optional<std::string> formula = {};
    /// MathFuncX1: One end of the formula's curve in data values; both ends 0 mean the whole x axis.
    std::optional<Checked<double>> formula_from = {};
    /// MathFuncX2: The other end of the formula's curve.
    std::optional<Checked<double>> formula_to = {};
    /// BarShadowColor: Colour of the bars' shadows.
    std::optional<ColorValue> bar_shadow_color = {};
    /// BarShadow: Whether bars have a shadow, a millimetre to the right and down.
    std::optional<Checked<bool>> bar_shadow = {};
    /// BarHoriz: Whether bars lie, reaching to their x.
    std::optional<Checked<bool>> bar_horiz = {};
    /// Bar3D: Whether bars are shaded like cylinders, from the edge's colour to the symbol's.
    std::optional<Checked<bool>> bar_3d = {};
    /// BarStacked: Whether bars stand on those of the data set before, bar by bar.
    std::optional<Checked<bool>> bar_stacked = {};
    /// BarBase: Whether bars start at BarBaseValue instead of beyond the plot area's edge.
    std::optional<Checked<bool>> bar_base = {};
    /// BarBaseValue: The value at which bars start.
    std::optional<Checked<double>> bar_base_value = {};
    /// BarOffset: Millimetres, or with a BarWidth values of the axis, by which bars move across their length,
    /// so that sets stand side by side.
    std::optional<Checked<float>> bar_offset = {};
    /// BarLabels: Where bars have their values written: 0 nowhere, 1 in their middle, 2 at their end, beyond
    /// it where there is room. A label that has none is left out.
    std::optional<Checked<std::uint8_t>> bar_labels = {};
    /// BarLabelFormat: Pattern of the labels of bars, as for AxisTextLabels; empty writes as many digits as
    /// needed.
    std::optional<std::string> bar_label_format = {};
    /// CandleStyle: How candles (DataKind 6) are drawn: 0 bodies from open to close with wicks to high and
    /// low, 1 bars from low to high with ticks for open and close.
    std::optional<Checked<std::uint8_t>> candle_style = {};
    /// CandleRisingColor: Colour of candles that close at or above their opening.
    std::optional<ColorValue> candle_rising_color = {};
    /// CandleFallingColor: Colour of candles that close below their opening.
    std::optional<ColorValue> candle_falling_color = {};
    /// CandleVolumeAxis: Number of the y axis, counted from 1 among the y axes, on which the volumes of
    /// candles stand as columns in the lower third of the plot area; 0 for none.
    std::optional<Checked<std::int16_t>> candle_volume_axis = {};
    /// BarWidth: Width of bars in values of the axis that they stand side by side on; 0 for the millimetres
    /// of DataSymbolSize.
    std::optional<Checked<double>> bar_width = {};
    /// DataText: A text on the plot area; lines are separated by CR LF.
    std::optional<std::string> text = {};
    /// DataTextX: Where the text stands along x, in data values or percent.
    std::optional<Checked<double>> text_x = {};
    /// DataTextY: Where the text stands along y, in data values or in percent from the bottom.
    std::optional<Checked<double>> text_y = {};
    /// DataTextOri: 0 to 8: its remainder by 3 aligns start, centre, end across, its quotient top, middle,
    /// bottom.
    std::optional<Checked<std::uint8_t>> text_ori = {};
    /// DataTextFont: Font of the text, of character symbols and of DataID texts.
    std::optional<std::string> text_font = {};
    /// DataTextColor: Colour of the text.
    std::optional<ColorValue> text_color = {};
    /// DataTextAngle: Angle of the text in degrees, counter-clockwise.
    std::optional<Checked<std::int16_t>> text_angle = {};
    /// DataTextPercent: Whether the text's place is in percent of the plot area.
    std::optional<Checked<bool>> text_percent = {};
};

/// The properties of a data set, read without an argument and set with one.
class QV_EXPORT DataProperties : public Handle {
public:
    /// Sets what is given, in the order of the options; a fault leaves those before it set.
    void set(DataOptions const& options) const;

    /// xAxisIndex: Number of the x axis that the data set belongs to, among all axes of its graph.
    std::int16_t x_axis_index() const;
    /// yAxisIndex: Number of the y axis that the data set belongs to, among all axes of its graph.
    std::int16_t y_axis_index() const;
    /// DataLegend: Text of the data set in the legend table; an empty one takes no row.
    std::string legend() const;
    void legend(std::string_view value) const; ///< sets it
    /// DataInLegendTable: Whether the data set has a row in the legend table.
    bool in_legend_table() const;
    void in_legend_table(Checked<bool> value) const; ///< sets it
    /// DataSymbol: 0 none, 1 bars, 2 dot, 3 circle, 4 square, 5 diamond, 6 and 7 triangles up and down, 8
    /// wide and 9 tall rectangle, 10 plus, 11 cross, -1 numbers, -2 letters, else the character of that code.
    std::int16_t symbol() const;
    void symbol(Checked<std::int16_t> value) const; ///< sets it
    /// DataSymbolSpacing: Where a line joins the points, symbols stand at least so many millimetres apart; 0
    /// puts one at each.
    float symbol_spacing() const;
    void symbol_spacing(Checked<float> value) const; ///< sets it
    /// DataSymbolEvery: Where a line joins the points, so many points lie from one symbol to the next; 0 and
    /// 1 put one at each.
    std::int32_t symbol_every() const;
    void symbol_every(Checked<std::int32_t> value) const; ///< sets it
    /// DataSymbolSize: Size of the symbols in millimetres.
    float symbol_size() const;
    void symbol_size(Checked<float> value) const; ///< sets it
    /// DataSymbolColor: Colour of symbols, bars and filled areas.
    Color symbol_color() const;
    void symbol_color(ColorValue value) const; ///< sets it
    /// DataSymbolEdgeColor: Colour of the symbols' outlines, and of error bars along x.
    Color symbol_edge_color() const;
    void symbol_edge_color(ColorValue value) const; ///< sets it
    /// DataSymbolEdgeThickness: Width of the symbols' outlines in pixels at 96 to the inch; 0 for none.
    std::uint8_t symbol_edge_thickness() const;
    void symbol_edge_thickness(Checked<std::uint8_t> value) const; ///< sets it
    /// DataTransparent: Leaves symbols, bars and their texts out; lines and error bars stay.
    bool transparent() const;
    void transparent(Checked<bool> value) const; ///< sets it
    /// DataLineStyle: 0 none, 1 solid, 2 dotted, 3 smooth curve, 4 filled area, 5 area outlined piece by
    /// piece.
    std::int16_t line_style() const;
    void line_style(Checked<std::int16_t> value) const; ///< sets it
    /// DataLineDash: 0 as DataLineStyle says, 1 dashes, 2 dots, 3 and 4 dashes with one and two dots, for any
    /// line but that of an area, going on from point to point.
    std::uint8_t line_dash() const;
    void line_dash(Checked<std::uint8_t> value) const; ///< sets it
    /// DataLinePattern: A pattern of dashes of one's own, the lengths of dashes and gaps in turn in widths of
    /// the line, such as "6 2 1 2"; it goes on from point to point and counts before DataLineDash. A dash no
    /// longer than the line is wide is a dot. Anything but up to 16 numbers from 0 to 1000 with a sum of at
    /// least 1 is fault 5.
    std::string line_pattern() const;
    void line_pattern(std::string_view value) const; ///< sets it
    /// DataLineColor: Colour of the line.
    Color line_color() const;
    void line_color(ColorValue value) const; ///< sets it
    /// DataLineThickness: Width of the line in pixels at 96 to the inch, drawn as at least 1.
    std::uint8_t line_thickness() const;
    void line_thickness(Checked<std::uint8_t> value) const; ///< sets it
    /// DataLineAlpha: How opaque line and error bars are, from 0, invisible, to 255.
    std::uint8_t line_alpha() const;
    void line_alpha(Checked<std::uint8_t> value) const; ///< sets it
    /// DataFillAlpha: How opaque symbols, bars and areas are, from 0, invisible, to 255.
    std::uint8_t fill_alpha() const;
    void fill_alpha(Checked<std::uint8_t> value) const; ///< sets it
    /// DataSteps: Makes steps of a line, an area or a band: 1 the value of a point holds from the point
    /// before up to it, 2 from it to the next one, 3 halfway to either side; 0 goes straight from point to
    /// point.
    std::uint8_t steps() const;
    void steps(Checked<std::uint8_t> value) const; ///< sets it
    /// DataKind: What is made of the points: 0 lines, symbols and bars at them, 1 a histogram of their y, 2
    /// box plots and 3 strips of the points of one x each (with BarHoriz of one y), 4 a heat map of a matrix
    /// or of the points counted in cells, 5 its contours, 6 candles: Y is the close, the extra columns open,
    /// high, low and volume, 7 a pie of their y, 8 nothing, but a mark stands on the axes. Automatic axes
    /// with other kinds fit what they show at each drawing.
    std::uint8_t kind() const;
    void kind(Checked<std::uint8_t> value) const; ///< sets it
    /// HistogramBins: How many bins a histogram has between its least and its largest value; 0 lets the rule
    /// of Freedman and Diaconis decide. SetHistogramEdges and HistogramBinWidth come first.
    std::int32_t histogram_bins() const;
    void histogram_bins(Checked<std::int32_t> value) const; ///< sets it
    /// HistogramBinWidth: How wide a histogram's bins are, which then begin at multiples of it; 0 where
    /// HistogramBins decides.
    double histogram_bin_width() const;
    void histogram_bin_width(Checked<double> value) const; ///< sets it
    /// HistogramMeasure: What a histogram's bars tell: 0 counts, 1 shares of all values, 2 densities, which
    /// are shares by unit of x.
    std::uint8_t histogram_measure() const;
    void histogram_measure(Checked<std::uint8_t> value) const; ///< sets it
    /// HistogramCumulative: Whether each bar of a histogram counts the values of the bins before it too.
    bool histogram_cumulative() const;
    void histogram_cumulative(Checked<bool> value) const; ///< sets it
    /// BoxWhiskers: How far whiskers of box plots reach at most, in distances between the quartiles; values
    /// beyond them are drawn one by one.
    double box_whiskers() const;
    void box_whiskers(Checked<double> value) const; ///< sets it
    /// BoxNotches: Whether box plots have notches; medians whose notches do not meet differ at about the 95 %
    /// level.
    bool box_notches() const;
    void box_notches(Checked<bool> value) const; ///< sets it
    /// GroupWidth: How wide box plots and strips are, as a share of the distance between neighbours, 0 to 1.
    double group_width() const;
    void group_width(Checked<double> value) const; ///< sets it
    /// MarkShape: Of a mark (DataKind 8): 0 a level line at MarkY1, 1 an upright line at MarkX1, 2 a level
    /// band from MarkY1 to MarkY2, 3 an upright band from MarkX1 to MarkX2, 4 an arrow from MarkX1, MarkY1 to
    /// MarkX2, MarkY2, 5 the rectangle between these corners. DataText is its label: DataTextOri puts it in
    /// its remainder by 3 at the start, middle or end of the mark, in its quotient above, on or below it.
    std::uint8_t mark_shape() const;
    void mark_shape(Checked<std::uint8_t> value) const; ///< sets it
    /// MarkX1: First x of a mark, on its x axis or in percent.
    double mark_x1() const;
    void mark_x1(Checked<double> value) const; ///< sets it
    /// MarkY1: First y of a mark, on its y axis or in percent.
    double mark_y1() const;
    void mark_y1(Checked<double> value) const; ///< sets it
    /// MarkX2: Second x of a mark; an arrow's tip.
    double mark_x2() const;
    void mark_x2(Checked<double> value) const; ///< sets it
    /// MarkY2: Second y of a mark; an arrow's tip.
    double mark_y2() const;
    void mark_y2(Checked<double> value) const; ///< sets it
    /// MarkPercent: Whether a mark's values are percent of the plot area, y from the bottom.
    bool mark_percent() const;
    void mark_percent(Checked<bool> value) const; ///< sets it
    /// MarkDragging: Whether a person may drag a mark, as a whole or by edge, corner or end; MarkMoved tells
    /// its values.
    bool mark_dragging() const;
    void mark_dragging(Checked<bool> value) const; ///< sets it
    /// PieHole: Radius of the hole in a pie (DataKind 7) in percent of its own, 0 to 95; a pie with a hole is
    /// a ring.
    float pie_hole() const;
    void pie_hole(Checked<float> value) const; ///< sets it
    /// PieStart: Degrees clockwise from the top where the first slice of a pie begins.
    float pie_start() const;
    void pie_start(Checked<float> value) const; ///< sets it
    /// PieLeft: Whether the slices of a pie follow one another counter-clockwise.
    bool pie_left() const;
    void pie_left(Checked<bool> value) const; ///< sets it
    /// PieLabels: What stands beside the slices of a pie: 0 name and percent, 1 name and value, 2 percent, 3
    /// value, 4 name, 5 nothing.
    std::uint8_t pie_labels() const;
    void pie_labels(Checked<std::uint8_t> value) const; ///< sets it
    /// PieGather: Percent of the whole; smaller slices of a pie, where there are two or more, become one. 0
    /// gathers none.
    float pie_gather() const;
    void pie_gather(Checked<float> value) const; ///< sets it
    /// PieGatherName: Name of the slice of those that PieGather has gathered.
    std::string pie_gather_name() const;
    void pie_gather_name(std::string_view value) const; ///< sets it
    /// ColorAxisIndex: Number of the colour bar that gives a heat map or contours their colours, among all
    /// axes of its graph; 0 for none.
    std::int16_t color_axis_index() const;
    void color_axis_index(Checked<std::int16_t> value) const; ///< sets it
    /// MissingColor: Colour of a heat map's cells that have no value; -1 leaves them out.
    Color missing_color() const;
    void missing_color(ColorValue value) const; ///< sets it
    /// CellValues: Writes the values of a heat map on those cells that have room for them.
    bool cell_values() const;
    void cell_values(Checked<bool> value) const; ///< sets it
    /// GridBinsX: How many cells across a heat map or contours of points have, 0 to 4096; 0 as many as suit
    /// their number.
    std::int16_t grid_bins_x() const;
    void grid_bins_x(Checked<std::int16_t> value) const; ///< sets it
    /// GridBinsY: The same upwards.
    std::int16_t grid_bins_y() const;
    void grid_bins_y(Checked<std::int16_t> value) const; ///< sets it
    /// ContourLevels: The values of contour lines as a list, 1; 2.5; 5, or one whole number of levels; empty
    /// for about eight round ones.
    std::string contour_levels() const;
    void contour_levels(std::string_view value) const; ///< sets it
    /// ContourLabels: Writes the values of contour lines along them.
    bool contour_labels() const;
    void contour_labels(Checked<bool> value) const; ///< sets it
    /// DataHide: Leaves the data set out of page and legend.
    bool hide() const;
    void hide(Checked<bool> value) const; ///< sets it
    /// ShowErrorBar: Whether points with an E have error bars: upright for a positive E, lying for a negative
    /// one.
    bool show_error_bar() const;
    void show_error_bar(Checked<bool> value) const; ///< sets it
    /// ErrorBarColor: Colour of upright error bars.
    Color error_bar_color() const;
    void error_bar_color(ColorValue value) const; ///< sets it
    /// ErrorStyle: How the errors of points are shown: 0 bars, 1 a band around the points of which each y has
    /// a finite error, 2 both.
    std::uint8_t error_style() const;
    void error_style(Checked<std::uint8_t> value) const; ///< sets it
    /// ErrorBarCap: Length of the caps of error bars in millimetres; 0 for none.
    float error_bar_cap() const;
    void error_bar_cap(Checked<float> value) const; ///< sets it
    /// ErrorBarThickness: Width of error bars in pixels at 96 to the inch, drawn as at least 1.
    std::uint8_t error_bar_thickness() const;
    void error_bar_thickness(Checked<std::uint8_t> value) const; ///< sets it
    /// ErrorBandAlpha: How opaque the band of errors is, in ErrorBarColor, from 0 to 255.
    std::uint8_t error_band_alpha() const;
    void error_band_alpha(Checked<std::uint8_t> value) const; ///< sets it
    /// AreaBase: Whether areas begin at AreaBaseValue, not where the y axis does.
    bool area_base() const;
    void area_base(Checked<bool> value) const; ///< sets it
    /// AreaBaseValue: The value at which areas begin.
    double area_base_value() const;
    void area_base_value(Checked<double> value) const; ///< sets it
    /// AreaBelowColor: Colour of an area where it lies below its base or the data set of AreaTo, cut exactly
    /// where they cross; -1 takes DataSymbolColor there too.
    Color area_below_color() const;
    void area_below_color(ColorValue value) const; ///< sets it
    /// AreaTo: Number of the data set at which the area begins, from 0, as SetSelectedData counts; it may be
    /// hidden or lie on other axes. Where only one of the two has a value there is no area. -1 for none.
    std::int16_t area_to() const;
    void area_to(Checked<std::int16_t> value) const; ///< sets it
    /// AreaStacked: 1 puts the area upon the stacked areas of the data sets before on the same axes, 2 as
    /// percent of the sum of all of them; between points values lie on the lines that join them.
    std::uint8_t area_stacked() const;
    void area_stacked(Checked<std::uint8_t> value) const; ///< sets it
    /// MathFunc: A formula in x whose curve is drawn, e.g. sin(x)/x; see expressions.md.
    std::string formula() const;
    void formula(std::string_view value) const; ///< sets it
    /// MathFuncX1: One end of the formula's curve in data values; both ends 0 mean the whole x axis.
    double formula_from() const;
    void formula_from(Checked<double> value) const; ///< sets it
    /// MathFuncX2: The other end of the formula's curve.
    double formula_to() const;
    void formula_to(Checked<double> value) const; ///< sets it
    /// BarShadowColor: Colour of the bars' shadows.
    Color bar_shadow_color() const;
    void bar_shadow_color(ColorValue value) const; ///< sets it
    /// BarShadow: Whether bars have a shadow, a millimetre to the right and down.
    bool bar_shadow() const;
    void bar_shadow(Checked<bool> value) const; ///< sets it
    /// BarHoriz: Whether bars lie, reaching to their x.
    bool bar_horiz() const;
    void bar_horiz(Checked<bool> value) const; ///< sets it
    /// Bar3D: Whether bars are shaded like cylinders, from the edge's colour to the symbol's.
    bool bar_3d() const;
    void bar_3d(Checked<bool> value) const; ///< sets it
    /// BarStacked: Whether bars stand on those of the data set before, bar by bar.
    bool bar_stacked() const;
    void bar_stacked(Checked<bool> value) const; ///< sets it
    /// BarBase: Whether bars start at BarBaseValue instead of beyond the plot area's edge.
    bool bar_base() const;
    void bar_base(Checked<bool> value) const; ///< sets it
    /// BarBaseValue: The value at which bars start.
    double bar_base_value() const;
    void bar_base_value(Checked<double> value) const; ///< sets it
    /// BarOffset: Millimetres, or with a BarWidth values of the axis, by which bars move across their length,
    /// so that sets stand side by side.
    float bar_offset() const;
    void bar_offset(Checked<float> value) const; ///< sets it
    /// BarLabels: Where bars have their values written: 0 nowhere, 1 in their middle, 2 at their end, beyond
    /// it where there is room. A label that has none is left out.
    std::uint8_t bar_labels() const;
    void bar_labels(Checked<std::uint8_t> value) const; ///< sets it
    /// BarLabelFormat: Pattern of the labels of bars, as for AxisTextLabels; empty writes as many digits as
    /// needed.
    std::string bar_label_format() const;
    void bar_label_format(std::string_view value) const; ///< sets it
    /// CandleStyle: How candles (DataKind 6) are drawn: 0 bodies from open to close with wicks to high and
    /// low, 1 bars from low to high with ticks for open and close.
    std::uint8_t candle_style() const;
    void candle_style(Checked<std::uint8_t> value) const; ///< sets it
    /// CandleRisingColor: Colour of candles that close at or above their opening.
    Color candle_rising_color() const;
    void candle_rising_color(ColorValue value) const; ///< sets it
    /// CandleFallingColor: Colour of candles that close below their opening.
    Color candle_falling_color() const;
    void candle_falling_color(ColorValue value) const; ///< sets it
    /// CandleVolumeAxis: Number of the y axis, counted from 1 among the y axes, on which the volumes of
    /// candles stand as columns in the lower third of the plot area; 0 for none.
    std::int16_t candle_volume_axis() const;
    void candle_volume_axis(Checked<std::int16_t> value) const; ///< sets it
    /// BarWidth: Width of bars in values of the axis that they stand side by side on; 0 for the millimetres
    /// of DataSymbolSize.
    double bar_width() const;
    void bar_width(Checked<double> value) const; ///< sets it
    /// DataText: A text on the plot area; lines are separated by CR LF.
    std::string text() const;
    void text(std::string_view value) const; ///< sets it
    /// DataTextX: Where the text stands along x, in data values or percent.
    double text_x() const;
    void text_x(Checked<double> value) const; ///< sets it
    /// DataTextY: Where the text stands along y, in data values or in percent from the bottom.
    double text_y() const;
    void text_y(Checked<double> value) const; ///< sets it
    /// DataTextOri: 0 to 8: its remainder by 3 aligns start, centre, end across, its quotient top, middle,
    /// bottom.
    std::uint8_t text_ori() const;
    void text_ori(Checked<std::uint8_t> value) const; ///< sets it
    /// DataTextFont: Font of the text, of character symbols and of DataID texts.
    std::string text_font() const;
    void text_font(std::string_view value) const; ///< sets it
    /// DataTextColor: Colour of the text.
    Color text_color() const;
    void text_color(ColorValue value) const; ///< sets it
    /// DataTextAngle: Angle of the text in degrees, counter-clockwise.
    std::int16_t text_angle() const;
    void text_angle(Checked<std::int16_t> value) const; ///< sets it
    /// DataTextPercent: Whether the text's place is in percent of the plot area.
    bool text_percent() const;
    void text_percent(Checked<bool> value) const; ///< sets it
};

} // namespace qv
