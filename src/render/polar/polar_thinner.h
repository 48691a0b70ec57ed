// Dense lines round the centre of a polar graph, thinned to what pixels can show.
#pragma once

#include "render/polar/polar_map.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace qv::render {

/// A place of a polar graph by its direction, radians, and its distance from the centre, twips.
struct PolarPlace {
    double direction = 0;
    double distance = 0;
};

/// Takes the places of a line in turn. Of those that follow each other in one narrow sector, at most a pixel
/// wide where they lie, it hands over the first, the nearest, the farthest and the last, in this order or
/// with the farthest first, as they came.
template <class Take>
class PolarThinner {
public:
    PolarThinner(double twips_per_pixel, Take take) : pixel_(twips_per_pixel), take_(std::move(take)) {}

    void add(PolarPlace const& place) {
        if (count_ > 0 && place.distance <= widest_
            && std::floor(place.direction * columns_per_radian_) == column_)
            return keep(place);
        end();
        open(place);
    }

    /// Hands over what was kept.
    void end() {
        if (count_ > 0) take_(first_);
        if (count_ > few)
            for (Kept const* const kept : in_order()) hand_over(*kept);
        else
            for (std::size_t i = 0; i + 2 < count_; ++i) take_(inner_[i]);
        if (count_ > 1) take_(last_);
        count_ = 0;
    }

private:
    static constexpr std::size_t few = 4; // points that are all kept
    struct Kept {
        PolarPlace place;
        std::size_t arrival = 0;
    };

    // Columns are a power of two to the turn, so that those of neighbouring distances have common edges.
    void open(PolarPlace const& place) {
        constexpr double turn = 2 * std::numbers::pi, room = 1.25; // for those that lie a little further out
        double const wanted = std::max(1.0, turn * room * place.distance / pixel_);
        double const columns = std::exp2(std::ceil(std::log2(wanted)));
        columns_per_radian_ = columns / turn;
        widest_ = columns_per_radian_ * pixel_;
        column_ = std::floor(place.direction * columns_per_radian_);
        first_ = last_ = place;
        nearest_ = farthest_ = {place, 0};
        count_ = 1;
    }

    void keep(PolarPlace const& place) {
        if (count_ > 1 && count_ < few) inner_[count_ - 2] = last_;
        last_ = place;
        if (place.distance < nearest_.place.distance) nearest_ = {place, count_};
        if (place.distance > farthest_.place.distance) farthest_ = {place, count_};
        ++count_;
    }

    void hand_over(Kept const& kept) {
        if (kept.arrival > 0 && kept.arrival + 1 < count_) take_(kept.place);
    }

    std::array<Kept const*, 2> in_order() const {
        if (nearest_.arrival < farthest_.arrival) return {&nearest_, &farthest_};
        return {&farthest_, &nearest_};
    }

    double pixel_;
    Take take_;
    double columns_per_radian_ = 0, widest_ = 0, column_ = 0;
    PolarPlace first_, last_;
    std::array<PolarPlace, few - 2> inner_{};
    Kept nearest_, farthest_;
    std::size_t count_ = 0;
};

} // namespace qv::render
