#include "render/kinds/pie.h"

#include "base/text.h"
#include "document/selection.h"
#include "render/kinds/pie_shapes.h"
#include "render/kinds/slice_labels.h"
#include "render/pen.h"
#include "render/plot_geometry.h"
#include "render/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>

namespace qv::render {
namespace {

using document::ControlState;
using document::DataSet;

constexpr double whole_turn = PieFrame::whole_turn;
constexpr double no_place = std::numeric_limits<double>::quiet_NaN();
constexpr double edge_room_mm = 1;
constexpr double leader_mm = 3;       // from the rim to the labels
constexpr double label_gap_mm = 1;    // from a leader line to its label
constexpr double least_radius = 0.35; // of half the plot area, before labels are left out for it
constexpr double most_hole = 0.95;
constexpr std::size_t most_rows = 40; // of the legend

using Slices = std::vector<Slice>;

/// What was worked out of the points, and where the pie was drawn last; its labels decide how large that is.
struct PieMemory : document::DerivedData {
    std::shared_ptr<Slices const>
        slices;           // shared, because a handler may have them worked out anew while they are drawn
    std::size_t size = 0; // of the points they belong to
    std::size_t dropped = 0;
    float gather = 0;
    std::string gather_name;
    Point centre;
    double radius = 0; // 0: not drawn

