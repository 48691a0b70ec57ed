#include "RecordingSurface.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace qv::testing {
namespace {

std::string number(double value) {
    return number_text(std::round(value * 100) / 100);
}

std::string pair(double x, double y) {
    return number(x) + "," + number(y);
}

std::string hex(Color color) {
    std::array<char, 16> text;
    std::snprintf(text.data(), text.size(), "#%06X", static_cast<unsigned>(color));
    return text.data();
}

std::string style(DrawState const& state) {
    return " w" + std::to_string(state.DrawWidth) + (state.draw_style == DrawStyle::Dot ? " dotted" : "");
}

std::string brush(DrawState const& state) {
    return " pen " + hex(state.ForeColor) + style(state)
           + (state.fill_style == FillStyle::Solid ? " brush " + hex(state.FillColor) : "");
}

} // namespace

void RecordingSurface::Move(double width_twips, double height_twips) {
    size_ = {static_cast<std::int32_t>(std::lround(width_twips / 15)),
             static_cast<std::int32_t>(std::lround(height_twips / 15))};
}

void RecordingSurface::SelectClipPath(Box const& box) {
    note("clip " + pair(box.left, box.top) + " " + pair(box.right(), box.bottom()));
}

void RecordingSurface::BitBlt(PixelPoint target, PixelSize size, DrawSurface const&, PixelPoint origin) {
    note("blit " + pair(target.x, target.y) + " size " + pair(size.width, size.height) + " from "
         + pair(origin.x, origin.y));
}

void RecordingSurface::Line(Point from, Point to, LineShape shape, Color color) {
    char const* const name = shape == LineShape::Segment ? "line "
                             : shape == LineShape::Box   ? "box "
                                                         : "fill ";
    note(name + pair(from.x, from.y) + " " + pair(to.x, to.y) + " " + hex(color) + style(state));
}

void RecordingSurface::PSet(Point point) {
    note("dot " + pair(point.x, point.y) + " " + hex(state.ForeColor));
}

void RecordingSurface::Circle(Point centre, double radius_twips) {
    note("circle " + pair(centre.x, centre.y) + " r" + number(radius_twips) + brush(state));
}

void RecordingSurface::Polygon(std::span<PixelPoint const> corners) {
    std::string line = "polygon";
    for (const PixelPoint corner : corners) line += " " + pair(corner.x, corner.y);
    note(line + brush(state));
}

void RecordingSurface::Rectangle(PixelPoint left_top, PixelPoint right_bottom) {
    note("rectangle " + pair(left_top.x, left_top.y) + " " + pair(right_bottom.x, right_bottom.y)
         + brush(state));
}

void RecordingSurface::Ellipse(PixelPoint left_top, PixelPoint right_bottom) {
    note("ellipse " + pair(left_top.x, left_top.y) + " " + pair(right_bottom.x, right_bottom.y)
         + brush(state));
}

void RecordingSurface::LineTo(PixelPoint from, PixelPoint to, Color color) {
    note("device " + pair(from.x, from.y) + " " + pair(to.x, to.y) + " " + hex(color));
}

void RecordingSurface::Print(std::string_view line) {
    note("text " + pair(state.CurrentX, state.CurrentY) + " \"" + std::string(line) + "\" "
         + hex(state.ForeColor) + " " + state.font.name + " " + number(state.font.size_points));
}

void RecordingSurface::TextOutA(PixelPoint top_left, double angle_degrees, std::string_view line) {
    note("turned " + pair(top_left.x * 15, top_left.y * 15) + " \"" + std::string(line) + "\" at "
         + number(angle_degrees));
}

std::vector<std::string> RecordingSurface::lines(std::string_view start) const {
    std::vector<std::string> found;
    std::ranges::copy_if(log, std::back_inserter(found),
                         [&](std::string const& line) { return line.starts_with(start); });
    return found;
}

bool RecordingSurface::has(std::string_view line) const {
    return std::ranges::find(log, line) != log.end();
}

} // namespace qv::testing
