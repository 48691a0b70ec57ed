// The module that shows a page in a window.
#include "platform/qt/QvGraphWidget.h"
#include "qvplot/formula.h"
#include "qvplot/options.h"
#include "qvplot/page.h"
#include "qvplot/plot_error.h"
#include "qvplot/progress_line.h"
#include "qvplot/report.h"
#include "qvplot/series.h"
#include "qvplot/window.h"

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

int show(int argc, char const* const* argv) {
    CLI::App app("", "qvplot");
    PlotOptions options;
    add_plot_options(app, options);
    app.parse(argc, argv); // as the program did already
    qInstallMessageHandler(end_on_fatal);
    int count = 1;
    std::string name = "qvplot";
    char* values[] = {name.data(), nullptr};
    QApplication application(count, values);
    PlotData data = read_series(options, ProgressLine());
    add_functions(data, options);
    for (std::string const& note : drop_points_without_logarithm(data, options.log)) tell(note);
    PlotWindow window(std::move(data), options);
    window.show();
    return QApplication::exec();
}

} // namespace
} // namespace qv::plot

extern "C" int qvplot_show(int argc, char const* const* argv) {
    return qv::plot::reported([&] { return qv::plot::show(argc, argv); });
}
