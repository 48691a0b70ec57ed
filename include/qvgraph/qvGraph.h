// qvGraph: the graphing control. One instance holds one page with any number of graphs, each with its axes,
// data sets, functions, texts and styles. A host makes it, resizes it, drives it through the members here and
// hears of events through an EventSink. Nothing is drawn before Refresh or RefreshGraphs is called once.
//
// Members whose failures are reported through the event ErrorMsg return normally; properties, GraphIndex,
// Version, GetAxisRange, SetTooltip, UseLook, the two input handlers and Get, Let and Call throw a qv::Fault
// instead.
// Numbers given to any member must fit its type, else the call throws fault 6 before anything is done.
#pragma once

#include "qvgraph/checked.h"
#include "qvgraph/export.h"
#include "qvgraph/handles.h"
#include "qvgraph/owned.h"
#include "qvgraph/styles.h"
#include "qvgraph/variant.h"

#include <array>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace qv {

class DrawSurface;
class qvGraph;
struct GraphOutline;
struct Look;

namespace host {
class EventSink;
class Host;
class PagePicture;
struct ChildControls;
struct Input;
} // namespace host

namespace document {
struct ControlState;
}
namespace control {
document::ControlState& state_of(qvGraph& control);
document::ControlState const& state_of(qvGraph const& control);
} // namespace control

/// A page of graphs with all its members. To be used on one thread.
class QV_EXPORT qvGraph {
public:
    /// An empty page. The host lives longer. Where memory ends it is fault 7.
    explicit qvGraph(host::Host& host);
    qvGraph(qvGraph const&) = delete;
    qvGraph& operator=(qvGraph const&) = delete;
    /// Not from inside its own events or members, but for GetGradient and GetColor while they wait.
    ~qvGraph();

    /// \name For the host that holds the control
    /// \{

    /// Events go to this sink, or nowhere when it is null. It must outlive the control or be taken back.
    void set_events(host::EventSink* events);
    /// The control's inner size has changed (also once after creation).
    void UserControl_Resize(double width_twips, double height_twips);
    /// What a person has done to the page or a scroll bar; true when the control has used it up. What event
    /// handlers throw comes out.
    bool take_input(host::Input const& input);
    /// Tells the host's handler of ErrorMsg about the exception being handled, as of a failure in a procedure
    /// of this name. For those who may let no exception through.
    void report_failure(std::string_view procedure);
    /// The page as it was last shown, on a surface of the host's make.
    DrawSurface const& picture() const;
    /// The page as its services get it, for a host that saves or copies it by itself. While it is there,
    /// nothing is drawn inverted over the page; it must go before the control does.
    Owned<host::PagePicture> page_picture();
    /// Place and state of the scroll bars, the read-out, the tooltip and the pointer, to be shown.
    host::ChildControls child_controls() const;
    /// Asks the host anew how much room scroll bars and read-out take; UserControl_Resize should follow.
    void measure_child_controls();
    /// The same for the read-out alone, whose font has changed.
    void measure_read_out();
    /// Whether memory has ended in a procedure; before `set_events` nobody else tells.
    bool memory_has_ended() const;
    /// The surfaces that the host has made, for one that comes to a screen of another density; what lies
    /// inverted over the page is erased first. UserControl_Resize should follow.
    std::array<DrawSurface*, 5> surfaces();
    /// A graph in words; none where there is no graph of this number.
    std::optional<GraphOutline> outline(int graph) const;
    /// The point that a person has gone to by keys, as it was read; empty without one.
    std::string point_read();
    /// \}

    /// \name For a menu beside the gestures
    /// What GraphAllowZoom forbids is not done; the switches of the gestures have no say here.
    /// \{

    /// Whether the right button alone, clicked at this place of the page, is a gesture of its own.
    bool takes_right_click(double X, double Y);
    /// Takes the last step of zooming back; false when there is none.
    bool undo_zoom();
    bool can_undo_zoom() const; ///< whether there is such a step
    /// Lets every axis of the current graph show its full range; false when the graph may not be zoomed.
    bool show_everything();
    bool can_show_everything(); ///< whether it may
    /// \}

    /// \name Handlers
    /// \{

    /// The handlers behind take_input, by the names under which their failures are reported: buttons and
    /// moves of the mouse on the page, twips, Button and Shift as in Input.h (of a move, Button is what is
    /// held); a scroll bar that stands at a new value, or its thumb on the way there; a double click; a key,
    /// whose KeyAscii comes back as the event's handler leaves it.
    void Picture1_MouseDown(std::uint8_t Button, std::uint8_t Shift, double X, double Y);
    /// With the buttons held.
    void Picture1_MouseMove(std::uint8_t Button, std::uint8_t Shift, double X, double Y);
    void Picture1_MouseUp(std::uint8_t Button, std::uint8_t Shift, double X, double Y); ///< a release
    void HScroll1_Change();                         ///< the x range follows the bar
    void VScroll1_Change();                         ///< the y range follows the bar
    void HScroll1_Scroll();                         ///< the same, with the thumb held
    void VScroll1_Scroll();                         ///< the same, with the thumb held
    void Picture1_DblClick();                       ///< of the left button
    void Picture1_KeyPress(std::int16_t& KeyAscii); ///< one of UTF-16
    /// \}

