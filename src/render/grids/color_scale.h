// Colour scales: from the values of a colour bar, or of a grid without one, to colours.
#pragma once

#include "document/ControlState.h"
#include "render/grids/color_map.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace qv::render {

/// The colour bar of a data set; nullptr where its graph has none of that number.
document::Axis const* color_axis_of(document::Graph const& graph, document::DataSet const& set);

/// Values beyond the ends have the colours of the ends. A value that is not-a-number, or not positive on a
/// logarithmic scale, has none.
class ColorScale {
public:
    /// Of a colour bar; without one from the smallest to the largest value of the data set's cells.
    ColorScale(document::Axis const* bar, document::Extent const& values);

    static constexpr std::uint16_t no_color = 0xFFFF;
    /// The number of a value's colour.
    std::uint16_t level(double value) const {
        if (std::isnan(value) || (is_log_ && !(value > 0))) return no_color;
        double const place = (on_scale(value) - start_) * factor_;
        return place >= last_level ? last_level : place > 0 ? static_cast<std::uint16_t>(place) : 0;
    }
    ColorMap const& map() const { return map_; }
    bool is_log() const { return is_log_; }
    /// Whether smaller values stand at the map's end.
    bool falls() const { return factor_ < 0; }

private:
    static constexpr std::uint16_t last_level = ColorMap::size - 1;
    double on_scale(double value) const { return is_log_ ? std::log(value) : value; }

    ColorMap map_;
    bool is_log_ = false;
    double start_ = 0;
    double factor_ = 0; // levels a unit of the scale
};

/// Which of several values in one pixel is shown: the one of highest rank. Of a map about a middle that is
/// the value farthest from it, of any other the largest, so that no peak vanishes. 0 is the rank of no value.
class ColorRanks {
public:
    ColorRanks(ColorScale const& scale, std::uint32_t missing_pixel);
    std::uint16_t rank(std::uint16_t level) const {
        return level == ColorScale::no_color ? std::uint16_t{0} : ranks_[level];
    }
    /// 0xAARRGGBB
    std::uint32_t pixel(std::uint16_t rank) const { return pixels_[rank]; }

private:
    std::array<std::uint16_t, ColorMap::size> ranks_{};
    std::array<std::uint32_t, ColorMap::size + 1> pixels_{};
};

} // namespace qv::render
