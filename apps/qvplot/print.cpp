#include "qvplot/print.h"

#include "qvplot/plot_error.h"
#include "qvplot/plot_window.h"
#include "qvplot/report.h"

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

} // namespace

// The page in a widget of its own, which has a printer and is never seen.
void print_page(PlotData const& data, PlotOptions const& options) {
    QPrinter printer(find_printer(options.printer), QPrinter::HighResolution);
    PlotWindow page(data, options);
    page.setAttribute(Qt::WA_DontShowOnScreen);
    FirstError errors;
    page.control().set_events(&errors);
    page.show();
    errors.raise();
    page.set_printer(&printer);
    page.control().PrintImage(options.landscape);
    page.set_printer(nullptr);
    page.control().set_events(nullptr);
    errors.raise();
}

} // namespace qv::plot