    /// \name Identity, lifecycle
    /// \{
    std::string Version() const; ///< the version's text
    /// Discards all graphs; the page fill and AxisMarksInFront go back to their defaults.
    void Reset();
    /// \}

    /// \name Handles
    /// Graphs with their axes and data sets as values of their own (handles.h), beside the members below,
    /// which act on what is selected. They throw what fails.
    /// \{

    /// Lays a new graph over the others, with an x and a y axis. The current graph stays, if there is one.
    GraphHandle graph(std::string_view name, GraphOptions const& options = {});
    std::vector<GraphHandle> graphs(); ///< all, in the order of their numbers
    /// The first graph of this name; an empty handle where there is none.
    GraphHandle find_graph(std::string_view name);
    /// \}

    /// \name Graphs, axes and data sets
    /// Graphs, axes and data sets count from 0. What they are set on is the current graph, its selected axis
    /// and its selected data set.
    /// \{

    /// Appends a graph and makes it current. An axis with different ends is fixed, else automatic.
    void NewGraph(std::string_view GraphName, double x1 = 0, double x2 = 0, double y1 = 0, double y2 = 0);
    /// Appends an axis to the current graph, for data sets and points to come; its ends as in NewGraph.
    /// Members of axes act on it once it is selected by SelectXaxis.
    void NewXAxis(std::string_view AxisName, double a1 = 0, double a2 = 0);
    /// The same for a y axis.
    void NewYAxis(std::string_view AxisName, double y1 = 0, double y2 = 0);
    /// Brings a graph to the front and makes it current.
    void SetSelectedGraph(Checked<std::int16_t> GraphIndex);
    std::int16_t GetSelectedGraph() const; ///< the current graph's number
    /// Entries 1 to NumGraphs are the names.
    void GetGraphNames(TextList& GraphTitles, std::int16_t& NumGraphs);
    std::string GraphTitle(); ///< the current graph's name
    /// Selects the Index-th x (y) axis counting from 1 and returns its number among all axes, 0 when there
    /// is none.
    std::int16_t SelectXaxis(Checked<std::int16_t> Index = 1);
    std::int16_t SelectYaxis(Checked<std::int16_t> Index = 1); ///< the same for a y axis
    /// Returns 0 for an x axis, 1 for a y axis, -1 when there is no such axis.
    std::int16_t SetSelectedAxis(Checked<std::int16_t> AxisIndex);
    /// XY is 0 for the x axis, 1 for the y axis; -1 for anything else.
    std::int16_t GetSelectedAxisIndex(Checked<std::int16_t> XY);
    /// Entries 0 to NumAxes - 1 are the titles; an empty one follows.
    void GetAxisNames(TextList& AxisNames, std::int16_t& NumAxes);
    void SetSelectedData(Checked<std::int16_t> DataIndex); ///< where there is no such number, nothing changes
    void GetSelectedData(std::int16_t& DataIndex);         ///< receives the number
    /// Entries 0 to NumDataSets - 1 are the legends; an empty one follows.
    void GetDataSetNames(TextList& DataSetNames, std::int16_t& NumDataSets);
    /// Whether values under the pointer are read out over the current graph.
    void SetShowXYcoords(Checked<bool> TF);
    /// \}

    /// \name Data entry
    /// \{

    /// Appends a data set to the current graph, on its selected axes, and selects it. Colour and symbol go on
    /// from the one before.
    void NewDataSet(std::string_view Legend, Checked<bool> InLegendTable = true);
    /// DataSet counts from 1; 0 means the newest one. E is half the length of the error bar.
    void AddDataPoint(double X, double Y, double E = 0, Checked<std::int16_t> DataSet = 0,
                      std::string_view DataID = {});
    /// Many points at once: columns of equal length, E may be left out. GraphScaleChanged comes at most once.
    void AddDataPoints(std::span<double const> X, std::span<double const> Y, std::span<double const> E = {},
                       Checked<std::int16_t> DataSet = 0);
    /// The same with columns beside x and y, whose meaning is that of the data set's DataKind: for points the
    /// lengths of their error bars below, above, left and right of them. Columns left out say nothing.
    void AddDataColumns(std::span<double const> X, std::span<double const> Y, std::span<double const> Extra1,
                        std::span<double const> Extra2 = {}, std::span<double const> Extra3 = {},
                        std::span<double const> Extra4 = {}, Checked<std::int16_t> DataSet = 0);
    /// Forgets the Count oldest points of a data set, numbered as in AddDataPoint; no axis changes.
    void DropDataPoints(Checked<std::int32_t> Count, Checked<std::int16_t> DataSet = 0);
    /// The automatic axes of the current graph show what its data sets show now, and Margin of that range
    /// more at each end, but at the base of bars. Fault 5 for a Margin that is negative or not finite.
    void FitAxes(double Margin = 0.05);
    /// Makes the newest data set a function of x; Fromx = Tox = 0 draws it along the whole x axis.
    void AddMathFunc(std::string_view MathFunc, double Fromx = 0, double Tox = 0);
    /// Defines a function, such as "f(a) = a^2", for the functions of all data sets; it stays until the
    /// control goes. A text that is none is reported through ErrorMsg.
    void DefineFunction(std::string_view Text);
    /// What is wrong with a formula in x, as `render_error` writes it: the formula, a caret under the place,
    /// the reason. Empty for nothing. It knows the functions of DefineFunction and no variable but x; nothing
    /// is drawn.
    std::string CheckFormula(std::string_view MathFunc);
    /// Gives the newest data set a text at a place: values on its axes or, with TextPercent, percent of the
    /// plot area from its left bottom corner. TextOri is 0 to 8: its remainder by 3 aligns start, centre, end
    /// across, its quotient top, middle, bottom. The angle is degrees, counter-clockwise.
    void AddText(std::string_view Text, double TextX, double TextY, Checked<std::uint8_t> TextOri,
                 std::string_view TextFont, ColorValue TextColor, Checked<std::int16_t> TextAngle,
                 Checked<bool> TextPercent);
    /// \}

