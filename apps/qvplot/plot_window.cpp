#include "qvplot/plot_window.h"

#include "qvgraph/ChildControls.h"
#include "qvplot/report.h"

#include <cmath>
#include <utility>

namespace qv::plot {

PlotWindow::PlotWindow(PlotData series, PlotOptions const& options)
    : page_(control(), std::move(series), options) {
    setWindowTitle(QString::fromStdString(options.title.empty() ? "qvplot" : options.title));
    // The picture has the size asked for; scroll bars lie beside it.
    auto const bar =
        static_cast<int>(std::lround(control().child_controls().VScroll1.Width * 96 / twips_per_inch));
    resize(options.size.width + bar, options.size.height + bar);
    connect(this, &QvGraphWidget::ErrorMsg, [](QString const& source, QString const& description) {
        tell(source.toStdString() + ": " + description.toStdString());
    });
}

void PlotWindow::resizeEvent(QResizeEvent* event) {
    QvGraphWidget::resizeEvent(event);
    if (std::exchange(drawn_, true))
        page_.follow();
    else
        page_.draw();
}

// Zooming raises no event of the control, but all that a person does comes through here.
bool PlotWindow::input(host::Input const& input) {
    bool const used_up = QvGraphWidget::input(input);
    if (drawn_) page_.follow();
    return used_up;
}

} // namespace qv::plot
