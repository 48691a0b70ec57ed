#include "render/grids/contour_lines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace qv::render {
namespace {

using document::Grid;

constexpr std::uint16_t missing = 0xFFFF;

/// The sides of a square between four middles, in turn; the corner of the same number comes before a side.
enum Side : std::uint8_t { Bottom, Right, Top, Left };

Side opposite(Side side) {
    return static_cast<Side>((side + 2) % 4);
}

/// Whichever sides a line enters by, where it leaves again.
class Squares {
public:
    Squares(Grid const& grid, std::span<double const> levels, bool is_log)
        : grid_(grid), levels_(levels), is_log_(is_log), columns_(grid.columns()), across_(columns_ - 1),
          up_(grid.rows() - 1), passed_(grid.values.size()) {
        std::ranges::transform(grid.values, passed_.begin(),
                               [&](double value) { return levels_passed(value); });
        used_.assign(across_ * up_, 0);
    }

    std::vector<ContourLine> lines() {
        find_crossed();
        for (std::size_t level = 0; level < levels_.size(); ++level) {
            level_ = level;
            for (std::size_t const square : crossed_[level]) start_at_ends(square);
            for (std::size_t const square : crossed_[level]) start_within(square);
            for (std::size_t const square : crossed_[level]) used_[square] = 0;
        }
        return std::move(lines_);
    }

private:
    // How many levels a value has reached.
    std::uint16_t levels_passed(double value) const {
        if (!std::isfinite(value) || (is_log_ && !(value > 0))) return missing;
        return static_cast<std::uint16_t>(std::ranges::upper_bound(levels_, value) - levels_.begin());
    }

    std::size_t corner(std::size_t square, int number) const {
        std::size_t const node = square / across_ * columns_ + square % across_;
        constexpr std::array<std::uint8_t, 4> right{0, 1, 1, 0}, above{0, 0, 1, 1};
        auto const n = static_cast<std::size_t>(number % 4);
        return node + right[n] + above[n] * columns_;
    }

    bool is_whole(std::size_t square) const {
        for (int i = 0; i < 4; ++i)
            if (passed_[corner(square, i)] == missing) return false;
        return true;
    }

    void find_crossed() {
        crossed_.resize(levels_.size());
        for (std::size_t square = 0; square < across_ * up_; ++square) {
            std::uint16_t const a = passed_[corner(square, 0)], b = passed_[corner(square, 1)],
                                c = passed_[corner(square, 2)], d = passed_[corner(square, 3)];
            auto const [low, high] = std::minmax({a, b, c, d});
            if (low == high || high == missing) continue;
            for (std::size_t level = low; level < high; ++level) crossed_[level].push_back(square);
        }
    }

    bool is_above(std::size_t square, int number) const { return passed_[corner(square, number)] > level_; }
    bool crosses(std::size_t square, Side side) const {
        return is_above(square, side) != is_above(square, side + 1);
    }

    /// The side by which the line leaves that enters by this one.
    Side exit(std::size_t square, Side entry) const {
        int crossings = 0;
        Side other = entry;
        for (Side const side : {Bottom, Right, Top, Left})
            if (crosses(square, side)) {
                ++crossings;
                if (side != entry) other = side;
            }
        if (crossings == 2) return other;
        // Corners on one side of the level are joined through the middle where the saddle is on that side.
        // The corner that is cut off lies at one end of the side, and so does the next crossing.
        bool const joined = saddle_is_above(square);
        bool const cuts_off_first = is_above(square, entry) != joined;
        return static_cast<Side>((entry + (cuts_off_first ? 3 : 1)) % 4);
    }

    double on_scale(double value) const { return is_log_ ? std::log(value) : value; }
    double height(std::size_t square, int number) const {
        return on_scale(grid_.values[corner(square, number)]) - on_scale(levels_[level_]);
    }

    // The bilinear surface has its saddle at the height (ac - bd) / (a - b + c - d) over the level.
    bool saddle_is_above(std::size_t square) const {
        double const a = height(square, 0), b = height(square, 1), c = height(square, 2),
                     d = height(square, 3);
        double const largest = std::max({std::abs(a), std::abs(b), std::abs(c), std::abs(d)});
        if (!(largest > 0) || !std::isfinite(largest)) return false;
        double const top = a / largest * (c / largest) - b / largest * (d / largest);
        double const bottom = a / largest - b / largest + c / largest - d / largest;
        return bottom != 0 && top / bottom >= 0;
    }

