#include "qvgraph/qvGraph.h"

#include "control/color_requests.h"
#include "control/data_entry.h"
#include "control/document.h"
#include "control/lifecycle.h"
#include "control/looks.h"
#include "control/members_by_name.h"
#include "control/point_entry.h"
#include "control/settings.h"
#include "control/state_of.h"
#include "control/styles.h"
#include "control/take_input.h"
#include "document/trap.h"
#include "interact/hit_test.h"
#include "interact/mouse.h"
#include "interact/navigation.h"
#include "interact/outline.h"
#include "interact/page_output.h"
#include "interact/scroll_handlers.h"
#include "interact/zoom.h"
#include "render/function_curve.h"
#include "render/graph_ranges.h"
#include "render/page_marks.h"
#include "render/pipeline.h"

namespace qv {

document::ControlState& control::state_of(qvGraph& control) {
    return *control.state_;
}

document::ControlState const& control::state_of(qvGraph const& control) {
    return *control.state_;
}

qvGraph::qvGraph(host::Host& host) : state_(new document::ControlState(host)) {
    control::UserControl_Initialize(*state_);
}

qvGraph::~qvGraph() {
    control::withdraw_requests(*state_);
}

void qvGraph::set_events(host::EventSink* events) {
    state_->events = events ? events : &state_->silent;
}

void qvGraph::UserControl_Resize(double width_twips, double height_twips) {
    control::UserControl_Resize(*state_, width_twips, height_twips);
}

bool qvGraph::take_input(host::Input const& input) {
    return control::take_input(*state_, input);
}

void qvGraph::report_failure(std::string_view procedure) {
    document::ReportError(*state_, procedure, std::current_exception());
}

DrawSurface const& qvGraph::picture() const {
    return *state_->Picture1;
}

Owned<host::PagePicture> qvGraph::page_picture() {
    return Owned<host::PagePicture>(interact::shown_page(*state_).release());
}

host::ChildControls qvGraph::child_controls() const {
    return {state_->HScroll1, state_->VScroll1, state_->Label1, state_->MousePointer,
            state_->shown_tooltip()};
}

void qvGraph::measure_child_controls() {
    control::measure_child_controls(*state_);
    control::measure_read_out(*state_);
}

void qvGraph::measure_read_out() {
    control::measure_read_out(*state_);
}

bool qvGraph::memory_has_ended() const {
    return state_->memory_has_ended;
}

std::array<DrawSurface*, 5> qvGraph::surfaces() {
    render::erase_marks(*state_); // at the density at which they were drawn
    return {state_->Picture1.get(), state_->GraphImage.get(), state_->Picture2.get(),
            state_->ScratchPic1.get(), state_->ScratchPic2.get()};
}

std::optional<GraphOutline> qvGraph::outline(int graph) const {
    return interact::outline(*state_, graph);
}

std::string qvGraph::point_read() {
    return interact::point_read(*state_);
}

bool qvGraph::takes_right_click(double X, double Y) {
    return interact::takes_right_click(*state_, {X, Y});
}

bool qvGraph::undo_zoom() {
    bool done = false;
    document::trapped(*state_, "undo_zoom", [&] { done = interact::undo_zoom(*state_); });
    return done;
}

bool qvGraph::can_undo_zoom() const {
    return !state_->zoom_history.undo.empty();
}

bool qvGraph::show_everything() {
    bool done = false;
    document::trapped(*state_, "show_everything", [&] { done = interact::show_full_range(*state_); });
    return done;
}

bool qvGraph::can_show_everything() {
    return interact::zoomable_graph(*state_) != nullptr;
}

void qvGraph::Picture1_MouseDown(std::uint8_t Button, std::uint8_t Shift, double X, double Y) {
    interact::Picture1_MouseDown(*state_, Button, Shift, {X, Y});
}

void qvGraph::Picture1_MouseMove(std::uint8_t Button, std::uint8_t Shift, double X, double Y) {
    interact::Picture1_MouseMove(*state_, Button, Shift, {X, Y});
}

void qvGraph::Picture1_MouseUp(std::uint8_t Button, std::uint8_t Shift, double X, double Y) {
    interact::Picture1_MouseUp(*state_, Button, Shift, {X, Y});
}

void qvGraph::HScroll1_Change() {
    interact::HScroll1_Change(*state_);
}

void qvGraph::VScroll1_Change() {
    interact::VScroll1_Change(*state_);
}

void qvGraph::HScroll1_Scroll() {
    interact::HScroll1_Scroll(*state_);
}

void qvGraph::VScroll1_Scroll() {
    interact::VScroll1_Scroll(*state_);
}

void qvGraph::Picture1_DblClick() {
    control::Picture1_DblClick(*state_);
}

void qvGraph::Picture1_KeyPress(std::int16_t& KeyAscii) {
    control::Picture1_KeyPress(*state_, KeyAscii);
}

std::string qvGraph::Version() const {
    return std::string(control::version);
}

void qvGraph::Reset() {
    control::Reset(*state_);
}

void qvGraph::NewGraph(std::string_view GraphName, double x1, double x2, double y1, double y2) {
    control::NewGraph(*state_, GraphName, {x1, x2, y1, y2});
}

void qvGraph::NewXAxis(std::string_view AxisName, double a1, double a2) {
    control::NewXAxis(*state_, AxisName, a1, a2);
}

void qvGraph::NewYAxis(std::string_view AxisName, double y1, double y2) {
    control::NewYAxis(*state_, AxisName, y1, y2);
}

void qvGraph::SetSelectedGraph(Checked<std::int16_t> GraphIndex) {
    control::SetSelectedGraph(*state_, GraphIndex);
}

std::int16_t qvGraph::GetSelectedGraph() const {
    return state_->CurrentGraph;
}

void qvGraph::GetGraphNames(TextList& GraphTitles, std::int16_t& NumGraphs) {
    control::GetGraphNames(*state_, GraphTitles, NumGraphs);
}

std::string qvGraph::GraphTitle() {
    return control::GraphTitle(*state_);
}

std::int16_t qvGraph::SelectXaxis(Checked<std::int16_t> Index) {
    return control::SelectXaxis(*state_, Index);
}

std::int16_t qvGraph::SelectYaxis(Checked<std::int16_t> Index) {
    return control::SelectYaxis(*state_, Index);
}

std::int16_t qvGraph::SetSelectedAxis(Checked<std::int16_t> AxisIndex) {
    return control::SetSelectedAxis(*state_, AxisIndex);
}

std::int16_t qvGraph::GetSelectedAxisIndex(Checked<std::int16_t> XY) {
    return control::GetSelectedAxisIndex(*state_, XY);
}

void qvGraph::GetAxisNames(TextList& AxisNames, std::int16_t& NumAxes) {
    control::GetAxisNames(*state_, AxisNames, NumAxes);
}

void qvGraph::SetSelectedData(Checked<std::int16_t> DataIndex) {
    control::SetSelectedData(*state_, DataIndex);
}

void qvGraph::GetSelectedData(std::int16_t& DataIndex) {
    control::GetSelectedData(*state_, DataIndex);
}

void qvGraph::GetDataSetNames(TextList& DataSetNames, std::int16_t& NumDataSets) {
    control::GetDataSetNames(*state_, DataSetNames, NumDataSets);
}

void qvGraph::SetShowXYcoords(Checked<bool> TF) {
    control::SetShowXYcoords(*state_, TF);
}

void qvGraph::NewDataSet(std::string_view Legend, Checked<bool> InLegendTable) {
    control::NewDataSet(*state_, Legend, InLegendTable);
}

void qvGraph::AddDataPoint(double X, double Y, double E, Checked<std::int16_t> DataSet,
                           std::string_view DataID) {
    control::AddDataPoint(*state_, X, Y, E, DataSet, DataID);
}

void qvGraph::AddDataPoints(std::span<double const> X, std::span<double const> Y, std::span<double const> E,
                            Checked<std::int16_t> DataSet) {
    control::AddDataPoints(*state_, {X, Y, E, {}}, DataSet);
}

void qvGraph::AddDataColumns(std::span<double const> X, std::span<double const> Y,
                             std::span<double const> Extra1, std::span<double const> Extra2,
                             std::span<double const> Extra3, std::span<double const> Extra4,
                             Checked<std::int16_t> DataSet) {
    control::AddDataPoints(*state_, {X, Y, {}, {Extra1, Extra2, Extra3, Extra4}}, DataSet);
}

void qvGraph::DropDataPoints(Checked<std::int32_t> Count, Checked<std::int16_t> DataSet) {
    control::DropDataPoints(*state_, Count, DataSet);
}

void qvGraph::FitAxes(double Margin) {
    render::FitAxes(*state_, Margin);
}

void qvGraph::AddMathFunc(std::string_view MathFunc, double Fromx, double Tox) {
    control::AddMathFunc(*state_, MathFunc, Fromx, Tox);
}

void qvGraph::DefineFunction(std::string_view Text) {
    render::DefineFunction(*state_, Text);
}

std::string qvGraph::CheckFormula(std::string_view MathFunc) {
    return render::CheckFormula(*state_, MathFunc);
}

void qvGraph::AddText(std::string_view Text, double TextX, double TextY, Checked<std::uint8_t> TextOri,
                      std::string_view TextFont, ColorValue TextColor, Checked<std::int16_t> TextAngle,
                      Checked<bool> TextPercent) {
    control::AddText(*state_, {std::string(Text), TextX, TextY, TextOri, std::string(TextFont), TextColor,
                               TextAngle, TextPercent});
}

#define QV_STYLE(method, target)                                                                             \
    void qvGraph::method(method##Arguments& arguments) {                                                     \
        control::method(*state_, arguments);                                                                 \
    }                                                                                                        \
    void qvGraph::method(method##Arguments const& arguments) {                                               \
        method##Arguments copy = arguments;                                                                  \
        control::method(*state_, copy);                                                                      \
    }
#define QV_PARAMETER(method, name, kind_, default_, rule, property_)
#define QV_STYLE_END(method, then)
#include "control/styles.def"

void qvGraph::UseLook(std::string_view Name) {
    control::UseLook(*state_, Name);
}

void qvGraph::UseLook(Look const& Values) {
    control::UseLook(*state_, Values);
}

void qvGraph::GetAxisRange(double& a1, double& a2) const {
    control::GetAxisRange(*state_, a1, a2);
}

void qvGraph::SetAxisTicks(std::span<double const> Major, std::span<double const> Minor) {
    control::SetAxisTicks(*state_, Major, Minor);
}

void qvGraph::SetHistogramEdges(std::span<double const> Edges) {
    control::SetHistogramEdges(*state_, Edges);
}

void qvGraph::SetTooltip(std::string_view Tooltip) {
    control::SetTooltip(*state_, Tooltip);
}

void qvGraph::SetCrossHair(Checked<std::int16_t> Style) {
    control::SetCrossHair(*state_, Style);
}

void qvGraph::Refresh() {
    render::Refresh(*state_);
}

void qvGraph::RefreshCurrentGraph() {
    render::RefreshCurrentGraph(*state_);
}

void qvGraph::RefreshGraphs(Checked<std::int16_t> WhichIndex, Checked<bool> LegndOnPic1) {
    render::RefreshGraphs(*state_, WhichIndex, LegndOnPic1);
}

void qvGraph::PrintImage(Checked<bool> Landscape) {
    interact::PrintImage(*state_, Landscape);
}

void qvGraph::SaveImage(std::string_view Filename) {
    interact::SaveImage(*state_, std::string(Filename));
}

void qvGraph::CopyToClipboard() {
    interact::CopyToClipboard(*state_);
}

void qvGraph::GetGradient(Color& QvColor1, Color& QvColor2, float& gAngle, float& gShift,
                          std::int16_t& gStyle) {
    control::GetGradient(*state_, QvColor1, QvColor2, gAngle, gShift, gStyle);
}

void qvGraph::GetColor(Color& QvColor1) {
    control::GetColor(*state_, QvColor1);
}

Variant qvGraph::Get(std::string_view property) const {
    return control::get_property(*this, property);
}

void qvGraph::Let(std::string_view property, Variant const& value) {
    control::let_property(*this, property, value);
}

Variant qvGraph::Call(std::string_view method, std::span<Variant> arguments) {
    return control::call_method(*this, method, arguments);
}

Variant qvGraph::Call(std::string_view method, std::initializer_list<Variant> arguments) {
    std::vector<Variant> copies(arguments);
    return control::call_method(*this, method, copies);
}

} // namespace qv
