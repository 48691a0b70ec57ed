// Dashes along a line, whatever points it goes through.
#pragma once

#include "document/records.h"
#include "qvgraph/DrawSurface.h"

#include <optional>
#include <string_view>
#include <vector>

namespace qv::render {

/// Lengths of dashes and gaps in turn, in widths of the line. Empty: a line without gaps.
using DashPattern = std::vector<double>;

/// The pattern that a text such as "6 2 1 2" names; numbers are separated by blanks or commas, an odd count
/// of them goes round twice. What is none is fault 5.
DashPattern dash_pattern(std::string_view text);

/// The pattern of a data set's line that is not part of its DataLineStyle.
DashPattern dashes_of(document::DataSet const& set);

/// A surface whose polylines and segments have dashes in the pen that it was made with; all else is drawn as
/// it is. A polyline that begins where the last one ended goes on with its dashes. Ends of dashes are round
/// and reach no further than the pattern says.
class DashedLines final : public DrawSurface {
public:
    /// `visible` is what can be seen of the lines, twips.
    DashedLines(DrawSurface& surface, DashPattern const& pattern, Box const& visible);

    double TwipsPerPixelX() const override { return surface_.TwipsPerPixelX(); }
    double TwipsPerPixelY() const override { return surface_.TwipsPerPixelY(); }
    PixelSize GetClientRect() const override { return surface_.GetClientRect(); }
    void Move(double width, double height) override { surface_.Move(width, height); }
    void Cls() override { surface_.Cls(); }
    void SelectClipPath(Box const& box) override { surface_.SelectClipPath(box); }
    void BitBlt(PixelPoint target, PixelSize size, DrawSurface const& source, PixelPoint origin) override {
        surface_.BitBlt(target, size, source, origin);
    }
    void Line(Point from, Point to, LineShape shape, Color color) override;
    void PSet(Point point) override { surface_.PSet(point); }
    void Circle(Point centre, double radius) override { surface_.Circle(centre, radius); }
    void Polygon(std::span<PixelPoint const> corners) override { surface_.Polygon(corners); }
    void Rectangle(PixelPoint left_top, PixelPoint right_bottom) override {
        surface_.Rectangle(left_top, right_bottom);
    }
    void Ellipse(PixelPoint left_top, PixelPoint right_bottom) override {
        surface_.Ellipse(left_top, right_bottom);
    }
    void LineTo(PixelPoint from, PixelPoint to, Color color) override { surface_.LineTo(from, to, color); }
    double TextWidth(std::string_view line) override { return surface_.TextWidth(line); }
    double TextHeight(std::string_view line) override { return surface_.TextHeight(line); }
    void Print(std::string_view line) override { surface_.Print(line); }
    void TextOutA(PixelPoint top_left, double angle, std::string_view line) override {
        surface_.TextOutA(top_left, angle, line);
    }
    void Polyline(std::span<Point const> points) override;
    void BeginShape() override { surface_.BeginShape(); }
    void EndShape() override { surface_.EndShape(); }
    void DropShape() noexcept override { surface_.DropShape(); }

private:
    /// A stretch of the pattern as it is drawn, twips.
    struct Stretch {
        double length = 0;
        bool shows = false;
    };
    void cut(Point from, Point to);
    void next_stretch();
    void skip(double length);
    void show(Point from, Point to);

    DrawSurface& surface_;
    Box visible_;
    std::vector<Stretch> stretches_;
    double period_ = 0;
    std::size_t stretch_ = 0; // where in the pattern the line is
    double left_ = 0;         // of that stretch
    std::optional<Point> end_;
    std::vector<Point> dashes_; // with places that are not numbers between them
};

/// Calls `draw(surface)` with the surface itself, or with one that draws dashes on it.
template <class Draw>
void draw_with_dashes(DrawSurface& surface, DashPattern const& pattern, Box const& visible,
                      Draw const& draw) {
    if (pattern.empty()) return draw(surface);
    DashedLines dashed(surface, pattern, visible);
    draw(static_cast<DrawSurface&>(dashed));
}

} // namespace qv::render
