#include "hosts/qt/accessible_page.h"

#include "hosts/qt/guarded.h"
#include "hosts/qt/translate_input.h"
#include "qvgraph/Outline.h"
#include "qvgraph/QvGraphWidget.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QAccessible>
#include <QtWidgets/QAccessibleWidget>

#include <optional>
#include <string>
#include <vector>

namespace qv::qt {
namespace {

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
        return guarded([&] {
            ids_.reserve(index + 1);
            while (ids_.size() <= index)
                ids_.push_back(QAccessible::registerAccessibleInterface(make(ids_.size())));
            return QAccessible::accessibleInterface(ids_[index]);
        });
    }

private:
    mutable std::vector<QAccessible::Id> ids_;
};

/// A graph, or with `part` one of its axes and then data sets, looked up whenever it is asked.
class Node : public QAccessibleInterface {
public:
    Node(QvGraphWidget& widget, std::size_t graph) : widget_(widget), graph_(graph) {}
    Node(Node const& graph, std::size_t part) : widget_(graph.widget_), graph_(graph.graph_), part_(part) {}

    bool isValid() const override {
        auto const graph = outline();
        return graph && (is_graph() || part_ < graph->parts.size());
    }
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
    int childCount() const override {
        auto const graph = outline();
        return is_graph() && graph ? static_cast<int>(graph->parts.size()) : 0;
    }
    int indexOfChild(QAccessibleInterface const* child) const override {
        auto const* const node = dynamic_cast<Node const*>(child);
        return node && is_graph() && node->graph_ == graph_ && !node->is_graph()
                   ? static_cast<int>(node->part_)
                   : -1;
    }
    QString text(QAccessible::Text what) const override {
        auto const graph = outline();
        if (!graph || (!is_graph() && part_ >= graph->parts.size())) return {};
        if (what == QAccessible::Name)
            return QString::fromStdString(is_graph() ? graph->name : graph->parts[part_].name);
        if (what == QAccessible::Description || what == QAccessible::Value)
            return QString::fromStdString(is_graph() ? graph->description : graph->parts[part_].description);
        return {};
    }
    void setText(QAccessible::Text, QString const&) override {}
    QRect rect() const override { return isValid() ? on_screen(widget_, outline()->frame) : QRect(); }
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
    std::optional<GraphOutline> outline() const {
        return guarded([this] { return widget_.control().outline(static_cast<int>(graph_)); });
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
        if (what == QAccessible::Name && own.isEmpty())
            return QCoreApplication::translate("qv::qt::QvGraphWidget", "Graph page");
        if (what == QAccessible::Value)
            return guarded([this] { return QString::fromStdString(page_.control().point_read()); });
        return own;
    }

private:
    int graphs() const { return page_.control().NumGraphs(); }

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
