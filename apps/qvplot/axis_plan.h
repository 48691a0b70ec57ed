// What is decided about an axis before it is drawn: its range, its ticks and how they are labelled.
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace qv::plot {

struct Extent {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void include(double value) {
        if (value < low) low = value;
        if (value > high) high = value;
    }
    double span() const { return high - low; }
    bool operator==(Extent const&) const = default;
};

/// How many labels an axis has room for.
struct LabelRoom {
    int labels = 10;
    double characters = std::numeric_limits<double>::infinity(); // all labels together, with their gaps
    bool holds(std::size_t count, std::size_t label_characters) const {
        constexpr std::size_t gap = 3; // characters between two labels
        return count <= static_cast<std::size_t>(labels)
               && static_cast<double>(count * (label_characters + gap)) <= characters;
    }
};

/// How far outwards the ends of an axis are rounded; those of one that is zoomed not at all.
enum class RoundTo : std::uint8_t { Nothing, FifthOfTick, Tick };

struct AxisPlan {
    Extent range;
    std::vector<double> major; // ascending; no two have the same label
    std::vector<double> minor;
    std::string format;   // picture of the labels; empty: the control's own
    std::string left_out; // what all labels leave out, such as the year
    bool is_log = false;
};

} // namespace qv::plot
