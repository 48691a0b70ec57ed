#include "hosts/qt/accessible_page.h"

#include "document/selection.h"
#include "interact/nearest_point.h"
#include "interact/read_out.h"
#include "qvgraph/QvGraphWidget.h"
#include "hosts/qt/translate_input.h"
#include "render/plot_geometry.h"

#include <QtGui/QAccessible>
#include <QtWidgets/QAccessibleWidget>

#include <cmath>
#include <string>
#include <vector>

namespace qv::qt {
namespace {

using document::Axis;
using document::AxisKind;
using document::DataSet;
using document::Graph;

std::string range_text(Axis const& axis) {
    return interact::coordinate_text(axis, axis.AxisValue1) + " to "
           + interact::coordinate_text(axis, axis.AxisValue2) + (axis.AxisLog ? ", logarithmic" : "")
           + (axis.AxisReverse ? ", reversed" : "");
}

/// Extents of the points that can be drawn. Where points were dropped, the first block knows too much.
struct Extents {
    document::Extent x, y;
};
Extents extents_of(document::PointStore const& points) {
    Extents extents;
    bool first = true;
    for (document::PointBlock const& block : points.blocks()) {
        for (std::size_t i = 0; first && i < block.size(); ++i) {
            if (!std::isfinite(block.x()[i]) || !std::isfinite(block.y()[i])) continue;
            extents.x.include(block.x()[i]);
            extents.y.include(block.y()[i]);
        }
        if (!first && !block.x_extent().empty()) {
            extents.x.include(block.x_extent().low), extents.x.include(block.x_extent().high);
            extents.y.include(block.y_extent().low), extents.y.include(block.y_extent().high);
        }
        first = false;
    }
    return extents;
}

std::string data_text(Graph const& graph, DataSet const& set) {
    std::string text = set.DataHide ? "hidden; " : "";
    if (!set.MathFunc.empty()) text += "function " + set.MathFunc + "; ";
    text += std::to_string(set.points.size()) + (set.points.size() == 1 ? " point" : " points");
    auto const [x, y] = extents_of(set.points);
    if (x.empty()) return text;
    Axis const& x_axis = at(graph.Axes, set.xAxisIndex);
    Axis const& y_axis = at(graph.Axes, set.yAxisIndex);
    auto const from_to = [](Axis const& axis, document::Extent const& extent) {
        return interact::coordinate_text(axis, extent.low) + " to "
               + interact::coordinate_text(axis, extent.high);
    };
    return text + "; x " + from_to(x_axis, x) + "; y " + from_to(y_axis, y);
}

QRect on_screen(QvGraphWidget& widget, Box const& box) {
    const QRectF units(box.left / twips_per_unit, box.top / twips_per_unit, box.width / twips_per_unit,
                       box.height / twips_per_unit);
    return {widget.page_view().mapToGlobal(units.topLeft().toPoint()), units.size().toSize()};
}

/// Child interfaces that are made when asked for and go with their parent.
class Children {
public:
    Children() = default;
    Children(Children const&) = delete;
    Children& operator=(Children const&) = delete;
    ~Children() {
        for (QAccessible::Id const id : ids_) QAccessible::deleteAccessibleInterface(id);
    }
    template <class Make>
    QAccessibleInterface* child(std::size_t index, Make make) const {
        while (ids_.size() <= index)
            ids_.push_back(QAccessible::registerAccessibleInterface(make(ids_.size())));
        return QAccessible::accessibleInterface(ids_[index]);
    }

private:
    mutable std::vector<QAccessible::Id> ids_;
};

/// A graph, or with `part` one of its axes and then data sets, looked up whenever it is asked.
class Node : public QAccessibleInterface {
public:
    Node(QvGraphWidget& widget, std::size_t graph) : widget_(widget), graph_(graph) {}
    Node(Node const& graph, std::size_t part) : widget_(graph.widget_), graph_(graph.graph_), part_(part) {}