    Point crossing(std::size_t square, Side side) const {
        double const from = height(square, side), to = height(square, side + 1);
        // Halves, because the difference may be more than there is.
        double share = (from / 2) / (from / 2 - to / 2);
        share = share >= 0 ? std::min(share, 1.0) : 0.0;
        std::size_t const column = square % across_, row = square / across_;
        auto const x = static_cast<double>(column), y = static_cast<double>(row);
        switch (side) {
        case Bottom: return {x + share, y};
        case Right: return {x + 1, y + share};
        case Top: return {x + 1 - share, y + 1};
        default: return {x, y + 1 - share};
        }
    }

    bool has_neighbour(std::size_t square, Side side) const {
        switch (side) {
        case Bottom: return square >= across_;
        case Right: return square % across_ + 1 < across_;
        case Top: return square / across_ + 1 < up_;
        default: return square % across_ > 0;
        }
    }
    std::size_t neighbour(std::size_t square, Side side) const {
        switch (side) {
        case Bottom: return square - across_;
        case Right: return square + 1;
        case Top: return square + across_;
        default: return square - 1;
        }
    }
    bool leads_on(std::size_t square, Side side) const {
        return has_neighbour(square, side) && is_whole(neighbour(square, side));
    }

    bool is_used(std::size_t square, Side side) const { return used_[square] >> side & 1; }

    void start_at_ends(std::size_t square) {
        for (Side const side : {Bottom, Right, Top, Left})
            if (crosses(square, side) && !is_used(square, side) && !leads_on(square, side))
                follow(square, side);
    }
    void start_within(std::size_t square) {
        for (Side const side : {Bottom, Right, Top, Left})
            if (crosses(square, side) && !is_used(square, side)) follow(square, side);
    }

    void follow(std::size_t square, Side entry) {
        ContourLine line{level_, {crossing(square, entry)}, {}, {}};
        while (true) {
            Side const way_out = exit(square, entry);
            used_[square] = static_cast<std::uint8_t>(used_[square] | 1 << entry | 1 << way_out);
            const Point place = crossing(square, way_out);
            if (place != line.places.back()) line.places.push_back(place);
            if (!leads_on(square, way_out)) break;
            square = neighbour(square, way_out);
            entry = opposite(way_out);
            if (is_used(square, entry)) { // round to where it began, seen from the other square
                line.places.back() = line.places.front();
                break;
            }
        }
        if (line.places.size() < 2) return;
        line.low = line.high = line.places.front();
        for (Point const place : line.places) {
            line.low = {std::min(line.low.x, place.x), std::min(line.low.y, place.y)};
            line.high = {std::max(line.high.x, place.x), std::max(line.high.y, place.y)};
        }
        lines_.push_back(std::move(line));
    }

    Grid const& grid_;
    std::span<double const> levels_;
    bool is_log_;
    std::size_t columns_, across_, up_; // nodes in a row; squares
    std::vector<std::uint16_t> passed_; // levels that each middle has reached
    std::vector<std::uint8_t> used_;    // sides of each square that the lines of the level at hand cross
    std::vector<std::vector<std::size_t>> crossed_; // squares, by level
    std::size_t level_ = 0;
    std::vector<ContourLine> lines_;
};

} // namespace

std::vector<ContourLine> contour_lines(Grid const& grid, std::span<double const> levels, bool is_log) {
    if (grid.columns() < 2 || grid.rows() < 2 || levels.empty()) return {};
    std::span<double const> shown = levels;
    if (is_log) // levels that are not positive have no line
        shown = shown.subspan(static_cast<std::size_t>(std::ranges::upper_bound(shown, 0.0) - shown.begin()));
    if (shown.empty()) return {};
    std::vector<ContourLine> lines = Squares(grid, shown, is_log).lines();
    for (ContourLine& line : lines) line.level += levels.size() - shown.size();
    return lines;
}

} // namespace qv::render
