#include "render/axes/tick_labels.h"

#include "render/axes/axes.h"
#include "render/axes/category_labels.h"
#include "render/axes/time_labels.h"
#include "render/plot_geometry.h"
#include "scale/category_text.h"
#include "scale/mapping.h"
#include "scale/number_format.h"
#include "scale/round_ticks.h"
#include "scale/time_text.h"
#include "surface/whole_pixel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <numbers>

namespace qv::render {
namespace {

using document::Axis;
using document::AxisKind;
using document::AxisMode;

constexpr std::int16_t label_digits = 6;
constexpr double label_tolerance = 0.01; // of the distance to the next major tick

// A label leads along the axis, or straight away from it, when its direction is this close.
constexpr double straight = 1e-6;

LabelTurn label_turn(AxisFrame const& frame, Axis const& axis) {
    return render::label_turn(frame, axis.AxisLabelsHoriz);
}

// To the nearest other value; the range where there is none.
double distance_to_next(std::vector<double> const& sorted, double value, AxisSpan const& range) {
    double distance = std::abs(range.high - range.low);
    auto const [same, above] = std::equal_range(sorted.begin(), sorted.end(), value);
    if (same != sorted.begin()) distance = std::min(distance, value - *std::prev(same));
    if (above != sorted.end()) distance = std::min(distance, *above - value);
    return distance;
}

std::vector<scale::ShownNumber> shown_numbers(std::vector<PlacedTick const*> const& majors,
                                              AxisSpan const& range) {
    std::vector<double> sorted;
    sorted.reserve(majors.size());
    for (PlacedTick const* tick : majors) sorted.push_back(tick->value);
    std::ranges::sort(sorted);
    std::vector<scale::ShownNumber> numbers;
    numbers.reserve(majors.size());
    for (PlacedTick const* tick : majors)
        numbers.push_back({tick->value, label_tolerance * distance_to_next(sorted, tick->value, range)});
    return numbers;
}

// Of ticks given by the host. False where one lies beyond the calendar.
bool label_with_times(Axis const& axis, std::vector<PlacedTick*> const& majors, AxisSpan const& range) {
    const scale::TimeZone zone = scale::TimeZone::named(axis.AxisTimeZone);
    std::vector<std::string> texts;
    for (scale::ShownNumber const& number : shown_numbers({majors.begin(), majors.end()}, range)) {
        double const step = number.tolerance / label_tolerance;
        auto const text = scale::time_at_pixel(number.value, step, zone, axis.AxisTextLabels);
        if (!text) return false;
        texts.push_back(*text);
    }
    for (std::size_t i = 0; i < majors.size(); ++i) majors[i]->label = texts[i];
    return true;
}

void label_with_numbers(Axis const& axis, std::vector<PlacedTick>& ticks, AxisSpan const& range) {
    std::vector<PlacedTick*> majors;
    for (PlacedTick& tick : ticks)
        if (tick.kind == TickKind::Major) majors.push_back(&tick);
    if (axis.AxisTime && !axis.AxisCategories && label_with_times(axis, majors, range)) return;
    if (axis.AxisCategories) {
        for (PlacedTick* tick : majors) tick->label = scale::category_text(axis, tick->value).value_or("");
        return;
    }
    if (!axis.AxisTextLabels.empty() && !axis.AxisTime) {
        for (PlacedTick* tick : majors) tick->label = scale::EasyFormat(tick->value, 0, axis.AxisTextLabels);
        return;
    }
    const std::vector<std::string> texts =
        scale::number_texts(shown_numbers({majors.begin(), majors.end()}, range), label_digits);
    for (std::size_t i = 0; i < majors.size(); ++i) majors[i]->label = texts[i];
}

// The values between which ticks are looked for. A logarithmic axis has them where it is seen: a zoomed one
// is rounded far beyond that. Labels counted off belong to the whole range.
TickScale tick_scale(Axis const& axis, AxisSpan const& range, double pixel_share) {
    bool const counted = axis.has_mode(AxisMode::TextLabels);
    bool const as_seen = axis.AxisLog && !counted;
    return {.low = as_seen ? axis.AxisValue1 : range.low,
            .high = as_seen ? axis.AxisValue2 : range.high,
            .major_divs = axis.AxisMajorDivs,
            .minor_divs = axis.AxisMinorDivs,
            .is_log = axis.AxisLog,
            .majors_are_powers = counted,
            .pixel_share = pixel_share,
            .given_majors = axis.major_tick_values,
            .given_minors = axis.minor_tick_values};
}

bool overlap_with_stride(std::vector<PlacedTick const*> const& labelled, std::size_t stride, double padding,
                         auto const& size_along) {
    for (std::size_t i = stride; i < labelled.size(); i += stride) {
        PlacedTick const& before = *labelled[i - stride];
        PlacedTick const& tick = *labelled[i];
        double const room = std::abs(tick.along - before.along);
        if (room < (size_along(before) + size_along(tick)) / 2 + padding) return true;
    }
    return false;
}

scale::AxisMap map_of(document::Graph const& graph, Axis const& axis) {
    return axis.AxisXY == AxisKind::X ? scale::x_map(graph, axis) : scale::y_map(graph, axis);
}

Markup label_markup(document::ControlState const& state, Axis const& axis) {
    return axis.AxisTextLabels.empty() ? Markup::Read : markup_of_host_texts(state);
}

// Labels may reach out of the plot area as far as the graph's frame.
scale::LabelRoom label_room(document::ControlState& state, DrawSurface& surface, AxisFrame const& frame,
                            Axis const& axis) {
    // Ticks this many line heights apart look neither crowded nor lost.
    constexpr double spacing_along = 3.4, spacing_across = 2.2;
    document::Graph const& graph = document::current_graph(state);
    const LabelTurn turn = label_turn(frame, axis);
    const Box box = frame_box(graph);
    bool const is_x = frame.kind == AxisKind::X;
    double const before = frame.along_low() - (is_x ? box.left : box.top);
    double const beyond = (is_x ? box.right() : box.bottom()) - frame.along_high();
    const scale::AxisMap map = map_of(graph, axis);
    bool const rises = (map(axis.AxisValue1) < map(axis.AxisValue2)) == (axis.AxisValue1 < axis.AxisValue2);
    double const height = surface.TextHeight("A");
    const Markup markup = label_markup(state, axis);
    return {.length = frame.along_high() - frame.along_low(),
            .before_low = rises ? before : beyond,
            .beyond_high = rises ? beyond : before,
            .line_height = height,
            .gap = 1.6 * least_gap(turn, height), // not only apart, but airy
            .spacing = height * (turn.runs_along_axis() ? spacing_along : spacing_across),
            .extent = [&surface, turn, markup](std::string_view label) {
                return length_along(turn, text_block(surface, label, markup));
            }};
}

/// All that round ticks follow from.
struct TickQuestion {
    scale::TickSpan span;
    std::array<double, 6> room{};
    bool si_prefix = false, with_offset = false;
    std::string text_labels;
    std::array<double, 2> turn{};
    Markup markup = Markup::Ignored;
    DrawSurface const* surface = nullptr;
    std::array<double, 2> twips_per_pixel{};
    Font font;
    bool smooth = true;
    bool operator==(TickQuestion const&) const = default;
};

/// An axis is measured with two or three margins and then drawn twice, mostly as at the last refresh: what
/// was chosen last is kept.
struct KnownTicks : document::DerivedData {
    struct Answer {
        TickQuestion question;
        scale::RoundTicks ticks;
    };
    std::array<Answer, 4> answers;
    std::size_t oldest = 0;
};

KnownTicks& known_ticks(Axis const& axis) {
    if (!axis.round_ticks) axis.round_ticks = std::make_shared<KnownTicks>();
    return static_cast<KnownTicks&>(*axis.round_ticks);
}

scale::RoundTicks const& round_ticks_of(document::ControlState& state, DrawSurface& surface,
                                        AxisFrame const& frame, Axis const& axis) {
    const scale::LabelRoom room = label_room(state, surface, frame, axis);
    const LabelTurn turn = label_turn(frame, axis);
    TickQuestion question{
        {axis.AxisValue1, axis.AxisValue2, axis.AxisLog},
        {room.length, room.before_low, room.beyond_high, room.line_height, room.gap, room.spacing},
        axis.AxisSIPrefix,
        axis.AxisOffset,
        axis.AxisTextLabels,
        {turn.along_text, turn.down_lines},
        label_markup(state, axis),
        &surface,
        {surface.TwipsPerPixelX(), surface.TwipsPerPixelY()},
        surface.state.font,
        surface.state.Smooth};
    KnownTicks& known = known_ticks(axis);
    auto const answer = std::ranges::find(known.answers, question, &KnownTicks::Answer::question);
    if (answer != known.answers.end()) return answer->ticks;
    scale::NumberStyle style{axis.AxisSIPrefix, axis.AxisOffset, {}};
    if (!axis.AxisTextLabels.empty())
        style.text = [&](double value) { return scale::EasyFormat(value, 0, axis.AxisTextLabels); };
    scale::RoundTicks ticks = scale::round_ticks(question.span, room, style);
    KnownTicks::Answer& kept = known.answers[known.oldest++ % known.answers.size()];
    kept = {std::move(question), std::move(ticks)};
    return kept.ticks;
}

std::vector<PlacedTick> place_round_ticks(document::ControlState& state, DrawSurface& surface,
                                          AxisFrame const& frame, Axis const& axis, std::string& offset) {
    scale::RoundTicks const& chosen = round_ticks_of(state, surface, frame, axis);
    offset = chosen.offset;
    const scale::AxisMap map = map_of(document::current_graph(state), axis);
    std::vector<PlacedTick> placed;
    placed.reserve(chosen.ticks.size());
    for (scale::RoundTick const& tick : chosen.ticks) {
        double const along = std::clamp(map(tick.value), frame.along_low(), frame.along_high());
        placed.push_back({along,
                          tick.is_major ? TickKind::Major : TickKind::Minor,
                          tick.value,
                          tick.label,
                          {},
                          true,
                          chosen.marked_up,
                          true});
    }
    return placed;
}

std::vector<PlacedTick> place_classic_ticks(document::ControlState& state, DrawSurface& surface,
                                            AxisFrame const& frame, Axis const& axis, AxisSpan range) {
    bool const is_x = frame.kind == AxisKind::X;
    const scale::AxisMap map = map_of(document::current_graph(state), axis);
    double const pixel = is_x ? surface.TwipsPerPixelX() : surface.TwipsPerPixelY();
    double const length = std::max(frame.along_high() - frame.along_low(), 1.0);
    const std::vector<Tick> ticks = axis_ticks(tick_scale(axis, range, pixel / length));
    bool const given_labels = axis.has_mode(AxisMode::TextLabels);
    std::string_view text_labels = axis.AxisTextLabels;
    std::vector<PlacedTick> placed;
    double last_major = -HUGE_VAL;
    for (Tick const& tick : ticks) {
        bool const major = tick.kind == TickKind::Major;
        // A major tick uses up its text even where it is not drawn.
        std::string label(major && given_labels ? NextToken(text_labels) : "");
        double const along = map(tick.value);
        double const tolerance = major ? 1 : 0;
        if (!(along >= frame.along_low() - tolerance && along <= frame.along_high() + tolerance)) continue;
        // Majors that fall into one pixel are one tick, with the first one's label.
        double const place = whole_pixel(along / pixel);
        if (major && place == last_major) continue;
        if (major) last_major = place;
        placed.push_back({along, tick.kind, tick.value, std::move(label), {}});
    }
    if (!given_labels) label_with_numbers(axis, placed, range);
    return placed;
}

std::vector<PlacedTick> chosen_ticks(document::ControlState& state, DrawSurface& surface,
                                     AxisFrame const& frame, Axis const& axis, AxisSpan range,
                                     LabelChoice& choice) {
    document::Graph const& graph = document::current_graph(state);
    if (has_time_ticks(axis))
        if (auto ticks = place_time_ticks(graph, surface, frame, axis, label_turn(frame, axis).along_text))
            return *std::move(ticks);
    if (axis.AxisCategories && axis.major_tick_values.empty())
        return place_category_ticks(state, surface, frame, axis, choice);
    bool const given = !axis.major_tick_values.empty() || axis.has_mode(AxisMode::TextLabels);
    if (state.RoundTicks && !given) return place_round_ticks(state, surface, frame, axis, choice.offset);
    return place_classic_ticks(state, surface, frame, axis, range);
}

} // namespace

bool LabelTurn::runs_along_axis() const {
    return std::abs(along_text) < straight;
}

LabelTurn label_turn(AxisFrame const& frame, std::int16_t angle_degrees) {
    double const angle = angle_degrees * std::numbers::pi / 180;
    double const outward = frame.own.outward;
    if (frame.kind == AxisKind::X) return {-std::sin(angle) * outward, std::cos(angle) * outward};
    return {std::cos(angle) * outward, std::sin(angle) * outward};
}

double length_along(LabelTurn const& turn, TextBlock const& label) {
    if (turn.runs_along_axis()) return label.width;
    return std::min(label.width, label.height / std::max(std::abs(turn.along_text), 0.1));
}

double least_gap(LabelTurn const& turn, double line_height) {
    return turn.runs_along_axis() ? line_height / 2 : 0;
}

std::vector<PlacedTick> place_ticks(document::ControlState& state, DrawSurface& surface,
                                    AxisFrame const& frame, Axis const& axis, AxisSpan range,
                                    LabelChoice& choice) {
    choice.angle_degrees = axis.AxisLabelsHoriz;
    std::vector<PlacedTick> placed = chosen_ticks(state, surface, frame, axis, range, choice);
    bool const shows_labels =
        axis.AxisShowLabels && !document::current_graph(state).leaves_out(document::LeftOut::Labels);
    if (!shows_labels) choice.offset.clear();
    for (PlacedTick& tick : placed) {
        if (!shows_labels) tick.label.clear();
        if (!tick.label.empty())
            tick.label_size = text_block(surface, tick.label,
                                         tick.label_is_ours ? Markup::Read : markup_of_host_texts(state));
    }
    return placed;
}

LabelLayout label_layout(DrawSurface& surface, AxisFrame const& frame, Axis const& axis,
                         std::vector<PlacedTick> const& ticks, LabelChoice const& choice) {
    const LabelTurn turn = label_turn(frame, choice.angle_degrees);
    LabelLayout layout;
    layout.angle_degrees = choice.angle_degrees;
    double const share = frame.kind == AxisKind::X ? 0.5 : 1;
    double const past_ticks = axis.AxisTicksOutside ? share * 2 * axis.AxisTickLength : 0;
    layout.gap = std::max(frame.own.half_line + past_ticks, frame.taken)
                 - share * axis.AxisLabelShift * frame.units_per_mm;
    double const along_text = std::abs(turn.along_text), down_lines = std::abs(turn.down_lines);
    if (axis.AxisShowLabels && turn.runs_along_axis()) layout.extent = surface.TextHeight("A");
    for (PlacedTick const& tick : ticks)
        layout.extent =
            std::max(layout.extent, tick.label_size.width * along_text + tick.label_size.height * down_lines);
    if (turn.runs_along_axis()) {
        layout.horizontal = Align::Centre;
        layout.vertical = turn.down_lines > 0 ? Align::Start : Align::End;
        return layout;
    }
    // The end of a text that is nearer to the axis stands at its tick.
    layout.horizontal = turn.along_text < 0 ? Align::End : Align::Start;
    layout.height_inside = down_lines / 2;
    // Numbers that lead straight away from a far side are a column, flush at its outer edge.
    layout.flush = frame.far_side && down_lines < straight && turn.along_text > 0;
    if (layout.flush) layout.horizontal = Align::End;
    return layout;
}

void thin_labels(DrawSurface& surface, AxisFrame const& frame, Axis const& axis,
                 std::vector<PlacedTick>& ticks) {
    if (std::ranges::any_of(ticks, &PlacedTick::has_room)) return;
    double const height = surface.TextHeight("A");
    const LabelTurn turn = label_turn(frame, axis);
    auto const size_along = [&](PlacedTick const& tick) {
        return tick.label.empty() ? 0.0 : length_along(turn, tick.label_size);
    };
    std::vector<PlacedTick const*> labelled;
    for (PlacedTick const& tick : ticks)
        if (tick.kind == TickKind::Major) labelled.push_back(&tick);
    double const padding = least_gap(turn, height);
    std::size_t stride = 1;
    while (stride < labelled.size() && overlap_with_stride(labelled, stride, padding, size_along)) ++stride;
    std::size_t index = 0;
    for (PlacedTick& tick : ticks)
        if (tick.kind == TickKind::Major) tick.show_label = index++ % stride == 0;
}

double label_reach_along(AxisFrame const& frame, LabelLayout const& layout, PlacedTick const& tick) {
    double const angle = layout.angle_degrees * std::numbers::pi / 180;
    double const cosine = std::abs(std::cos(angle)), sine = std::abs(std::sin(angle));
    bool const is_x = frame.kind == AxisKind::X;
    double const text = tick.label_size.width * (is_x ? cosine : sine);
    double const lines = tick.label_size.height * (is_x ? sine : cosine);
    // A text that stands with one end at its tick leads away from it by its whole length.
    bool const centred =
        std::min(text, lines) < straight * std::max(text, lines) || layout.horizontal == Align::Centre;
    return centred ? (text + lines) / 2 : text + lines / 2;
}

} // namespace qv::render
