#include "render/bars/bar_labels.h"

#include "document/selection.h"
#include "qvgraph/system_color.h"
#include "render/plot_geometry.h"
#include "render/text.h"
#include "scale/number_format.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

namespace qv::render {
namespace {

using document::BarLabelling;
using document::ControlState;
using document::DataSet;
using document::Graph;

constexpr double gap_mm = 0.5;           // between a bar's end and its label
constexpr std::size_t most_bars = 2000;  // in sight, which leave room for any label
constexpr std::int16_t label_digits = 6; // as of tick labels

bool has_labels(DataSet const& set) {
    bool const is_asked = set.BarLabels == static_cast<std::uint8_t>(BarLabelling::Inside)
                          || set.BarLabels == static_cast<std::uint8_t>(BarLabelling::AtEnd);
    return is_asked && !set.DataHide && are_bars(set) && !set.DataSymbolFill.Transparent;
}

// Black or white, whichever differs more from a colour by the contrast of WCAG 2.
Color contrast_to(Color color) {
    constexpr std::array weights{0.2126, 0.7152, 0.0722}; // red, green, blue
    constexpr double even = 0.179; // the luminance from which black and white differ alike
    Color const plain = plain_color(color);
    double luminance = 0;
    for (std::size_t i = 0; i < weights.size(); ++i) {
        double const part = ((plain >> (8 * i)) & 255) / 255.0;
        luminance += weights[i] * (part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4));
    }
    return luminance > even ? rgb(0, 0, 0) : rgb(255, 255, 255);
}

/// One way of the page, of a bar and of a label: where it begins and how far it goes.
struct Stretch {
    double from, length;
    double to() const { return from + length; }
    double middle() const { return from + length / 2; }
};

/// A box as it lies along a bar and across it.
struct BarWays {
    Stretch along, across;
    static BarWays of(Box const& box, bool horizontal) {
        const Stretch x{box.left, box.width}, y{box.top, box.height};
        return horizontal ? BarWays{x, y} : BarWays{y, x};
    }
    Box box(bool horizontal) const {
        return horizontal ? Box{along.from, across.from, along.length, across.length}
                          : Box{across.from, along.from, across.length, along.length};
    }
};

bool overlap(Box const& one, Box const& other) {
    return one.left < other.right() && other.left < one.right() && one.top < other.bottom()
           && other.top < one.bottom();
}

/// A bar with what its label needs to know.
struct LabelledBar {
    DataSet const* set;
    PlacedBar bar;
    Box extent;
};

class LabelWriter {
public:
    LabelWriter(ControlState& state, DrawSurface& surface, Graph& graph, BarPlan const& plan)
        : state_(state), surface_(surface), graph_(graph), plan_(plan), plot_(plot_box(graph)) {}

    void write() {
        collect();
        if (bars_.size() > most_bars) return;
        for (std::size_t i = 0; i < bars_.size(); ++i)
            if (has_labels(*bars_[i].set)) write(i);
    }

private:
    /// Where a label lies, and whether its ground is the bar.
    struct Spot {
        Box box;
        bool inside = false;
    };

    void collect() {
        BarStack stack;
        for (std::int16_t i = 0; i < graph_.NumDataSets(); ++i) {
            DataSet const& set = at(graph_.DataSets, i);
            if (set.DataHide || !are_bars(set)) continue;
            const SeriesScope scope(state_, graph_, i, SeriesScope::Maps::BeingDrawn);
            for_each_bar(scope.view(), plan_, stack, [&](PlacedBar const& bar) {
                if (bars_.size() <= most_bars) bars_.push_back({&set, bar, extent_of(bar.box)});
            });
        }
    }

    std::string font(DataSet const& set) const {
        return set.DataTextFont.empty() ? graph_.LegendFont : set.DataTextFont;
    }

    void write(std::size_t index) {
        DataSet const& set = *bars_[index].set;
        const std::string text = scale::EasyFormat(bars_[index].bar.shown, label_digits, set.BarLabelFormat);
        SetGraphFont(state_, surface_, font(set));
        const TextBlock size = text_block(surface_, text, Markup::Ignored);
        auto const spot = spot_of(index, size);
        if (!spot) return;
        written_.push_back(spot->box);
        PrintText(
            state_, surface_, text, {{spot->box.left, spot->box.top}, Align::Start, Align::Start, 0, true},
            {font(set), spot->inside ? contrast_to(set.DataSymbolFill.Color1) : graph_.LegendFontColor});
    }

