// RecordingSurface: a surface that writes a readable log of what was drawn on it.
#pragma once

#include "qvgraph/DrawSurface.h"

#include <string>
#include <vector>

namespace qv::testing {

/// Text is 100 twips wide a character and 200 high, whatever the font, so that places can be worked out by
/// hand. A line of the log is an operation with its arguments, e.g. "line 0,0 100,0 #000000 w1".
class RecordingSurface : public DrawSurface {
public:
    double TwipsPerPixelX() const override { return 15; }
    double TwipsPerPixelY() const override { return 15; }
    PixelSize GetClientRect() const override { return size_; }
    void Move(double width_twips, double height_twips) override;
    void Cls() override { note("cls"); }
    void SelectClipPath(Box const& box) override;
    void BitBlt(PixelPoint target, PixelSize size, DrawSurface const& source, PixelPoint origin) override;
    void Refresh() override { note("refresh"); }
    void Line(Point from, Point to, LineShape shape, Color color) override;
    void PSet(Point point) override;
    void Circle(Point centre, double radius_twips) override;
    void Polygon(std::span<PixelPoint const> corners) override;
    void Rectangle(PixelPoint left_top, PixelPoint right_bottom) override;
    void Ellipse(PixelPoint left_top, PixelPoint right_bottom) override;
    void LineTo(PixelPoint from, PixelPoint to, Color color) override;
    double TextWidth(std::string_view line) override { return 100.0 * static_cast<double>(line.size()); }
    double TextHeight(std::string_view) override { return 200; }
    void Print(std::string_view line) override;
    void TextOutA(PixelPoint top_left, double angle_degrees, std::string_view line) override;

    std::vector<std::string> log;
    /// Lines of the log that begin with `start`.
    std::vector<std::string> lines(std::string_view start) const;
    bool has(std::string_view line) const;

private:
    void note(std::string line) { log.push_back(std::move(line)); }
    PixelSize size_{1, 1};
};

} // namespace qv::testing
