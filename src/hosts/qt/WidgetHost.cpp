#include "hosts/qt/WidgetHost.h"

#include "hosts/qt/GradientDialog.h"
#include "hosts/qt/page_clipboard.h"
#include "hosts/qt/page_image.h"
#include "hosts/qt/page_printer.h"
#include "hosts/qt/qvariants.h"
#include "hosts/qt/translate_input.h"
#include "qvgraph/QvGraphWidget.h"
#include "qvgraph/page_file.h"

#include <QtGui/QAccessible>
#include <QtPrintSupport/QPrinter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QColorDialog>
#include <QtWidgets/QMessageBox>

namespace qv::qt {
namespace {

PageView::Picture page_of(WidgetHost const& host) {
    return [&host] { return host.page(); };
}

} // namespace

void SignalSink::Click(double& X, double& Y) {
    Q_EMIT widget_.Click(X, Y);
}

void SignalSink::DblClick(double& X, double& Y) {
    Q_EMIT widget_.DblClick(X, Y);
}

void SignalSink::MouseMove(double& X, double& Y) {
    Q_EMIT widget_.MouseMove(X, Y);
}

void SignalSink::KeyPress(std::int16_t& KeyAscii, double& X, double& Y) {
    Q_EMIT widget_.KeyPress(KeyAscii, X, Y);
}

void SignalSink::NewGraphInFront() {
    Q_EMIT widget_.NewGraphInFront();
}

void SignalSink::GraphScaleChanged() {
    Q_EMIT widget_.GraphScaleChanged();
}

void SignalSink::GraphPositionChanged() {
    Q_EMIT widget_.GraphPositionChanged();
}

void SignalSink::LegendPositionChanged() {
    Q_EMIT widget_.LegendPositionChanged();
}

void SignalSink::ErrorMsg(std::string& Source, std::string& Description) {
    Q_EMIT widget_.ErrorMsg(QString::fromStdString(Source), QString::fromStdString(Description));
}

WidgetHost::WidgetHost(QvGraphWidget& widget, PageView::InputHandler const& handler)
    : widget_(widget), signals_(widget),
      page_view_(&widget, page_of(*this), handler, [this] { report_failure(); }),
      children_(
          &widget, handler, [this] { measure_read_out(); }, [this] { report_failure(); }),
      fonts_(raster::make_font_library()), twips_per_pixel_(twips_per_unit / widget.devicePixelRatioF()) {
    control_ = std::make_unique<qvGraph>(*this); // calls back at once, when all else stands
    control_->set_events(&signals_);
    fit();
}

void WidgetHost::report_failure() noexcept {
    if (!control_) return;
    try {
        control_->report_failure("Picture1");
    } catch (...) { // a handler of ErrorMsg that fails itself has nobody left to tell
    }
}

raster::RasterSurface const& WidgetHost::picture() const {
    return static_cast<raster::RasterSurface const&>(control_->picture());
}

// Made anew whenever it is wanted: it costs nothing.
QImage WidgetHost::page() const {
    return image_of(picture());
}

QRgb WidgetHost::margin_color() const {
    return picture().pixels().back();
}

void WidgetHost::fit() {
    bool const same_density = !follow_density();
    if (same_density && size_ == widget_.size()) return;
    resize_control();
    // A page that shows no graph is not redrawn by a change of size, and would keep pixels of the old scale.
    if (!same_density && control_->NumGraphs() == 0) control_->Refresh();
}

void WidgetHost::measure_children() {
    control_->measure_child_controls();
    resize_control();
}

void WidgetHost::measure_read_out() {
    if (control_) control_->measure_read_out(); // not yet there while the label gets its first look
}

bool WidgetHost::follow_density() {
    double const twips_per_pixel = twips_per_unit / widget_.devicePixelRatioF();
    if (twips_per_pixel == twips_per_pixel_) return false;
    twips_per_pixel_ = twips_per_pixel;
    for (DrawSurface* const surface : control_->surfaces())
        static_cast<raster::RasterSurface&>(*surface).set_twips_per_pixel(twips_per_pixel, twips_per_pixel);
    return true;
}

void WidgetHost::resize_control() {
    size_ = widget_.size();
    const host::ChildControls beside = control_->child_controls();
    const QRect page = in_units({.Width = size_.width() * twips_per_unit - beside.VScroll1.Width,
                                 .Height = size_.height() * twips_per_unit - beside.HScroll1.Height});
    page_view_.setGeometry(page);
    control_->UserControl_Resize(size_.width() * twips_per_unit, size_.height() * twips_per_unit);
}

std::unique_ptr<DrawSurface> WidgetHost::make_surface() {
    return std::make_unique<raster::RasterSurface>(twips_per_pixel_, twips_per_pixel_, fonts_);
}

void WidgetHost::page_shown() {
    page_view_.update();
    if (std::exchange(shown_margin_, margin_color()) != shown_margin_) widget_.update();
}

void WidgetHost::point_read(std::string const& text) {
    QAccessibleValueChangeEvent event(&widget_, QString::fromStdString(text));
    QAccessible::updateAccessibility(&event);
    page_view_.setAccessibleDescription(QString::fromStdString(text)); // it has the focus
}

std::unique_ptr<host::Printer> WidgetHost::default_printer() {
    if (printer_) return std::make_unique<PagePrinter>(*printer_);
    return open_default_printer();
}

void WidgetHost::print_on(QPrinter& printer) {
    QPrinter* const programs = std::exchange(printer_, &printer);
    bool const lies = printer.pageLayout().orientation() == QPageLayout::Landscape;
    try {
        control_->PrintImage(lies);
    } catch (...) {
        printer_ = programs;
        throw;
    }
    printer_ = programs;
}

std::unique_ptr<host::Clipboard> WidgetHost::open_clipboard() {
    return std::make_unique<PageClipboard>(fonts_);
}

void WidgetHost::save_picture(std::string const& file, host::PagePicture const& picture) {
    output::save_page(file, picture, fonts_);
}

void WidgetHost::show_modal(gradient_picker::qvGradientForm2& form) {
    GradientDialog(form, widget_).run();
}

std::optional<Color> WidgetHost::choose_color(Color opened_at) {
    const QColor chosen = QColorDialog::getColor(to_qcolor(opened_at), QApplication::activeModalWidget());
    if (!chosen.isValid()) return std::nullopt;
    return from_qcolor(chosen);
}

void WidgetHost::show_message(std::string const& text) {
    QMessageBox message(QMessageBox::NoIcon, {},
                        QString::fromStdString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")),
                        QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore,
                        QApplication::activeModalWidget());
    message.setTextFormat(Qt::PlainText);
    message.exec();
}

void WidgetHost::child_controls_changed() {
    if (!control_) return; // called from its constructor
    const host::ChildControls beside = control_->child_controls();
    children_.follow(beside);
    page_view_.show_pointer(beside.MousePointer);
    page_view_.setToolTip(QString::fromStdString(beside.ToolTipText));
}

} // namespace qv::qt