    /// \name Other settings
    /// \{

    /// The ends of the range that the selected axis shows.
    void GetAxisRange(double& a1, double& a2) const;
    /// Puts the selected axis's ticks at these values, where even divisions would not do (months have
    /// unequal lengths); without major ones the axis is divided evenly again.
    void SetAxisTicks(std::span<double const> Major, std::span<double const> Minor = {});
    /// Gives the selected data set, a histogram, these edges between its bins, finite and rising, fault 5
    /// else; without edges HistogramBinWidth and HistogramBins decide again.
    void SetHistogramEdges(std::span<double const> Edges);
    /// Of the page; while it is empty, the point under the pointer is named.
    void SetTooltip(std::string_view Tooltip);
    /// 0 switches the cross-hair off, n on with style n - 1.
    void SetCrossHair(Checked<std::int16_t> Style);
    /// \}

    /// \name Looks
    /// \{

    /// Gives the page and all its graphs, there and to come, a look: "light", "dark", "print" (black on
    /// white, told apart by dashes and symbols) or "classic". What the host has set by itself, before or
    /// after, stays. Fault 5 for an unknown name. LookName tells which look there is.
    void UseLook(std::string_view Name);
    /// The same with a look of the host's own (looks.h). Fault 438, 13 or 6 for a value that is none of a
    /// property's; then nothing has changed.
    void UseLook(Look const& Values);
    /// \}

    /// \name Drawing
    /// \{
    void Refresh();             ///< draws the whole page and shows it
    void RefreshCurrentGraph(); ///< draws the current graph over the kept picture of the others
    /// Redraws all graphs (WhichIndex < 0) or one over the kept picture of the others.
    void RefreshGraphs(Checked<std::int16_t> WhichIndex, Checked<bool> LegndOnPic1);
    /// \}

    /// \name Out of the page
    /// The picture as it was last shown; nothing is redrawn but for .svg and .pdf files.
    /// \{

    /// Prints the picture on one sheet of the default printer, fitted inside margins of one inch.
    void PrintImage(Checked<bool> Landscape = false);
    /// Writes the picture to a file, as the name's ending tells: .png; .svg and .pdf with shapes and text
    /// instead of pixels; any other name a bitmap. What a file of that name held stays when writing fails.
    void SaveImage(std::string_view Filename);
    /// Puts the picture on the clipboard in place of what is there.
    void CopyToClipboard();
    /// \}

    /// \name Asking a person
    /// Both show the one gradient dialog of the process, which keeps what was left in it, and return when it
    /// is hidden. -1 is the colour after a Cancel; given to a style method it leaves the colour as it is.
    /// \{

    /// A fill, in the order of the style methods. The colours are the base colours, before shading.
    void GetGradient(Color& QvColor1, Color& QvColor2, float& gAngle, float& gShift, std::int16_t& gStyle);
    /// The first colour of a fill.
    void GetColor(Color& QvColor1);
    /// \}

#include "qvgraph/members.inc"

    /// \name Members by name
    /// Names are found whatever their case. An unknown name is fault 438, a text where a number belongs (or
    /// the reverse) 13, a wrong number of arguments 450.
    /// \{
    Variant Get(std::string_view property) const;              ///< a property's value
    void Let(std::string_view property, Variant const& value); ///< sets a property
    /// Arguments go by position; an empty one, like an omitted one, takes the parameter's default. What a
    /// method returns through its parameters is written back into `arguments`.
    Variant Call(std::string_view method, std::span<Variant> arguments);
    /// The same; what is returned through parameters is lost.
    Variant Call(std::string_view method, std::initializer_list<Variant> arguments = {});
    /// \}

private:
    friend document::ControlState& control::state_of(qvGraph& control);
    friend document::ControlState const& control::state_of(qvGraph const& control);

    Owned<document::ControlState> state_;
};

} // namespace qv