    bool isValid() const override { return graph() && (is_graph() || part_ < parts()); }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* parent() const override {
        QAccessibleInterface* const page = QAccessible::queryAccessibleInterface(&widget_);
        return is_graph() || !page ? page : page->child(static_cast<int>(graph_));
    }
    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount()) return nullptr;
        return children_.child(static_cast<std::size_t>(index),
                               [&](std::size_t part) { return new Node(*this, part); });
    }
    int childCount() const override { return is_graph() && graph() ? static_cast<int>(parts()) : 0; }
    int indexOfChild(QAccessibleInterface const* child) const override {
        auto const* const node = dynamic_cast<Node const*>(child);
        return node && is_graph() && node->graph_ == graph_ && !node->is_graph()
                   ? static_cast<int>(node->part_)
                   : -1;
    }
    QString text(QAccessible::Text what) const override {
        if (!isValid()) return {};
        if (what == QAccessible::Name) return QString::fromStdString(name());
        if (what == QAccessible::Description || what == QAccessible::Value)
            return QString::fromStdString(description());
        return {};
    }
    void setText(QAccessible::Text, QString const&) override {}
    QRect rect() const override {
        return isValid() ? on_screen(widget_, render::frame_box(*graph())) : QRect();
    }
    QAccessible::Role role() const override {
        return is_graph() ? QAccessible::Grouping : QAccessible::StaticText;
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.readOnly = true;
        state.invalid = !isValid();
        return state;
    }

private:
    static constexpr std::size_t whole_graph = static_cast<std::size_t>(-1);

    bool is_graph() const { return part_ == whole_graph; }
    Graph const* graph() const {
        auto const& graphs = widget_.control().state().Graphs;
        return graph_ < graphs.size() ? graphs[graph_].get() : nullptr;
    }
    std::size_t parts() const { return graph()->Axes.size() + graph()->DataSets.size(); }
    Axis const* axis() const { return part_ < graph()->Axes.size() ? &graph()->Axes[part_] : nullptr; }
    DataSet const& data_set() const { return graph()->DataSets[part_ - graph()->Axes.size()]; }

    std::string name() const {
        if (is_graph()) {
            std::string const& title = widget_.control().state().GraphTitles[graph_];
            return title.empty() ? "Graph " + std::to_string(graph_ + 1) : title;
        }
        if (Axis const* const found = axis())
            return (found->AxisXY == AxisKind::X ? "x axis " : "y axis ") + found->AxisTitle;
        std::string const& legend = data_set().DataLegend;
        return legend.empty() ? "Data set " + std::to_string(part_ - graph()->Axes.size() + 1) : legend;
    }
    std::string description() const {
        if (is_graph())
            return std::to_string(graph()->Axes.size()) + " axes, " + std::to_string(graph()->DataSets.size())
                   + " data sets";
        return axis() ? range_text(*axis()) : data_text(*graph(), data_set());
    }

    QvGraphWidget& widget_;
    std::size_t graph_;
    std::size_t part_ = whole_graph;
    Children children_;
};

/// The page; its graphs come before the widget's own children.
class AccessiblePage : public QAccessibleWidget {
public:
    explicit AccessiblePage(QvGraphWidget& widget)
        : QAccessibleWidget(&widget, QAccessible::Chart), page_(widget) {}

    int childCount() const override { return graphs() + QAccessibleWidget::childCount(); }
    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= graphs()) return QAccessibleWidget::child(index - graphs());
        return children_.child(static_cast<std::size_t>(index),
                               [&](std::size_t graph) { return new Node(page_, graph); });
    }
    int indexOfChild(QAccessibleInterface const* child) const override {
        for (int i = 0; i < graphs(); ++i)
            if (this->child(i) == child) return i;
        int const index = QAccessibleWidget::indexOfChild(child);
        return index < 0 ? index : index + graphs();
    }
    QString text(QAccessible::Text what) const override {
        QString const own = QAccessibleWidget::text(what);
        if (what == QAccessible::Name && own.isEmpty()) return QStringLiteral("Graph page");
        if (what == QAccessible::Value) return QString::fromStdString(point_read());
        return own;
    }

private:
    int graphs() const { return static_cast<int>(page_.control().state().Graphs.size()); }
    std::string point_read() const {
        document::ControlState& state = page_.control().state();
        auto const& read = state.read_point;
        if (!read || read->graph >= graphs()) return {};
        Graph const& graph = *state.Graphs[static_cast<std::size_t>(read->graph)];
        if (read->data_set >= graph.NumDataSets()) return {};
        document::PointStore const& points = at(graph.DataSets, read->data_set).points;
        std::size_t const point = read->arrival - points.dropped(); // of a dropped one it is too large
        return point < points.size() ? interact::point_name(state, read->graph, {read->data_set, point, 0})
                                     : std::string();
    }

    QvGraphWidget& page_;
    Children children_;
};

QAccessibleInterface* make_accessible(QString const& class_name, QObject* object) {
    if (class_name != QLatin1String(QvGraphWidget::staticMetaObject.className())) return nullptr;
    return new AccessiblePage(*static_cast<QvGraphWidget*>(object));
}

} // namespace

void make_pages_accessible() {
    QAccessible::installFactory(make_accessible); // once, however often it is asked for
}

} // namespace qv::qt
