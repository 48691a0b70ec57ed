// The module that prints a page and shows it in a window.
#include "qvplot/desktop.h"
#include "platform/qt/QvGraphWidget.h"
#include "qvplot/options.h"
#include "qvplot/page.h"
#include "qvplot/print.h"
#include "qvplot/report.h"
#include "qvplot/whole_page.h"

#include <CLI/CLI.hpp>

#include <QtWidgets/QApplication>

#include <cmath>
#include <cstdlib>

namespace qv::plot {
namespace {

// A window system that cannot be reached ends the program from within Qt; this makes it end as other errors
// do.
void end_on_fatal(QtMsgType type, QMessageLogContext const&, QString const&) {
    if (type != QtFatalMsg) return;
    tell("the display cannot be used; write a file with --out FILE.png");
    std::_Exit(failure);
}

// The page in a window: margins and ticks follow its size and what is zoomed.
class PlotWindow : public qt::QvGraphWidget {
public:
    PlotWindow(PlotData series, PlotOptions asked) : data_(std::move(series)), options_(std::move(asked)) {
        setWindowTitle(QString::fromStdString(options_.title.empty() ? "qvplot" : options_.title));
        // The picture has the size asked for; scroll bars lie beside it.
        auto const bar = static_cast<int>(
            std::lround(control().state().host->scroll_bar_thickness() * 96 / twips_per_inch));
        resize(options_.size.width + bar, options_.size.height + bar);
        connect(this, &QvGraphWidget::ErrorMsg, [](QString const& source, QString const& description) {
            tell(source.toStdString() + ": " + description.toStdString());
        });
        connect(this, &QvGraphWidget::GraphScaleChanged, [this] { follow_zoom(control(), data_, options_); });
    }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QvGraphWidget::resizeEvent(event);
        if (drawn_)
            fit_page(control(), data_, options_);
        else
            draw_page(control(), data_, options_);
        drawn_ = true;
    }

private:
    PlotData data_;
    PlotOptions options_;
    bool drawn_ = false;
};

int print_and_show(int argc, char const* const* argv) {
    CLI::App app("", "qvplot");
    PlotOptions options;
    add_plot_options(app, options);
    app.parse(argc, argv); // as the program did already
    qInstallMessageHandler(end_on_fatal);
    if (!options.shows_window()) setenv("QT_QPA_PLATFORM", "offscreen", 1); // printing needs no display
    int count = 1;
    std::string name = "qvplot";
    char* values[] = {name.data(), nullptr};
    QApplication application(count, values);
    if (options.print) print_page(options);
    if (!options.shows_window()) return success;
    PlotWindow window(read_data(options), options);
    window.show();
    return QApplication::exec();
}

} // namespace
} // namespace qv::plot

extern "C" int qvplot_desktop(int argc, char const* const* argv) {
    return qv::plot::reported([&] { return qv::plot::print_and_show(argc, argv); });
}
