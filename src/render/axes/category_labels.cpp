#include "render/axes/category_labels.h"

#include "render/plot_geometry.h"
#include "scale/category_text.h"
#include "scale/mapping.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qv::render {
namespace {

using document::Axis;
using document::AxisKind;

constexpr double least_minor_gap = 60;     // twips
constexpr double least_label_height = 0.8; // of a line, which labels take of their axis at least
constexpr double longest_turned = 0.3;     // of the frame, which turned labels may take
constexpr std::array<std::int16_t, 2> turned_degrees{45, 90};

/// An axis with the categories in sight, from `first` to `last`.
struct CategoryScale {
    Axis const& axis;
    scale::AxisMap map;
    double first = 0, last = -1;

    double pitch() const { return std::abs(map.factor); } // twips from one category to the next
    double first_multiple(double stride) const { return std::ceil(first / stride) * stride; }
};

CategoryScale category_scale(document::Graph const& graph, Axis const& axis) {
    CategoryScale scale{axis,
                        axis.AxisXY == AxisKind::X ? scale::x_map(graph, axis) : scale::y_map(graph, axis)};
    auto const [low, high] = std::minmax(axis.AxisValue1, axis.AxisValue2);
    constexpr double largest_number = 1e15; // beyond it numbers have no neighbours
    if (!scale.map.valid || !(std::max(-low, high) < largest_number)) return scale;
    scale.first = std::ceil(low);
    scale.last = std::floor(high);
    if (axis.categories.empty()) return scale;
    scale.first = std::max(scale.first, 0.0);
    scale.last = std::min(scale.last, static_cast<double>(axis.categories.size()) - 1);
    return scale;
}

// 1, 2 or 5 times a power of ten.
double next_stride(double stride) {
    double const power = std::pow(10, std::floor(std::log10(stride) + 1e-9));
    return power * (stride < 1.5 * power ? 2 : stride < 3 * power ? 5 : 10);
}

/// How labels are measured, at one angle.
struct Measure {
    DrawSurface& surface;
    Markup markup;
    LabelTurn turn;

    TextBlock block(std::string const& label) const { return text_block(surface, label, markup); }
    double line_height() const { return surface.TextHeight("A"); }
};

bool labels_fit(CategoryScale const& scale, double stride, Measure const& measure) {
    double const room = stride * scale.pitch() - least_gap(measure.turn, measure.line_height());
    if (!(room >= least_label_height * measure.line_height()))
        return false; // nor are there too many to measure
    double before = 0;
    for (double n = scale.first_multiple(stride); n <= scale.last; n += stride) {
        double const length =
            length_along(measure.turn, measure.block(scale::category_text(scale.axis, n).value_or("")));
        if ((before + length) / 2 > room && n > scale.first_multiple(stride)) return false;
        before = length;
    }
    return true;
}

// The farthest that a label leads away from its axis.
double longest_away(CategoryScale const& scale, Measure const& measure) {
    double longest = 0;
    for (double n = scale.first; n <= scale.last; ++n) {
        const TextBlock block = measure.block(scale::category_text(scale.axis, n).value_or(""));
        longest = std::max(longest, block.width * std::abs(measure.turn.along_text)
                                        + block.height * std::abs(measure.turn.down_lines));
    }
    return longest;
}

/// The angle at which all labels have room; 0 where there is none.
std::int16_t turned_angle(CategoryScale const& scale, Measure measure, AxisFrame const& frame,
                          double most_away) {
    for (std::int16_t const degrees : turned_degrees) {
        measure.turn = label_turn(frame, degrees);
        if (labels_fit(scale, 1, measure) && longest_away(scale, measure) <= most_away) return degrees;
    }
    return 0;
}

double chosen_stride(CategoryScale const& scale, Measure const& measure) {
    double stride = 1;
    while (stride <= scale.last - scale.first && !labels_fit(scale, stride, measure))
        stride = next_stride(stride);
    return stride;
}

} // namespace

std::vector<PlacedTick> place_category_ticks(document::ControlState& state, DrawSurface& surface,
                                             AxisFrame const& frame, Axis const& axis, LabelChoice& choice) {
    document::Graph const& graph = document::current_graph(state);
    const CategoryScale scale = category_scale(graph, axis);
    if (!(scale.first <= scale.last)) return {};
    Measure measure{surface, markup_of_host_texts(state), label_turn(frame, choice.angle_degrees)};
    bool const may_turn = state.FitMargins && frame.kind == AxisKind::X && axis.AxisLabelsHoriz == 0;
    if (may_turn && !labels_fit(scale, 1, measure)) {
        choice.angle_degrees = turned_angle(scale, measure, frame, longest_turned * frame_box(graph).height);
        measure.turn = label_turn(frame, choice.angle_degrees);
    }
    double const stride = chosen_stride(scale, measure);
    bool const has_minors = scale.pitch() >= least_minor_gap && axis.AxisMajorDivs != 0;
    double const step = has_minors ? 1 : stride;
    std::vector<PlacedTick> placed;
    for (double n = scale.first_multiple(step); n <= scale.last; n += step) {
        bool const is_labelled = std::remainder(n, stride) == 0;
        PlacedTick& tick = placed.emplace_back();
        tick.along = std::clamp(scale.map(n), frame.along_low(), frame.along_high());
        tick.kind = is_labelled ? TickKind::Major : TickKind::Minor;
        tick.value = n;
        tick.has_room = true;
        if (is_labelled) tick.label = scale::category_text(axis, n).value_or("");
    }
    return placed;
}

} // namespace qv::render