    bool belongs_to(DataSet const& set) const {
        bool const gathers_alike =
            gather == set.PieGather || (std::isnan(gather) && std::isnan(set.PieGather));
        return size == set.points.size() && dropped == set.points.dropped() && gathers_alike
               && gather_name == set.PieGatherName;
    }
};

PieMemory& memory_of(DataSet const& set) {
    auto* const known = dynamic_cast<PieMemory*>(set.derived.get());
    if (known && known->belongs_to(set)) return *known;
    auto memory = std::make_unique<PieMemory>();
    memory->slices = std::make_shared<Slices const>(slices_of(set));
    memory->size = set.points.size();
    memory->dropped = set.points.dropped();
    memory->gather = set.PieGather;
    memory->gather_name = set.PieGatherName;
    PieMemory& made = *memory;
    set.derived = std::move(memory);
    return made;
}

Slices const& known_slices(DataSet const& set) {
    return *memory_of(set).slices;
}

PieFrame frame_of(DataSet const& set, Point centre, double radius) {
    double const hole = std::isfinite(set.PieHole) ? std::clamp<double>(set.PieHole / 100, 0, most_hole) : 0;
    double const degrees = std::isfinite(set.PieStart) ? std::fmod(set.PieStart, 360) : 0;
    return {centre, radius, radius * hole, degrees * whole_turn / 360, set.PieLeft ? -1.0 : 1.0};
}

std::optional<PieFrame> drawn_frame(DataSet const& set) {
    PieMemory const& memory = memory_of(set);
    if (!(memory.radius > 0)) return std::nullopt;
    return frame_of(set, memory.centre, memory.radius);
}

PieLabels labels_of(DataSet const& set) {
    return set.PieLabels <= static_cast<std::uint8_t>(PieLabels::Nothing)
               ? static_cast<PieLabels>(set.PieLabels)
               : PieLabels::NameAndPercent;
}

// Sums keep the digits of what was summed.
std::string value_text(double value) {
    std::array<char, 32> text{};
    auto const end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, 12);
    return {text.data(), end.ptr};
}

std::string label_text(DataSet const& set, Slice const& slice) {
    switch (labels_of(set)) {
    case PieLabels::NameAndPercent: return slice.name + " " + percent_of(slice.share);
    case PieLabels::NameAndValue: return slice.name + " " + value_text(slice.value);
    case PieLabels::Percent: return percent_of(slice.share);
    case PieLabels::Value: return value_text(slice.value);
    case PieLabels::Name: return slice.name;
    default: return {};
    }
}

/// \name Labels
/// \{

struct SliceLabel {
    std::size_t slice = 0;
    std::string text;
    TextBlock size;
    double angle = 0;  // of its slice's middle
    bool right = true; // of the pie
    double middle = 0; // of its height, on the page
};

double middle_share(Slice const& slice) {
    return slice.before + slice.share / 2;
}

bool lies_right(double angle) {
    return std::sin(angle) >= 0;
}

/// Slices from the largest to the smallest, of equal ones the first before the next. Mostly few are asked
/// for.
class LargestFirst {
public:
    explicit LargestFirst(Slices const& slices) {
        left_.reserve(slices.size());
        for (std::size_t i = 0; i < slices.size(); ++i) left_.push_back({slices[i].share, i});
        std::ranges::make_heap(left_, is_behind);
    }
    std::optional<std::size_t> next() {
        if (left_.empty()) return std::nullopt;
        std::ranges::pop_heap(left_, is_behind);
        std::size_t const slice = left_.back().slice;
        left_.pop_back();
        return slice;
    }

private:
    struct Size {
        double share;
        std::size_t slice;
    };
    static bool is_behind(Size const& one, Size const& other) {
        return one.share != other.share ? one.share < other.share : one.slice > other.slice;
    }
    std::vector<Size> left_;
};

/// The labels that have room one below the other on their side, those of the largest slices first.
std::vector<SliceLabel> labels_with_room(SeriesView const& view, DrawSurface& surface,
                                         std::vector<Slice> const& slices, PieFrame const& turns) {
    std::vector<SliceLabel> labels;
    if (labels_of(view.set) == PieLabels::Nothing) return labels;
    LargestFirst by_size(slices);
    std::array<double, 2> taken{};
    std::array<bool, 2> full{};
    while (auto const largest = by_size.next()) {
        std::size_t const i = *largest;
        double const angle = turns.angle(middle_share(slices[i]));
        auto const side = static_cast<std::size_t>(lies_right(angle));
        if (full[side]) continue;
        SliceLabel label{i, label_text(view.set, slices[i]), {}, angle, side == 1, 0};
        label.size = text_block(surface, label.text, markup_of_host_texts(view.state));
        taken[side] += label.size.height;
        full[side] = taken[side] > view.plot.height;
        if (!full[side]) labels.push_back(std::move(label));
        if (full[0] && full[1]) break;
    }
    return labels;
}

void push_apart(std::vector<SliceLabel>& labels, PieFrame const& frame, double reach, Box const& plot) {
    for (bool const right : {false, true}) {
        std::vector<SliceLabel*> side;
        for (SliceLabel& label : labels)
            if (label.right == right) side.push_back(&label);
        for (SliceLabel* label : side) label->middle = frame.at(label->angle, reach).y;
        std::ranges::stable_sort(side, {}, [](SliceLabel const* label) { return label->middle; });
        std::vector<WishedPlace> wishes;
        wishes.reserve(side.size());
        for (SliceLabel const* label : side) wishes.push_back({label->middle, label->size.height});
        auto const middles = pushed_apart(wishes, plot.top, plot.bottom());
        for (std::size_t i = 0; i < side.size(); ++i) side[i]->middle = middles[i];
    }
}

/// Where the leader line of a label ends: outside the pie and all of the label's height beside it.
Point leader_end(SliceLabel const& label, PieFrame const& frame, double reach) {
    double const away = std::max(0.0, std::abs(label.middle - frame.centre.y) - label.size.height / 2);
    double const aside = away < reach ? std::sqrt(reach * reach - away * away) : 0;
    return {frame.centre.x + (label.right ? aside : -aside), label.middle};
}

struct Across {
    double start = 0, end = 0;
};
Across text_across(SliceLabel const& label, Point leader_end, double gap) {
    double const start = label.right ? leader_end.x + gap : leader_end.x - gap - label.size.width;
    return {start, start + label.size.width};
}

bool fit_beside(std::vector<SliceLabel> labels, SeriesView const& view, PieFrame const& frame) {
    double const mm = view.state.UnitsPerMmX, reach = frame.outer + leader_mm * mm;
    push_apart(labels, frame, reach, view.plot);
    return std::ranges::all_of(labels, [&](SliceLabel const& label) {
        const Across text = text_across(label, leader_end(label, frame, reach), label_gap_mm * mm);
        return text.start >= view.plot.left && text.end <= view.plot.right();
    });
}

/// The largest radius that leaves the labels their room, but not less than some.
double radius_beside(std::vector<SliceLabel> const& labels, SeriesView const& view, Point centre) {
    double const mm = view.state.UnitsPerMmX;
    double const half_width = view.plot.width / 2, half_height = view.plot.height / 2;
    double const most = std::min(half_width, half_height) - edge_room_mm * mm;
    if (labels.empty() || most <= 0) return most;
    double highest = 0;
    for (SliceLabel const& label : labels) highest = std::max(highest, label.size.height);
    double fits = least_radius * most;
    double too_large = std::max(fits, std::min(half_width, half_height - highest) - leader_mm * mm);
    constexpr int halvings = 10;
    for (int i = 0; i < halvings; ++i) {
        double const radius = (fits + too_large) / 2;
        (fit_beside(labels, view, frame_of(view.set, centre, radius)) ? fits : too_large) = radius;
    }
    return fits;
}

/// From the rim to the label; round the pie where a straight line would cross it.
std::vector<Point> leader(SliceLabel const& label, PieFrame const& frame, double reach) {
    const Point rim = frame.at(label.angle, frame.outer), end = leader_end(label, frame, reach);
    std::vector<Point> path{rim};
    bool const crosses =
        (end.x - rim.x) * (rim.x - frame.centre.x) + (end.y - rim.y) * (rim.y - frame.centre.y) < 0;
    if (crosses) {
        double const from = label.angle, to = std::atan2(end.x - frame.centre.x, frame.centre.y - end.y);
        double const way = std::remainder(to - from, whole_turn);
        double const between = (frame.outer + reach) / 2;
        constexpr int pieces = 12;
        for (int i = 0; i <= pieces; ++i) path.push_back(frame.at(from + way * i / pieces, between));
    }
    path.push_back(end);
    return path;
}

// Looks nothing up again: a font that cannot be read raises ErrorMsg, whose handler may drop the data set.
void draw_labels(SeriesView const& view, DrawSurface& surface, std::vector<SliceLabel> const& labels,
                 PieFrame const& frame, double reach) {
    ControlState& state = view.state;
    const std::string font = view.set.DataTextFont;
    const Color color = view.set.DataTextColor;
    const Box plot = view.plot;
    double const gap = label_gap_mm * state.UnitsPerMmX;
    for (SliceLabel const& label : labels) {
        const Point end = leader_end(label, frame, reach);
        const Across text = text_across(label, end, gap);
        if (text.start < plot.left || text.end > plot.right()) continue; // half a text tells nothing
        {
            const PenScope pen(surface, 1);
            surface.state.ForeColor = color;
            surface.Polyline(leader(label, frame, reach));
        }
        PrintText(state, surface, label.text,
                  {{text.start, label.middle}, Align::Start, Align::Centre, 0, true}, {font, color});
    }
}
/// \}

// A font that cannot be read raises ErrorMsg, whose handler may drop the data.
bool is_still_there(SeriesView const& view) {
    return view.index < view.graph.NumDataSets() && &at(view.graph.DataSets, view.index) == &view.set;
}

void keep_drawn(DataSet const& set, PieFrame const& frame) {
    PieMemory& memory = memory_of(set);
    memory.centre = frame.centre;
    memory.radius = frame.outer;
}

void draw_pie(SeriesView const& view, DrawSurface& surface) {
    DataSet const& set = view.set;
    memory_of(set).radius = 0;
    const std::shared_ptr<Slices const> kept = memory_of(set).slices;
    Slices const& slices = *kept;
    if (slices.empty()) return;
    const Point centre{view.plot.left + view.plot.width / 2, view.plot.top + view.plot.height / 2};
    SetGraphFont(view.state, surface, std::string(set.DataTextFont));
    if (!is_still_there(view)) return;
    auto labels = labels_with_room(view, surface, slices, frame_of(set, centre, 1));
    const PieFrame frame = frame_of(set, centre, radius_beside(labels, view, centre));
    if (!(frame.outer > 0)) return;
    keep_drawn(set, frame);
    double const reach = frame.outer + leader_mm * view.state.UnitsPerMmX;
    push_apart(labels, frame, reach, view.plot);
    if (!set.DataSymbolFill.Transparent) fill_slices(view.state, surface, frame, slices);
    edge_slices(surface, frame, slices, set.DataSymbolFill);
    draw_labels(view, surface, labels, frame, reach);
}

Box bounds(std::vector<Point> const& outline) {
    auto const [left, right] = std::ranges::minmax_element(outline, {}, &Point::x);
    auto const [top, bottom] = std::ranges::minmax_element(outline, {}, &Point::y);
    return {left->x, top->y, right->x - left->x, bottom->y - top->y};
}

class Pies : public SeriesKind {
public:
    bool lies_on_axes() const override { return false; }

