#include "hosts/qt/dialog_controls.h"

#include "hosts/qt/child_widgets.h"
#include "hosts/qt/qvariants.h"

#include <QtCore/QSignalBlocker>
#include <QtGui/QPainter>

#include <algorithm>

namespace qv::qt {
namespace {

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QIcon color_mark(Color color, double density) {
    QPixmap mark(QSize(color_mark_size, color_mark_size) * density);
    mark.setDevicePixelRatio(density);
    mark.fill(QColor(128, 128, 128)); // a frame, so that white shows on white
    QPainter(&mark).fillRect(1, 1, color_mark_size - 2, color_mark_size - 2, to_qcolor(color));
    QIcon icon(mark);
    icon.addPixmap(mark, QIcon::Selected); // else the selection would tint it
    return icon;
}

void place(QWidget& widget, host::Placement const& model, bool visible) {
    widget.setGeometry(in_units(model, twips_a_unit(*widget.parentWidget())));
    widget.setVisible(visible);
}

} // namespace

double twips_a_unit(QWidget const& widget) {
    return twips_per_inch / std::max(96, widget.logicalDpiX());
}

void fill(QListWidget& widget, host::ColorList const& list) {
    for (auto const& [name, color] : list.items) {
        widget.addItem(text(name));
        widget.item(widget.count() - 1)->setIcon(color_mark(color, widget.devicePixelRatioF()));
    }
    widget.setIconSize({color_mark_size, color_mark_size});
    widget.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    widget.setUniformItemSizes(true);
}

void follow(QCheckBox& widget, host::CheckBox const& model) {
    widget.setText(text(model.Caption));
    widget.setToolTip(text(model.ToolTipText));
    widget.setChecked(model.Value);
    place(widget, model, model.Visible);
}

void follow(QLineEdit& widget, host::TextBox const& model) {
    if (widget.text() != text(model.Text)) widget.setText(text(model.Text)); // else the caret would jump
    widget.setToolTip(text(model.ToolTipText));
    place(widget, model, model.Visible);
}

void follow(QListWidget& widget, host::ColorList const& model) {
    const QSignalBlocker silent(widget);
    widget.setCurrentRow(model.ListIndex);
    place(widget, model, model.Visible);
}

void follow(QPushButton& widget, host::PushButton const& model) {
    widget.setText(text(model.Caption));
    // A solid fill moves the second colour's button out of sight; the keys should not find it there.
    const QRect place_units = in_units(model, twips_a_unit(*widget.parentWidget()));
    place(widget, model, model.Visible && place_units.left() < widget.parentWidget()->width());
}

void follow(QWidget& widget, host::PictureBox const& model) {
    place(widget, model, model.Visible);
    widget.update();
}

} // namespace qv::qt
