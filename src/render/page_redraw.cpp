#include "render/page_redraw.h"

#include "qvgraph/fault.h"
#include "render/pipeline.h"

#include <utility>

namespace qv::render {
namespace {

using document::ControlState;
using document::DataSet;
using document::Graph;

class SurfacesOnly : public host::Host {
public:
    explicit SurfacesOnly(host::SurfaceMaker const& make_surface) : make_surface_(make_surface) {}
    std::unique_ptr<DrawSurface> make_surface() override { return make_surface_(); }

private:
    host::SurfaceMaker const& make_surface_;
};

void copy_settings(ControlState const& from, ControlState& to) {
    static_cast<document::PageSettings&>(to) = from;
    to.CurrentGraph = from.CurrentGraph;
    to.GraphTitles = from.GraphTitles;
    to.GraphOrder = from.GraphOrder;
    to.MaxZoomFactor = from.MaxZoomFactor;
}

std::unique_ptr<Graph> without_points(Graph const& graph) {
    auto copy = std::make_unique<Graph>();
    static_cast<document::GraphSettings&>(*copy) = graph;
    for (document::Axis const& axis : graph.Axes) copy->Axes.push_back(axis);
    for (DataSet const& set : graph.DataSets)
        static_cast<document::DataSetSettings&>(copy->DataSets.emplace_back()) = set;
    return copy;
}

void give_surfaces(ControlState const& like, ControlState& state) {
    for (auto const member : {&ControlState::Picture1, &ControlState::GraphImage, &ControlState::Picture2,
                              &ControlState::ScratchPic1, &ControlState::ScratchPic2}) {
        state.*member = state.host->make_surface();
        (state.*member)->state.BackColor = (like.*member)->state.BackColor;
    }
    for (auto const member : {&ControlState::Picture1, &ControlState::GraphImage, &ControlState::Picture2})
        (state.*member)->Move((like.*member)->Width(), (like.*member)->Height());
}

/// What is too large or too particular to copy lies with the borrower until the loan ends.
class Loan {
public:
    Loan(ControlState& owner, ControlState& borrower) : owner_(owner), borrower_(borrower) { exchange(); }
    ~Loan() { exchange(); }
    Loan(Loan const&) = delete;
    Loan& operator=(Loan const&) = delete;

private:
    void exchange() {
        std::swap(owner_.Evaluator, borrower_.Evaluator);
        for (std::size_t i = 0; i < owner_.Graphs.size(); ++i)
            for (std::size_t j = 0; j < owner_.Graphs[i]->DataSets.size(); ++j)
                exchange(owner_.Graphs[i]->DataSets[j], borrower_.Graphs[i]->DataSets[j]);
    }
    static void exchange(DataSet& one, DataSet& other) {
        std::swap(one.points, other.points);
        std::swap(one.curve, other.curve);
        std::swap(one.derived, other.derived);
    }

    ControlState& owner_;
    ControlState& borrower_;
};

} // namespace

std::unique_ptr<DrawSurface> redraw_page(ControlState& state, host::SurfaceMaker const& make_surface) {
    SurfacesOnly host(make_surface);
    ControlState copy(host);
    copy.keeps_drawn_ranges = true;
    copy_settings(state, copy);
    for (auto const& graph : state.Graphs) copy.Graphs.push_back(without_points(*graph));
    give_surfaces(state, copy);
    const Loan loan(state, copy);
    RefreshGraphs(copy, -1, true);
    // Nobody hears the copy's events, and half a page must not pass for one.
    if (copy.memory_has_ended) raise_fault(FaultNumber::OutOfMemory);
    return std::move(copy.Picture1);
}

} // namespace qv::render
