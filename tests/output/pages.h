// Pages for tests, and what is heard while they are saved.
#pragma once

#include "qvgraph/HeadlessHost.h"

#include <cmath>
#include <string>
#include <vector>

namespace qv::test {

struct Errors : host::EventSink {
    std::vector<std::string> heard;
    void ErrorMsg(std::string& Source, std::string& Description) override {
        heard.push_back(Source + ": " + Description);
    }
};

/// A graph on a dark page, so that every pixel of it is told from paper.
inline void draw_dark_page(qvGraph& page) {
    page.NewGraph("Sine");
    page.PageColors({.Color1 = rgb(40, 60, 90), .Color2 = rgb(40, 60, 90)});
    page.BorderStyle({.Color1 = rgb(200, 220, 240)});
    page.NewDataSet("sine");
    for (int i = 0; i <= 100; ++i) page.AddDataPoint(i, std::sin(i * 0.1));
    page.Refresh();
}

inline std::vector<std::uint32_t> pixels_of(headless::HeadlessHost const& host) {
    auto const pixels = host.picture().pixels();
    return {pixels.begin(), pixels.end()};
}

} // namespace qv::test
