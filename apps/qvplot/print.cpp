#include "qvplot/print.h"

#include "hosts/qt/page_printer.h"
#include "qvgraph/HeadlessHost.h"
#include "qvplot/plot_error.h"
#include "qvplot/report.h"
#include "qvplot/whole_page.h"

#include <QtPrintSupport/QPrinter>
#include <QtPrintSupport/QPrinterInfo>

namespace qv::plot {
namespace {

QPrinterInfo find_printer(std::string const& name) {
    const QPrinterInfo printer = name.empty() ? QPrinterInfo::defaultPrinter()
                                              : QPrinterInfo::printerInfo(QString::fromStdString(name));
    if (!printer.isNull()) return printer;
    const std::string others = QPrinterInfo::availablePrinterNames().join(QStringLiteral(", ")).toStdString();
    const std::string there = others.empty() ? "there is none" : "there are: " + others;
    throw PlotError(name.empty() ? "no printer is the default one; name one with --printer (" + there + ")"
                                 : "--printer: no printer is called \"" + name + "\" (" + there + ")");
}

/// A page without a window, on a printer all the same.
class PrintingHost : public headless::HeadlessHost {
public:
    PrintingHost(PixelSize size, QPrinterInfo printer) : HeadlessHost(size), printer_(std::move(printer)) {}
    std::unique_ptr<host::Printer> default_printer() override {
        return std::make_unique<qt::PagePrinter>(
            std::make_unique<QPrinter>(printer_, QPrinter::HighResolution));
    }

private:
    QPrinterInfo printer_;
};

} // namespace

void print_page(PlotOptions const& options) {
    PrintingHost host(options.size, find_printer(options.printer));
    draw_whole_page(host.control(), options);
    FirstError errors;
    host.control().set_events(&errors);
    host.control().PrintImage(options.landscape);
    host.control().set_events(nullptr);
    errors.raise();
}

} // namespace qv::plot
