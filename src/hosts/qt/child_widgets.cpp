#include "hosts/qt/child_widgets.h"

#include "hosts/qt/translate_input.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QStyle>

#include <algorithm>
#include <cmath>
#include <utility>

namespace qv::qt {
namespace {

void tell(QScrollBar& widget, host::Bar bar, ChildWidgets::ScrollHandler const& handler,
          FailureHandler const& failed) {
    auto const hand_over = [=](host::ScrollInput const& input) { guarded(failed, [&] { handler(input); }); };
    QObject::connect(&widget, &QScrollBar::valueChanged, &widget, [&widget, bar, hand_over](int value) {
        hand_over({.bar = bar, .value = value, .dragging = widget.isSliderDown()});
    });
    QObject::connect(&widget, &QScrollBar::sliderReleased, &widget,
                     [&widget, bar, hand_over] { hand_over({.bar = bar, .value = widget.value()}); });
}

} // namespace

void follow(QScrollBar& widget, host::ScrollBar const& bar, double twips_a_unit) {
    const QSignalBlocker silent(widget);
    widget.setRange(0, bar.Max);
    widget.setPageStep(bar.LargeChange);
    widget.setSingleStep(bar.SmallChange);
    widget.setValue(bar.Value);
    widget.setGeometry(in_units(bar, twips_a_unit));
    widget.setVisible(bar.Visible);
}

void follow(QLabel& widget, host::Label const& label, double twips_a_unit) {
    widget.setText(QString::fromStdString(label.Caption));
    widget.setFrameStyle(label.Border ? QFrame::Box | QFrame::Plain : QFrame::NoFrame);
    widget.setGeometry(in_units(label, twips_a_unit));
    widget.setVisible(label.Visible);
}

ReadOut::ReadOut(QWidget* parent, std::function<void()> looks_changed, FailureHandler failed)
    : QLabel(parent), looks_changed_(std::move(looks_changed)), failed_(std::move(failed)) {}

double ReadOut::natural_width(QString const& text) {
    setText(text);
    setWordWrap(false);
    ensurePolished();
    return sizeHint().width();
}

void ReadOut::follow(host::Label const& model, int room) {
    double const wanted = natural_width(QString::fromStdString(model.Caption));
    qt::follow(*this, model);
    if (!model.Visible || width() <= room) return;
    setWordWrap(wanted > room);
    int const tall = wanted > room ? std::max(height(), heightForWidth(room)) : height();
    setGeometry(x(), geometry().bottom() + 1 - tall, room, tall);
}

void ReadOut::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        guarded(failed_, looks_changed_);
}

ChildWidgets::ChildWidgets(QWidget* parent, ScrollHandler const& handler, LabelHandler const& label_changed,
                           FailureHandler const& failed)
    : across_(Qt::Horizontal, parent), down_(Qt::Vertical, parent), label_(parent, label_changed, failed) {
    label_.setTextFormat(Qt::PlainText);
    label_.setAutoFillBackground(true); // its text has the desktop's colours, which the page may not suit
    across_.hide();
    down_.hide();
    label_.setAttribute(Qt::WA_TransparentForMouseEvents); // the page below it has the pointer
    label_.hide();
    tell(across_, host::Bar::HScroll1, handler, failed);
    tell(down_, host::Bar::VScroll1, handler, failed);
}

double ChildWidgets::scroll_bar_thickness() const {
    return across_.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &across_) * twips_per_unit;
}

double ChildWidgets::label_height() const {
    constexpr int room_for_border = 2;
    return (label_.fontMetrics().height() + room_for_border) * twips_per_unit;
}

// Asked of the label itself, because frame, indent and style sheet add to the text.
double ChildWidgets::read_out_width(std::string const& text) {
    return label_.natural_width(QString::fromStdString(text)) * twips_per_unit;
}

void ChildWidgets::follow(host::ChildControls const& controls) {
    qt::follow(across_, controls.HScroll1);
    qt::follow(down_, controls.VScroll1);
    int const beside_page = in_units({.Width = controls.VScroll1.Width}).width();
    label_.follow(controls.Label1, label_.parentWidget()->width() - beside_page);
}

QRect in_units(host::Placement const& placement, double twips_a_unit) {
    auto const unit = [=](double twips) { return static_cast<int>(std::floor(twips / twips_a_unit + 0.5)); };
    const QPoint left_top(unit(placement.Left), unit(placement.Top));
    const QPoint end(unit(placement.Left + placement.Width), unit(placement.Top + placement.Height));
    return {left_top, QSize(end.x() - left_top.x(), end.y() - left_top.y())};
}

} // namespace qv::qt