    void draw(SeriesView const& view, DrawSurface& surface) const override { draw_pie(view, surface); }

    void include_reach(ControlState const& /*state*/, DataSet const& /*set*/, AxisReach const& /*x*/,
                       AxisReach const& /*y*/) const override {}

    void draw_sample(SeriesView const& view, DrawSurface& surface, Box const& box) const override {
        draw_row_sample(view, surface, box, 0);
    }

    std::vector<std::string> legend_texts(DataSet const& set) const override {
        std::vector<std::string> texts;
        for (Slice const& slice : known_slices(set)) {
            texts.push_back(slice.name);
            if (texts.size() < most_rows) continue;
            texts.back() = "…";
            break;
        }
        return texts;
    }

    void draw_row_sample(SeriesView const& view, DrawSurface& surface, Box const& box,
                         std::size_t row) const override {
        std::size_t const count = item_count(view.set);
        if (row >= count || (row + 1 == most_rows && count > most_rows)) return;
        document::FillSpec const& fill = view.set.DataSymbolFill;
        const Box square{box.left + (box.width - box.height) / 2, box.top, box.height, box.height};
        if (!fill.Transparent) fill_box(surface, square, slice_color(view.state, row, count));
        if (fill.EdgeThickness == 0) return;
        const PenScope pen(surface, fill.EdgeThickness);
        outline_box(surface, square, fill.EdgeColor);
    }

