// Lines, areas and bands of polar graphs: straight from point to point, cut at the outermost circle.
#pragma once

#include "document/PointStore.h"
#include "qvgraph/DrawSurface.h"
#include "render/polar/polar_map.h"
#include "render/polar/polar_thinner.h"

#include <optional>
#include <vector>

namespace qv::render {

/// Takes points in turn, in angle and distance, and draws the line through them in the surface's pen. One
/// without a place breaks it.
class PolarLine {
public:
    PolarLine(DrawSurface& surface, PolarMap const& map)
        : surface_(surface), map_(map), thinner_(surface.TwipsPerPixelX(), ToLine{*this}) {}
    void add(double x, double y);
    /// Goes round from the point before to another x.
    void go_round(Point from, double x);
    void finish(); ///< draws what is left

private:
    struct ToLine {
        PolarLine& line;
        void operator()(PolarPlace const& place) const { line.go_to(place); }
    };
    void go_to(PolarPlace const& place);
    void add_piece(Point from, Point to);
    void hand_over();

    DrawSurface& surface_;
    PolarMap map_;
    PolarThinner<ToLine> thinner_;
    std::optional<Point> last_;
    std::vector<Point> piece_;
};

/// Fills what lies between two lines that go round together, in one polygon for at most a whole turn, so that
/// what is covered twice is filled once.
class PolarBand {
public:
    PolarBand(DrawSurface& surface, PolarMap const& map, Color color);

    /// The distances of both lines; a gap where one is not a number.
    void add(double direction, double edge, double base);
    void finish();

private:
    struct Places {
        double direction = 0, edge = 0, base = 0;
    };
    /// The corners of one of the lines, pixels.
    struct Side {
        std::vector<PixelPoint> corners;
        bool leaves_centre = false;
    };
    void end_column();
    void go_to(Places const& places);
    void add_chord(Side& side, Point from, Point to) const;
    void add_corner(Side& side, Point from_centre) const;
    void close();

    DrawSurface& surface_;
    PolarMap const& map_;
    Color color_;
    double columns_per_radian_ = 0, column_ = 0;
    Places first_in_column_, extremes_, last_in_column_;
    std::size_t in_column_ = 0;
    std::optional<Places> last_;
    double turned_ = 0;
    Side edge_, base_;
};

/// Draws the line through a data set's points, straight, smooth or in steps; as an area also what lies
/// between it and the centre, or the areas below it.
void draw_polar_line(DrawSurface& surface, document::Graph const& graph, document::DataSet const& set,
                     PolarMap const& map);

} // namespace qv::render