    std::optional<Spot> spot_of(std::size_t index, TextBlock const& size) const {
        LabelledBar const& bar = bars_[index];
        bool const lies = bar.set->BarHoriz;
        const BarWays seen = BarWays::of(common_part(plot_, bar.extent), lies);
        const BarWays label = BarWays::of({0, 0, size.width, size.height}, lies);
        bool const at_end = bar.set->BarLabels == static_cast<std::uint8_t>(BarLabelling::AtEnd);
        if (at_end)
            if (auto const beyond = beyond_end(index, seen, label)) return beyond;
        return inside(bar, seen, label, at_end);
    }

    double gap(bool lies) const { return gap_mm * (lies ? state_.UnitsPerMmX : state_.UnitsPerMmY); }

    static bool leads_up(LabelledBar const& bar) { // to larger coordinates of the page
        BarBox const& box = bar.bar.box;
        if (bar.set->BarHoriz) return box.x2 >= box.x1;
        return box.y2 > box.y1;
    }

    std::optional<Spot> beyond_end(std::size_t index, BarWays const& seen, BarWays const& label) const {
        LabelledBar const& bar = bars_[index];
        bool const lies = bar.set->BarHoriz, up = leads_up(bar);
        if (plan_.stacks() || bar.set->BarStacked) return std::nullopt; // the next one may stand there
        const BarWays plot = BarWays::of(plot_, lies), whole = BarWays::of(bar.extent, lies);
        double const end = up ? whole.along.to() : whole.along.from;
        if (end < plot.along.from || end > plot.along.to()) return std::nullopt;
        double const from = up ? end + gap(lies) : end - gap(lies) - label.along.length;
        if (from < plot.along.from || from + label.along.length > plot.along.to()) return std::nullopt;
        double const room = plot.across.length - label.across.length;
        if (room < 0 || seen.across.length < 0) return std::nullopt;
        double const across = std::clamp(whole.across.middle() - label.across.length / 2, plot.across.from,
                                         plot.across.from + room);
        const Box box = BarWays{{from, label.along.length}, {across, label.across.length}}.box(lies);
        bool const is_free =
            std::ranges::none_of(bars_, [&](LabelledBar const& other) { return overlap(box, other.extent); });
        return is_free && keeps_clear(box) ? std::optional(Spot{box, false}) : std::nullopt;
    }

    std::optional<Spot> inside(LabelledBar const& bar, BarWays const& seen, BarWays const& label,
                               bool at_end) const {
        bool const lies = bar.set->BarHoriz;
        double const air = at_end ? gap(lies) : 0;
        if (seen.along.length < label.along.length + 2 * air || seen.across.length < label.across.length)
            return std::nullopt;
        double along = seen.along.middle() - label.along.length / 2;
        if (at_end)
            along = leads_up(bar) ? seen.along.to() - air - label.along.length : seen.along.from + air;
        const Box box = BarWays{{along, label.along.length},
                                {seen.across.middle() - label.across.length / 2, label.across.length}}
                            .box(lies);
        return keeps_clear(box) ? std::optional(Spot{box, true}) : std::nullopt;
    }

    bool keeps_clear(Box const& box) const {
        return std::ranges::none_of(written_, [&](Box const& other) { return overlap(box, other); });
    }

    ControlState& state_;
    DrawSurface& surface_;
    Graph& graph_;
    BarPlan const& plan_;
    Box plot_;
    std::vector<LabelledBar> bars_;
    std::vector<Box> written_;
};

} // namespace

void draw_bar_labels(ControlState& state, DrawSurface& surface, Graph& graph, BarPlan const& plan) {
    // Those of polar bars would stand where straight ones are.
    if (graph.GraphPolar || !std::ranges::any_of(graph.DataSets, has_labels)) return;
    LabelWriter(state, surface, graph, plan).write();
}

} // namespace qv::render
