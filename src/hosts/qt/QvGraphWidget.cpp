#include "qvgraph/QvGraphWidget.h"

#include "hosts/qt/WidgetHost.h"
#include "hosts/qt/accessible_page.h"
#include "hosts/qt/qvariants.h"
#include "qvgraph/Input.h"

#include <QtCore/QEvent>
#include <QtGui/QPaintEvent>
#include <QtGui/QPainter>

namespace qv::qt {

QvGraphWidget::QvGraphWidget(QWidget* parent) : QWidget(parent) {
    make_pages_accessible();
    setAttribute(Qt::WA_OpaquePaintEvent);
    host_ = std::make_unique<WidgetHost>(*this, [this](host::Input const& input) { return take(input); });
    setFocusProxy(&host_->page_view());
}

QvGraphWidget::~QvGraphWidget() = default;

qvGraph& QvGraphWidget::control() {
    return host_->control();
}

qvGraph const& QvGraphWidget::control() const {
    return host_->control();
}

QVariant QvGraphWidget::Get(QString const& property) const {
    return to_qvariant(control().Get(property.toStdString()));
}

void QvGraphWidget::Let(QString const& property, QVariant const& value) {
    control().Let(property.toStdString(), from_qvariant(value));
}

QImage QvGraphWidget::page() const {
    return host_->page();
}

void QvGraphWidget::set_printer(QPrinter* printer) {
    host_->set_printer(printer);
}

QWidget& QvGraphWidget::page_view() {
    return host_->page_view();
}

QScrollBar& QvGraphWidget::HScroll1() {
    return host_->children().across();
}

QScrollBar& QvGraphWidget::VScroll1() {
    return host_->children().down();
}

QLabel& QvGraphWidget::Label1() {
    return host_->children().label();
}

bool QvGraphWidget::input(host::Input const& input) {
    return control().take_input(input);
}

// Qt's event loop must not see an exception, so this is the last place to catch what a handler throws.
bool QvGraphWidget::take(host::Input const& given) {
    try {
        return input(given);
    } catch (...) {
        control().report_failure("Picture1");
        return false;
    }
}

bool QvGraphWidget::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::ScreenChangeInternal:
#if QT_VERSION >= QT_VERSION_CHECK(6, 6, 0)
    case QEvent::DevicePixelRatioChange:
#endif
        host_->fit();
        break;
    default: break;
    }
    return QWidget::event(event);
}

void QvGraphWidget::changeEvent(QEvent* event) {
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::FontChange)
        host_->measure_children();
    QWidget::changeEvent(event);
}

void QvGraphWidget::paintEvent(QPaintEvent* event) {
    QPainter(this).fillRect(event->rect(), QColor(host_->margin_color()));
}

void QvGraphWidget::resizeEvent(QResizeEvent*) {
    host_->fit();
}

} // namespace qv::qt
