#include "hosts/qt/dialog_controls.h"

#include "hosts/qt/child_widgets.h"
#include "hosts/qt/qvariants.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QSignalBlocker>
#include <QtGui/QPainter>

#include <algorithm>
#include <iterator>

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

// What follows the words of a read-out is a number.
QString caption(std::string_view of_model) {
    // The words of the models, for translators.
    static constexpr char const* words[] = {
        QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Double"),
        QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Double color gradients"),
        QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Use color names"),
        QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Gradient angle, degrees"),
        QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "deg"),
        QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Color1"),
        QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Color2"),
        QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "gShift"),
        QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Color 1"),
        QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Color 2"),
        QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Okay"),
        QT_TRANSLATE_NOOP("qv::qt::GradientDialog", "Cancel")};
    const std::string_view head = of_model.substr(0, of_model.find(" ="));
    auto const* const known = std::ranges::find(words, head);
    if (known == std::end(words)) return text(of_model);
    return QCoreApplication::translate("qv::qt::GradientDialog", *known) + text(of_model.substr(head.size()));
}

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
    widget.setText(caption(model.Caption));
    widget.setToolTip(caption(model.ToolTipText));
    widget.setChecked(model.Value);
    place(widget, model, model.Visible);
}

void follow(QLineEdit& widget, host::TextBox const& model) {
    if (widget.text() != text(model.Text)) widget.setText(text(model.Text)); // else the caret would jump
    widget.setToolTip(caption(model.ToolTipText));
    place(widget, model, model.Visible);
}

void follow(QListWidget& widget, host::ColorList const& model) {
    const QSignalBlocker silent(widget);
    widget.setCurrentRow(model.ListIndex);
    place(widget, model, model.Visible);
}

void follow(QPushButton& widget, host::PushButton const& model) {
    widget.setText(caption(model.Caption));
    // A solid fill moves the second colour's button out of sight; the keys should not find it there.
    const QRect place_units = in_units(model, twips_a_unit(*widget.parentWidget()));
    place(widget, model, model.Visible && place_units.left() < widget.parentWidget()->width());
}

void follow(QWidget& widget, host::PictureBox const& model) {
    place(widget, model, model.Visible);
    widget.update();
}

} // namespace qv::qt
