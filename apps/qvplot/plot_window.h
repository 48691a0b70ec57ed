// The page in a window.
#pragma once

#include "qvgraph/QvGraphWidget.h"
#include "qvplot/options.h"
#include "qvplot/page.h"
#include "qvplot/series.h"

namespace qv::plot {

/// Bars and titles follow the window's size and what is zoomed, as all else does by itself.
class PlotWindow : public qt::QvGraphWidget {
public:
    PlotWindow(PlotData series, PlotOptions const& options);

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool input(host::Input const& input) override;

private:
    PlotPage page_;
    bool drawn_ = false;
};

} // namespace qv::plot
