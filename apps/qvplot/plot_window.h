// The page in a window.
#pragma once

#include "qvgraph/QvGraphWidget.h"
#include "qvplot/follow.h"
#include "qvplot/options.h"
#include "qvplot/page.h"
#include "qvplot/series.h"

#include <QtCore/QFileSystemWatcher>
#include <QtCore/QTimer>

#include <memory>

namespace qv::plot {

/// Bars and titles follow the window's size and what is zoomed, as all else does by itself.
class PlotWindow : public qt::QvGraphWidget {
public:
    PlotWindow(PlotData series, PlotOptions const& options);
    /// Draws the data of a file that is still being written as they come.
    explicit PlotWindow(PlotOptions const& options);

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool input(host::Input const& input) override;

private:
    void prepare(PlotOptions const& options);
    void add_keys();
    void watch();
    void read_again();
    void read_more();

    PlotOptions options_;
    std::unique_ptr<GrowingSeries> growing_;
    PlotPage page_;
    bool drawn_ = false;
    std::unique_ptr<QFileSystemWatcher> watcher_;
    QTimer timer_; // until a file that changes is whole, or between pieces of one that grows
};

} // namespace qv::plot
