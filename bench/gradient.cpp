// gradient/STYLE: filling a page of 1200 x 800 pixels with a gradient of this style.
#include "render/gradient.h"
#include "benchmarks.h"
#include "control/state_of.h"
#include "pages.h"

#include <benchmark/benchmark.h>

#include <string>

namespace qv::bench {
namespace {

void fill_page(benchmark::State& state, std::int16_t style) {
    Page const page = line_page(2, Drawing::Flat);
    document::ControlState& control = control::state_of(page->control());
    control.PageFill = {.Color1 = rgb(255, 255, 255), .Color2 = rgb(20, 60, 140), .GradientAngle = 300};
    control.PageFill.gStyle = style;
    for (auto _ : state)
        render::DrawGradient(control, *control.GraphImage, render::Area::Page, control.PageFill);
}

} // namespace

void register_gradient() {
    for (int const style : {1, 2, 3, 4, 5, 6, -1})
        benchmark::RegisterBenchmark(("gradient/" + std::to_string(style)).c_str(), fill_page,
                                     static_cast<std::int16_t>(style))
            ->Unit(benchmark::kMillisecond);
}

} // namespace qv::bench
