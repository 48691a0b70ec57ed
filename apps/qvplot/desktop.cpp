// The module that prints a page and shows it in a window.
#include "qvplot/desktop.h"
#include "qvplot/command_line.h"
#include "qvplot/plot_window.h"
#include "qvplot/print.h"
#include "qvplot/report.h"
#include "qvplot/whole_page.h"

#include <QtWidgets/QApplication>

#include <cstdlib>
#include <optional>

namespace qv::plot {
namespace {

// A window system that cannot be reached ends the program from within Qt; this makes it end as other errors
// do.
void end_on_fatal(QtMsgType type, QMessageLogContext const&, QString const&) {
    if (type != QtFatalMsg) return;
    tell("the display cannot be used; write a file with --out FILE.png");
    std::_Exit(failure);
}

int print_and_show(int argc, char const* const* argv) {
    const PlotOptions options = read_command(argc, argv).plot; // as the program did already
    qInstallMessageHandler(end_on_fatal);
    if (!options.shows_window()) setenv("QT_QPA_PLATFORM", "offscreen", 1); // printing needs no display
    int count = 1;
    std::string name = "qvplot";
    char* values[] = {name.data(), nullptr};
    QApplication application(count, values);
    if (options.follow) {
        PlotWindow window(options);
        window.show();
        return QApplication::exec();
    }
    // Read once, since a pipe gives its data once.
    PlotData data = read_data(options);
    tell_explanation(data, options);
    if (!options.out.empty()) write_page(data, options, AfterDrawing::Keep);
    if (options.print) print_page(data, options);
    if (!options.shows_window()) return success;
    PlotWindow window(std::move(data), options);
    window.show();
    return QApplication::exec();
}

} // namespace
} // namespace qv::plot

extern "C" int qvplot_desktop(int argc, char const* const* argv) {
    return qv::plot::reported([&] { return qv::plot::print_and_show(argc, argv); });
}
