#include "render/lines/smooth_line.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qv::render {
namespace {

constexpr std::size_t most_places = 1 << 13;
constexpr std::size_t longest_polyline = 1 << 16;
constexpr double dense = 6; // points a column; of fewer each segment is drawn

constexpr scale::AxisMap on_the_page{.length = 1, .last = 1, .factor = 1, .valid = true};

} // namespace

void SmoothLine::add(Point place) {
    if (!stretches_.empty()) draw_stretches();
    if (x_.empty() && last_) x_.push_back(last_->x), y_.push_back(last_->y);
    std::size_t const count = x_.size();
    bool const turns = count > 1 && (place.x - x_[count - 1]) * (x_[count - 1] - x_[0]) < 0;
    if (turns || count >= most_places) {
        draw_places();
        x_.assign(1, last_->x);
        y_.assign(1, last_->y);
    }
    x_.push_back(place.x);
    y_.push_back(place.y);
    last_ = place;
}

void SmoothLine::add(PointStretch const& stretch, scale::AxisMap const& x_map, scale::AxisMap const& y_map) {
    draw_places();
    bool const leads_on = !stretches_.empty() && stretches_.back().x.back() <= stretch.x.front();
    if (!leads_on) {
        if (!stretches_.empty()) draw_stretches();
        const Point first{x_map(stretch.x.front()), y_map(stretch.y.front())};
        if (last_) {
            begin_polyline(*last_);
            polyline_.push_back(first);
        }
    }
    stretches_.push_back(stretch);
    x_map_ = &x_map;
    y_map_ = &y_map;
    last_ = {x_map(stretch.x.back()), y_map(stretch.y.back())};
}

void SmoothLine::finish() {
    draw_places();
    if (!stretches_.empty()) draw_stretches();
    draw_polyline();
    last_.reset();
}

void SmoothLine::draw_places() {
    if (x_.size() > 1 && is_dense()) {
        if (x_.front() > x_.back()) {
            std::ranges::reverse(x_);
            std::ranges::reverse(y_);
        }
        const PointStretch stretch{x_, y_, nullptr, 0, std::nullopt};
        cover_.draw({{&stretch, 1}, on_the_page, on_the_page});
    } else if (x_.size() > 1) {
        begin_polyline({x_[0], y_[0]});
        for (std::size_t i = 1; i < x_.size(); ++i) polyline_.push_back({x_[i], y_[i]});
    }
    x_.clear();
    y_.clear();
}

void SmoothLine::draw_stretches() {
    cover_.draw({stretches_, *x_map_, *y_map_});
    stretches_.clear();
}

bool SmoothLine::is_dense() const {
    auto const columns = static_cast<double>(std::abs(grid_.column(x_.back()) - grid_.column(x_.front())));
    return static_cast<double>(x_.size()) > dense * (columns + 3);
}

void SmoothLine::begin_polyline(Point place) {
    constexpr double nowhere = std::numeric_limits<double>::quiet_NaN();
    if (!polyline_.empty() && polyline_.back() == place) return;
    if (polyline_.size() >= longest_polyline) draw_polyline();
    if (!polyline_.empty()) polyline_.push_back({nowhere, nowhere});
    polyline_.push_back(place);
}

void SmoothLine::draw_polyline() {
    surface_.Polyline(polyline_);
    polyline_.clear();
}

} // namespace qv::render
