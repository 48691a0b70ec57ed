// A widget with a page worth looking at, and the same page drawn without a window.
#pragma once

#include "control/state_of.h"
#include "hosts/qt/page_image.h"
#include "qvgraph/HeadlessHost.h"
#include "qvgraph/QvGraphWidget.h"

#include <QtCore/QElapsedTimer>
#include <QtTest/QTest>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStyle>

#include <doctest/doctest.h>

#include <cmath>
#include <vector>

namespace qv::test {

/// Two graphs, filled data, texts in several sizes: whatever may differ between hosts shows.
inline void draw_page(qvGraph& page) {
    std::vector<double> x(2000), y(2000);
    for (std::size_t i = 0; i < x.size(); ++i) {
        x[i] = static_cast<double>(i);
        y[i] = std::sin(x[i] / 90) * x[i];
    }
    page.Reset();
    for (char const* const name : {"Behind", "In front"}) {
        page.NewGraph(name);
        page.NewDataSet("swinging");
        page.AddDataPoints(x, y);
    }
    page.GraphPosition({40, 10, 50, 60});
    page.PageColors({.Color1 = rgb(210, 225, 240)});
    page.Refresh();
}

/// A widget whose page has this size in device-independent pixels.
inline QSize around_page(QWidget const& widget, QSize page) {
    int const bar = widget.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &widget);
    return page + QSize(bar, bar);
}

struct ShownWidget {
    qt::QvGraphWidget widget;

    explicit ShownWidget(QSize page = {600, 400}) {
        widget.resize(around_page(widget, page));
        widget.move(0, 0);
        widget.show();
        REQUIRE(QTest::qWaitForWindowExposed(&widget));
        QCoreApplication::processEvents();
    }
};

inline raster::RasterSurface const& picture(qt::QvGraphWidget const& widget) {
    return dynamic_cast<raster::RasterSurface const&>(widget.control().picture());
}

/// The test page as a host without a window draws it.
inline QImage headless_page(QSize pixels, double dots_per_inch) {
    headless::HeadlessHost host({pixels.width(), pixels.height()}, dots_per_inch);
    draw_page(host.control());
    return qt::image_of(host.picture()).copy();
}

/// Number of pixels that differ; -1 when the sizes do.
inline int different_pixels(QImage const& a, QImage const& b) {
    if (a.size() != b.size()) return -1;
    int count = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) count += a.pixel(x, y) != b.pixel(x, y) ? 1 : 0;
    return count;
}

} // namespace qv::test
