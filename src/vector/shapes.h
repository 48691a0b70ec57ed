// What a page is made of when its shapes are kept instead of its pixels.
//
// Places are in pixels of the page at the density it was drawn for; pixel n covers n to n + 1. Colours are
// 0xAARRGGBB, AA how opaque they are; those of text and of the background 0xFF.
#pragma once

#include "qvgraph/DrawSurface.h"
#include "qvgraph/RasterSurface.h"
#include "raster/pixels.h"

#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace qv::vector {

using raster::PixelBox;
using Contour = std::vector<PixelPoint>;

/// Whole pixels of one colour.
struct Boxes {
    std::uint32_t color = 0;
    std::vector<PixelBox> boxes;
    int height = 0; // of every box; 0: of various heights
};

/// Closed contours, filled. One contour by the even-odd rule, several as one shape wherever any of them is.
struct Fill {
    std::uint32_t color = 0;
    double outline = 0; // width of an outline of the same colour, half of it outside
    bool smooth = true;
    std::vector<Contour> contours = {};
};

/// Lines of one pen. A line of one point is a dot as wide as the pen.
struct Stroke {
    std::uint32_t color = 0;
    double width = 1;
    DrawStyle style = DrawStyle::Solid;
    double dash_start = 0; // where in the pattern of dashes the lines begin, pixels
    bool smooth = true;
    bool closed = false;
    std::vector<Contour> lines = {};
};

struct Oval {
    PixelPoint centre;
    double radius_x = 0;
    double radius_y = 0;
    bool filled = false;
    bool outlined = true;
    std::uint32_t fill_color = 0;
    std::uint32_t color = 0;
    double width = 1;
    DrawStyle style = DrawStyle::Solid;
    bool smooth = true;

    /// Fill and outline are one shape, painted once where they lie over each other.
    bool is_one_paint() const { return filled && outlined && fill_color == color; }
};

/// One line of text, turned counter-clockwise about its top left corner.
struct Text {
    std::uint32_t color = 0;
    Font font;
    double em = 12;       // pixels
    double baseline = 10; // below the corner, pixels
    double width = 0;     // pixels
    PixelPoint corner;
    double angle_degrees = 0;
    std::string text; // UTF-8
};

/// Pixels after all: gradients, which have a colour of their own at every place.
struct Picture {
    std::shared_ptr<raster::RasterSurface const> pixels;
    PixelPoint place; // of its left top corner
};

struct Node;
using NodeList = std::vector<Node>;

/// What another surface showed at that moment, moved.
struct Copy {
    std::shared_ptr<NodeList const> source;
    int dx = 0;
    int dy = 0;
};

using Shape = std::variant<Boxes, Fill, Stroke, Oval, Text, Picture, Copy>;

/// A shape within its clip.
struct Node {
    PixelBox clip;
    std::shared_ptr<Shape> shape;
};

/// The pixels that a shape can reach.
PixelBox reach_of(Shape const& shape);

/// About how many characters a shape takes in a file. Copies and pictures count as nothing.
std::size_t length_as_text(Shape const& shape);
/// What a shape takes less when it is joined to another.
constexpr std::size_t length_of_element = 60;

/// A shape as it comes out on the page: where it is moved and cut. `is_cut` is False for a shape that lies
/// within its clip, or beyond it only where the page ends as well.
struct Placed {
    int dx = 0;
    int dy = 0;
    PixelBox clip; // on the page
    bool is_cut = false;
};

/// Calls visit(shape, placed) for the visible shapes of a list that is shown moved and cut like `list`.
template <class Visit>
void for_each_shape(NodeList const& nodes, PixelBox const& page, Placed const& list, Visit const& visit) {
    for (Node const& node : nodes) {
        const PixelBox clip = intersection(moved(node.clip, list.dx, list.dy), list.clip);
        const PixelBox reach = intersection(moved(reach_of(*node.shape), list.dx, list.dy), page);
        if (intersection(reach, clip).empty()) continue;
        if (auto const* copy = std::get_if<Copy>(node.shape.get()))
            for_each_shape(*copy->source, page, {list.dx + copy->dx, list.dy + copy->dy, clip}, visit);
        else
            visit(*node.shape, Placed{list.dx, list.dy, clip, !clip.contains(reach)});
    }
}

/// The same for all of a page but copies, which are taken apart, in the order in which they are drawn.
template <class Visit>
void for_each_shape(NodeList const& nodes, PixelBox const& page, Visit const& visit) {
    for_each_shape(nodes, page, {0, 0, page, false}, visit);
}

} // namespace qv::vector
