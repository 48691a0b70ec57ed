#include "hosts/qt/designer/DesignerPlugin.h"

#include "hosts/qt/guarded.h"
#include "qvgraph/QvGraphWidget.h"

#include <QtGui/QIcon>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QPixmap>

#include <cmath>
#include <memory>

namespace qv::qt {
namespace {

/// Axes and a curve in a square of 24 units.
void paint_icon(QPainter& painter) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(QRectF(1, 1, 22, 22), QColor(250, 250, 250)); // seen on light and dark grounds
    painter.setPen(QPen(QColor(90, 90, 90), 1.6));
    painter.drawPolyline(QPolygonF({{4.5, 3.5}, {4.5, 19.5}, {20.5, 19.5}}));
    QPainterPath curve({6, 16});
    curve.cubicTo({10, 15}, {10.5, 5}, {13, 6.5});
    curve.cubicTo({15, 7.5}, {15.5, 13}, {20, 9});
    painter.setPen(QPen(QColor(0, 95, 185), 2.2, Qt::SolidLine, Qt::RoundCap));
    painter.drawPath(curve);
}

/// A curve and measurements; their colours are left to the look.
void draw_sample(qvGraph& page) {
    constexpr int points = 40;
    page.NewGraph("");
    page.NewDataSet("sample line");
    page.DataLineStyle(1);
    page.DataSymbol(0);
    for (int i = 0; i <= points; ++i) page.AddDataPoint(i / 4.0, 5 + 4 * std::sin(i / 6.0));
    page.NewDataSet("sample points");
    page.DataLineStyle(0);
    page.DataSymbol(3);
    for (int i = 0; i <= points; i += 4)
        page.AddDataPoint(i / 4.0, 5 + 3 * std::cos(i / 7.0) + 0.4 * std::sin(3.0 * i));
    page.Refresh();
}

} // namespace

QString DesignerPlugin::name() const {
    return QStringLiteral("qv::qt::QvGraphWidget");
}

QString DesignerPlugin::group() const {
    return QStringLiteral("qvGraph");
}

QString DesignerPlugin::toolTip() const {
    return QStringLiteral("A page of graphs");
}

QString DesignerPlugin::whatsThis() const {
    return QStringLiteral(
        "A page of graphs with axes, data and legends, which a person zooms, moves and reads. What is "
        "shown here is a sample.");
}

QString DesignerPlugin::includeFile() const {
    return QStringLiteral("qvgraph/QvGraphWidget.h");
}

QIcon DesignerPlugin::icon() const {
    constexpr double units = 24;
    QIcon icon;
    for (int const size : {16, 22, 24, 32, 48}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.scale(size / units, size / units);
        paint_icon(painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

QWidget* DesignerPlugin::createWidget(QWidget* parent) {
    return guarded([&]() -> QWidget* {
        auto widget = std::make_unique<QvGraphWidget>(parent);
        if (designs_) draw_sample(widget->control());
        return widget.release();
    });
}

QString DesignerPlugin::domXml() const {
    return QStringLiteral(R"(
<ui language="c++" displayname="Graph page">
  <widget class="qv::qt::QvGraphWidget" name="graphPage">
    <property name="geometry"><rect><x>0</x><y>0</y><width>400</width><height>300</height></rect></property>
  </widget>
  <customwidgets>
    <customwidget>
      <class>qv::qt::QvGraphWidget</class>
      <extends>QWidget</extends>
      <propertyspecifications>
        <stringpropertyspecification name="look" type="singleline" notr="true"/>
        <tooltip name="look">light, dark, print or classic; empty: as the program has it</tooltip>
        <tooltip name="followDesktop">The look is light or dark as the desktop is</tooltip>
        <stringpropertyspecification name="title" type="multiline"/>
        <tooltip name="title">Title of the first graph, which it makes on an empty page</tooltip>
        <tooltip name="ContextMenu">A menu to copy, save, print and show everything</tooltip>
      </propertyspecifications>
    </customwidget>
  </customwidgets>
</ui>
)");
}

} // namespace qv::qt
