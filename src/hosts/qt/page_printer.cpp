#include "hosts/qt/page_printer.h"

#include "hosts/qt/page_image.h"
#include "qvgraph/fault.h"

#include <QtPrintSupport/QPrinter>
#include <QtPrintSupport/QPrinterInfo>

namespace qv::qt {
namespace {

constexpr double twips_per_point = 20;

[[noreturn]] void raise_printer_error(QPrinter const& printer, char const* what) {
    const QString name =
        printer.outputFileName().isEmpty() ? printer.printerName() : printer.outputFileName();
    raise_fault(FaultNumber::PrinterError,
                "The printer " + name.toStdString() + " " + what + "; see whether it is there and ready");
}

} // namespace

PagePrinter::PagePrinter(QPrinter& printer) : printer_(printer) {}

PagePrinter::PagePrinter(std::unique_ptr<QPrinter> printer) : owned_(std::move(printer)), printer_(*owned_) {}

PagePrinter::~PagePrinter() {
    if (!painter_.isActive()) return;
    printer_.abort();
    painter_.end();
}

host::PaperSize PagePrinter::paper() {
    const QSizeF points = printer_.pageLayout().pageSize().size(QPageSize::Point);
    return {points.width() * twips_per_point, points.height() * twips_per_point};
}

void PagePrinter::set_orientation(host::PageOrientation orientation) {
    bool const lies = orientation == host::PageOrientation::Landscape;
    printer_.setPageOrientation(lies ? QPageLayout::Landscape : QPageLayout::Portrait);
}

void PagePrinter::draw_picture(DrawSurface const& picture, Box const& place) {
    if (!painter_.isActive()) {
        printer_.setFullPage(true); // places count from the corner of the paper, not of its printable part
        if (!painter_.begin(&printer_)) raise_printer_error(printer_, "does not take the page");
        painter_.setRenderHint(QPainter::LosslessImageRendering);
    }
    double const dots_per_twip = printer_.resolution() / twips_per_inch;
    painter_.drawImage(QRectF(place.left * dots_per_twip, place.top * dots_per_twip,
                              place.width * dots_per_twip, place.height * dots_per_twip),
                       image_of(picture));
}

void PagePrinter::end_document() {
    if (!painter_.end() || printer_.printerState() == QPrinter::Error)
        raise_printer_error(printer_, "has failed to print the page");
}

std::unique_ptr<host::Printer> open_default_printer() {
    const QPrinterInfo info = QPrinterInfo::defaultPrinter();
    if (info.isNull()) return nullptr;
    return std::make_unique<PagePrinter>(std::make_unique<QPrinter>(info, QPrinter::HighResolution));
}

} // namespace qv::qt