    std::size_t item_count(DataSet const& set) const override { return known_slices(set).size(); }

    Box item_box(SeriesView const& view, std::size_t item) const override {
        auto const frame = drawn_frame(view.set);
        Slices const& slices = known_slices(view.set);
        if (!frame || item >= slices.size()) return {no_place, no_place, 0, 0};
        constexpr double pixel = 15;
        Slice const& slice = slices[item];
        return bounds(slice_outline(*frame, slice.before, slice.before + slice.share, pixel));
    }

    std::optional<std::size_t> item_at(SeriesView const& view, Point place) const override {
        auto const frame = drawn_frame(view.set);
        if (!frame) return std::nullopt;
        double const away = std::hypot(place.x - frame->centre.x, place.y - frame->centre.y);
        if (away > frame->outer || away < frame->inner) return std::nullopt;
        Slices const& slices = known_slices(view.set);
        double const share = frame->share_at(place);
        auto const next = std::ranges::upper_bound(slices, share, {}, &Slice::before);
        if (next == slices.begin()) return std::nullopt;
        return static_cast<std::size_t>(next - slices.begin() - 1);
    }

    std::vector<Fact> item_facts(DataSet const& set, std::size_t item) const override {
        Slices const& slices = known_slices(set);
        if (item >= slices.size()) return {};
        Slice const& slice = slices[item];
        return {{"", 0, Fact::Of::Text, slice.name},
                {"", 0, Fact::Of::Text, value_text(slice.value)},
                {"", 0, Fact::Of::Text, percent_of(slice.share)}};
    }
};

/// The small ones become one, the last, if that makes any difference.
void gather(std::vector<Slice>& slices, DataSet const& set) {
    auto const is_small = [&](Slice const& slice) { return slice.share * 100 < set.PieGather; };
    if (!(set.PieGather > 0) || std::ranges::count_if(slices, is_small) < 2) return;
    Slice others{set.PieGatherName, 0, 0, 0};
    for (Slice const& slice : slices)
        if (is_small(slice)) {
            others.value += slice.value;
            others.share += slice.share;
        }
    std::erase_if(slices, is_small);
    slices.push_back(std::move(others));
}

} // namespace

SeriesKind const* pie_kind() {
    static const Pies pies;
    return &pies;
}

std::vector<Slice> slices_of(DataSet const& set) {
    std::vector<Slice> slices;
    std::size_t number = 0;
    double largest = 0, parts = 0;
    for (document::PointBlock const& block : set.points.blocks())
        for (std::size_t i = 0; i < block.size(); ++i) {
            ++number;
            double const value = block.y()[i];
            if (!std::isfinite(value) || !(value > 0)) continue;
            std::string name(block.entry(i).DataID);
            slices.push_back({name.empty() ? std::to_string(number) : std::move(name), value, 0, 0});
            largest = std::max(largest, value);
        }
    // Parts of the largest, whose sum is finite whatever the values.
    for (Slice const& slice : slices) parts += slice.value / largest;
    for (Slice& slice : slices) slice.share = slice.value / largest / parts;
    gather(slices, set);
    double before = 0;
    for (Slice& slice : slices) {
        slice.before = before;
        before += slice.share;
    }
    return slices;
}

std::string percent_of(double share) {
    double const percent = share * 100;
    if (percent > 0 && percent < 0.05) return "<0.1 %";
    if (share < 1 && percent >= 99.95) return ">99.9 %";
    std::array<char, 32> text{};
    auto const end =
        std::to_chars(text.data(), text.data() + text.size(), percent, std::chars_format::fixed, 1);
    std::string_view shown(text.data(), static_cast<std::size_t>(end.ptr - text.data()));
    if (shown.ends_with(".0")) shown.remove_suffix(2);
    return std::string(shown) + " %";
}

} // namespace qv::render
