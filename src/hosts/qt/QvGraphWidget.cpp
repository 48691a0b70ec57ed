#include "qvgraph/QvGraphWidget.h"

#include "hosts/qt/WidgetHost.h"
#include "hosts/qt/accessible_page.h"
#include "hosts/qt/guarded.h"
#include "hosts/qt/page_menu.h"
#include "hosts/qt/page_settings.h"
#include "hosts/qt/qvariants.h"
#include "hosts/qt/screen_change.h"
#include "hosts/qt/translate_input.h"
#include "qvgraph/Input.h"

#include <QtCore/QEvent>
#include <QtGui/QContextMenuEvent>
#include <QtGui/QKeyEvent>
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

// Each input by itself: one that fails does not take those after it along.
bool QvGraphWidget::take(host::Input const& given) {
    return guarded([this] { host_->report_failure(); }, [&] { return input(given); });
}

bool QvGraphWidget::event(QEvent* event) {
    if (may_change_density(*event)) guarded([this] { host_->report_failure(); }, [this] { host_->fit(); });
    return QWidget::event(event);
}

void QvGraphWidget::bring_look() {
    guarded([this] { host_->report_failure(); },
            [this] {
                QString const desktops =
                    is_dark(palette()) ? QStringLiteral("dark") : QStringLiteral("light");
                QString const& wanted = follows_desktop_ ? desktops : look_;
                if (wanted == shown_look_) return;
                show_look(control(), wanted);
                shown_look_ = wanted;
            });
}

void QvGraphWidget::set_look(QString const& name) {
    look_ = name;
    bring_look();
}

void QvGraphWidget::set_follows_desktop(bool on) {
    follows_desktop_ = on;
    bring_look();
}

void QvGraphWidget::set_title(QString const& title) {
    title_ = title;
    guarded([this] { host_->report_failure(); }, [&] { title_first_graph(control(), title); });
}

void QvGraphWidget::changeEvent(QEvent* event) {
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::FontChange)
        guarded([this] { host_->report_failure(); }, [this] { host_->measure_children(); });
    if (event->type() == QEvent::PaletteChange) bring_look();
    QWidget::changeEvent(event);
}

void QvGraphWidget::open_menu(QPoint on_screen) {
    guarded([this] { host_->report_failure(); }, [&] { open_page_menu(*this, *host_, on_screen); });
}

bool QvGraphWidget::do_menu_entry(QString const& name) {
    return qt::do_menu_entry(*this, *host_, name);
}

// The page lies in the widget's corner, so places of the one are places of the other.
void QvGraphWidget::contextMenuEvent(QContextMenuEvent* event) {
    bool const by_mouse = event->reason() == QContextMenuEvent::Mouse;
    bool const is_gesture =
        by_mouse && guarded([&] {
            return event->modifiers() != Qt::NoModifier
                   || control().takes_right_click(event->x() * twips_per_unit, event->y() * twips_per_unit);
        });
    event->setAccepted(has_context_menu_ && !is_gesture);
    if (event->isAccepted()) open_menu(by_mouse ? event->globalPos() : mapToGlobal(rect().center()));
}

// Comes here when the page has no use for the key. Some platforms make a context menu event of it, others do
// not.
void QvGraphWidget::keyPressEvent(QKeyEvent* event) {
    bool const asks_for_menu = event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier;
    if (!has_context_menu_ || contextMenuPolicy() != Qt::DefaultContextMenu || !asks_for_menu)
        return QWidget::keyPressEvent(event);
    open_menu(mapToGlobal(rect().center()));
}

void QvGraphWidget::paintEvent(QPaintEvent* event) {
    guarded([&] { QPainter(this).fillRect(event->rect(), QColor(host_->margin_color())); });
}

void QvGraphWidget::resizeEvent(QResizeEvent*) {
    guarded([this] { host_->report_failure(); }, [this] { host_->fit(); });
}

} // namespace qv::qt
