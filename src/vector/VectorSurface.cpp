#include "vector/VectorSurface.h"

#include "qvgraph/fault.h"
#include "raster/blend.h"
#include "raster/segment.h"
#include "raster/stroke.h"
#include "vector/symbol_shapes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace qv::vector {
namespace {

using raster::intersection;
using raster::is_finite;
using raster::pixel_value;
using raster::spanned;

// Where to stop: a page this long is kept as a picture anyway.
constexpr std::size_t longest_text = 3000000;

/// From places where a whole number is a pixel's centre to those where it is its edge.
PixelPoint from_edge(PixelPoint point) {
    return {point.x + 0.5, point.y + 0.5};
}

// Contours that run the same way round can be filled together.
void turn_clockwise(Contour& contour) {
    double area = 0;
    for (std::size_t i = 0; i < contour.size(); ++i) {
        const PixelPoint a = contour[i], b = contour[(i + 1) % contour.size()];
        area += a.x * b.y - b.x * a.y;
    }
    if (area < 0) std::ranges::reverse(contour);
}

bool has_same_pen(Stroke const& a, Stroke const& b) {
    return a.color == b.color && a.width == b.width && a.style == b.style && a.smooth == b.smooth
           && a.closed == b.closed && !raster::is_dashed(a.style);
}

template <class Item>
void append(std::vector<Item>& to, std::vector<Item>& from) {
    to.insert(to.end(), std::make_move_iterator(from.begin()), std::make_move_iterator(from.end()));
}

/// Adds a shape to one of the same look that was drawn just before. False: they are too different.
struct Join {
    bool one_shape; // fills may be joined

    bool same_shape; // both are pieces of the one that is open

    // What is translucent is painted twice where two shapes lie over each other, but once within one.
    bool may_join(std::uint32_t color) const {
        return same_shape || raster::alpha_of(color) == raster::opaque;
    }

    bool operator()(Boxes& last, Boxes& next) const {
        if (!may_join(next.color) || last.color != next.color || last.height != next.height) return false;
        append(last.boxes, next.boxes);
        return true;
    }
    bool operator()(Stroke& last, Stroke& next) const {
        if (!may_join(next.color) || !has_same_pen(last, next)) return false;
        append(last.lines, next.lines);
        return true;
    }
    bool operator()(Fill& last, Fill& next) const {
        if (!one_shape || !may_join(next.color) || last.color != next.color || last.outline != next.outline
            || last.smooth != next.smooth)
            return false;
        append(last.contours, next.contours);
        return true;
    }
    template <class Last, class Next>
    bool operator()(Last&, Next&) const {
        return false;
    }
};

} // namespace

VectorSurface::VectorSurface(double twips_per_pixel_x, double twips_per_pixel_y,
                             std::shared_ptr<raster::FontLibrary> fonts)
    : fonts_(std::move(fonts)), measure_(twips_per_pixel_x, twips_per_pixel_y, fonts_) {
    clear(background_);
}

void VectorSurface::Move(double width_twips, double height_twips) {
    // A raster surface knows which sizes there can be.
    raster::RasterSurface sized(TwipsPerPixelX(), TwipsPerPixelY(), fonts_);
    sized.Move(width_twips, height_twips);
    const PixelBox before = bounds_;
    bounds_ = {0, 0, sized.width(), sized.height()};
    if (before == bounds_) return;
    bool const is_blank = nodes_->size() == 1 && !texture_ && background_ == pixel_value(state.BackColor);
    auto const content = shown();
    clear(pixel_value(state.BackColor));
    clip_ = before;
    if (!is_blank) add(Copy{content});
    clip_ = bounds_;
}

void VectorSurface::clear(std::uint32_t color) {
    auto nodes = std::make_shared<NodeList>();
    nodes->push_back({bounds_, std::make_shared<Shape>(Boxes{color, {bounds_}})});
    texture_.reset();
    cloud_.reset();
    length_ = 0;
    background_ = color;
    nodes_ = std::move(nodes);
}

void VectorSurface::Cls() {
    clear(pixel_value(state.BackColor));
}

void VectorSurface::SelectClipPath(Box const& box) {
    finish_cloud();
    clip_ = intersection(spanned({box.left / TwipsPerPixelX(), box.top / TwipsPerPixelY()},
                                 {box.right() / TwipsPerPixelX(), box.bottom() / TwipsPerPixelY()}),
                         bounds_);
}

std::shared_ptr<NodeList> VectorSurface::nodes_of(raster::RasterSurface const& picture) const {
    auto pixels = std::make_shared<raster::RasterSurface>(TwipsPerPixelX(), TwipsPerPixelY(), fonts_);
    pixels->Move(picture.Width(), picture.Height());
    pixels->BitBlt({0, 0}, picture.GetClientRect(), picture, {0, 0});
    auto nodes = std::make_shared<NodeList>();
    nodes->push_back({bounds_, std::make_shared<Shape>(Picture{std::move(pixels), {0, 0}})});
    return nodes;
}

std::shared_ptr<NodeList const> VectorSurface::shown() const {
    return texture_ ? nodes_of(*texture_) : nodes_;
}

// A little more than the part, so that a viewer that blends neighbouring pixels has some at the edges too.
Shape VectorSurface::part_of_texture(PixelBox const& part, int dx, int dy) const {
    constexpr int margin = 2;
    const PixelBox kept = intersection(grown(part, margin), bounds_);
    auto pixels = std::make_shared<raster::RasterSurface>(TwipsPerPixelX(), TwipsPerPixelY(), fonts_);
    pixels->Move(kept.width() * TwipsPerPixelX(), kept.height() * TwipsPerPixelY());
    pixels->BitBlt({0, 0}, pixels->GetClientRect(), *texture_, {1.0 * kept.left, 1.0 * kept.top});
    return Picture{std::move(pixels), {1.0 * kept.left + dx, 1.0 * kept.top + dy}};
}

void VectorSurface::show_picture(raster::RasterSurface const& picture) {
    texture_.reset();
    cloud_.reset();
    length_ = 0;
    nodes_ = nodes_of(picture);
}

void VectorSurface::BitBlt(PixelPoint target, PixelSize size, DrawSurface const& source, PixelPoint origin) {
    auto const* const other = dynamic_cast<VectorSurface const*>(&source);
    if (other == nullptr)
        raise_fault(FaultNumber::InvalidProcedureCall,
                    "A block can only be copied from another surface of shapes");
    int const left = whole_pixel(target.x), top = whole_pixel(target.y);
    int const dx = left - whole_pixel(origin.x), dy = top - whole_pixel(origin.y);
    constexpr auto far = static_cast<int>(farthest_pixel);
    const PixelBox block{left, top, left + std::clamp(size.width, 0, far),
                         top + std::clamp(size.height, 0, far)};
    const PixelBox box = intersection(intersection(block, clip_), moved(other->bounds_, dx, dy));
    if (box.empty()) return;
    Shape copy = other->texture_ ? other->part_of_texture(moved(box, -dx, -dy), dx, dy)
                                 : Shape(Copy{other->nodes_, dx, dy});
    if (box == bounds_) clear(background_);
    length_ += other->length_;
    const PixelBox clip = std::exchange(clip_, box);
    add(std::move(copy));
    clip_ = clip;
}

void VectorSurface::finish_texture() {
    if (!texture_) return;
    nodes_ = nodes_of(*texture_);
    texture_.reset();
}

void VectorSurface::add(Shape shape) {
    finish_texture();
    finish_cloud();
    if (clip_.empty() || !is_drawing() || is_overfull()) return;
    if (!std::holds_alternative<Copy>(shape) && intersection(reach_of(shape), clip_).empty()) return;
    length_ += length_as_text(shape);
    if (nodes_.use_count() > 1) nodes_ = std::make_shared<NodeList>(*nodes_);
    Node& last = nodes_->back();
    if (last.clip == clip_ && last.shape.use_count() == 1
        && std::visit(Join{open_shapes_ > 0, open_shapes_ > 0 && nodes_->size() > nodes_before_shape_},
                      *last.shape, shape)) {
        length_ -= length_of_element;
        return;
    }
    nodes_->push_back({clip_, std::make_shared<Shape>(std::move(shape))});
}

bool VectorSurface::is_overfull() const {
    return length_ > longest_text;
}

void VectorSurface::fill_boxes(std::uint32_t color, std::vector<PixelBox> boxes) {
    std::erase_if(boxes, [this](PixelBox& box) { return (box = intersection(box, clip_)).empty(); });
    bool const hides_all =
        boxes.size() == 1 && boxes[0] == bounds_ && raster::alpha_of(color) == raster::opaque;
    if (hides_all && is_drawing()) return clear(color);
    if (!boxes.empty()) add(Boxes{color, std::move(boxes)});
}

// Pictures mix in linear light, files what is stored: black at a half is much darker there. The alpha that
// comes nearest on the page's background, by least squares over the channels.
std::uint32_t VectorSurface::painted(Color color) const {
    std::uint32_t const paint = pixel_value(color);
    if (state.alpha == raster::opaque) return paint;
    std::uint32_t const mixed = raster::LinearMixer(paint).mix(background_, state.alpha);
    double along = 0, squares = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        auto const channel = [shift](std::uint32_t value) { return static_cast<int>(value >> shift & 0xFF); };
        int const way = channel(paint) - channel(background_);
        along += way * (channel(mixed) - channel(background_));
        squares += way * way;
    }
    double const alpha = squares == 0 ? state.alpha : std::round(along / squares * 255);
    return raster::translucent(paint, static_cast<std::uint8_t>(std::clamp(alpha, 0.0, 254.0)));
}

double VectorSurface::pen_width() const {
    double const width = pen_pixels(state.DrawWidth);
    return state.Smooth ? width : whole_pen(width);
}

Stroke VectorSurface::pen(Color color) const {
    return {.color = painted(color), .width = pen_width(), .style = state.draw_style, .smooth = state.Smooth};
}

PixelPoint VectorSurface::pixel(Point point) const {
    return {point.x / TwipsPerPixelX(), point.y / TwipsPerPixelY()};
}

void VectorSurface::snapped_line(PixelBox const& ends, Color color) {
    if (state.draw_style == DrawStyle::None) return;
    int const width = whole_pen(pen_width());
    const PixelBox wide{ends.left - width / 2, ends.top - width / 2, ends.right - width / 2 + width - 1,
                        ends.bottom - width / 2 + width - 1};
    if (!raster::is_dashed(state.draw_style)) return fill_boxes(painted(color), {wide});
    const PixelBox box = intersection(wide, grown(clip_, width));
    bool const flat = ends.width() >= ends.height();
    double const middle_x = (box.left + box.right) / 2.0, middle_y = (box.top + box.bottom) / 2.0;
    Stroke line = pen(color);
    line.width = width;
    line.dash_start = flat ? box.left : box.top;
    line.smooth = false;
    line.lines = {flat ? Contour{{1.0 * box.left, middle_y}, {1.0 * box.right, middle_y}}
                       : Contour{{middle_x, 1.0 * box.top}, {middle_x, 1.0 * box.bottom}}};
    add(std::move(line));
}

void VectorSurface::stroke_box(PixelBox box, Color color) {
    if (state.draw_style == DrawStyle::InsideSolid) {
        int const width = whole_pen(pen_width());
        box = {box.left + width / 2, box.top + width / 2, box.right - (width - 1) / 2,
               box.bottom - (width - 1) / 2};
        if (box.empty()) return;
    }
    for (PixelBox const& side : {PixelBox{box.left, box.top, box.right, box.top + 1},
                                 PixelBox{box.left, box.bottom - 1, box.right, box.bottom},
                                 PixelBox{box.left, box.top, box.left + 1, box.bottom},
                                 PixelBox{box.right - 1, box.top, box.right, box.bottom}})
        snapped_line(side, color);
}

// The parts of the lines that can be seen.
void VectorSurface::add_lines(Stroke line, std::span<PixelPoint const> points, bool closed) {
    if (state.draw_style == DrawStyle::None) return;
    std::optional<PixelPoint> end;
    auto const add_segment = [&](PixelPoint a, PixelPoint b) {
        auto const visible =
            is_finite(a) && is_finite(b) ? raster::clipped_for_pen({a, b}, clip_, line.width) : std::nullopt;
        if (!visible) return end.reset();
        const PixelPoint from = from_edge(visible->from), to = from_edge(visible->to);
        if (end != from) line.lines.push_back({from});
        line.lines.back().push_back(to);
        end = to;
    };
    for (std::size_t i = 1; i < points.size(); ++i) add_segment(points[i - 1], points[i]);
    if (closed && points.size() > 1) add_segment(points.back(), points.front());
    if (!line.lines.empty()) add(std::move(line));
}

void VectorSurface::Line(Point from, Point to, LineShape shape, Color color) {
    const PixelPoint a = pixel(from), b = pixel(to);
    if (!is_finite(a) || !is_finite(b)) return;
    if (shape == LineShape::FilledBox)
        fill_boxes(painted(color), {spanned(a, b)});
    else if (shape == LineShape::Box)
        stroke_box(spanned(a, b), color);
    else if (from.x == to.x || from.y == to.y)
        snapped_line(spanned(a, b), color);
    else
        add_lines(pen(color), std::array{a, b}, false);
}

void VectorSurface::PSet(Point point) {
    const PixelPoint place = pixel(point);
    if (!is_finite(place)) return;
    Stroke dot = pen(state.ForeColor);
    dot.style = DrawStyle::Solid;
    if (whole_pen(dot.width) == 1) return fill_boxes(dot.color, {spanned(place, place)});
    dot.lines = {{from_edge(place)}};
    add(std::move(dot));
}

void VectorSurface::oval(PixelPoint centre, PixelPoint radii) {
    const Stroke line = pen(state.ForeColor);
    double const inset = line.style == DrawStyle::InsideSolid ? (line.width - 1) / 2 : 0;
    Oval shape{.centre = from_edge(centre),
               .radius_x = radii.x,
               .radius_y = radii.y,
               .filled = state.fill_style == FillStyle::Solid,
               .outlined = line.style != DrawStyle::None,
               .fill_color = painted(state.FillColor),
               .color = line.color,
               .width = line.width,
               .style = line.style,
               .smooth = state.Smooth};
    if (inset > 0 && shape.filled) {
        shape.outlined = false;
        add(shape);
        shape.filled = false;
        shape.outlined = true;
    }
    shape.radius_x = std::max(0.0, radii.x - inset);
    shape.radius_y = std::max(0.0, radii.y - inset);
    add(shape);
}

void VectorSurface::Circle(Point centre, double radius_twips) {
    double const radius = std::abs(radius_twips);
    const PixelPoint place = pixel(centre), radii = pixel({radius, radius});
    if (is_finite(place) && is_finite(radii)) oval(place, radii);
}

void VectorSurface::Ellipse(PixelPoint left_top, PixelPoint right_bottom) {
    if (!is_finite(left_top) || !is_finite(right_bottom)) return;
    PixelBox box = spanned(left_top, right_bottom);
    --box.right, --box.bottom;
    if (box.empty()) return;
    oval({(box.left + box.right - 1) / 2.0, (box.top + box.bottom - 1) / 2.0},
         {(box.width() - 1) / 2.0, (box.height() - 1) / 2.0});
}

void VectorSurface::fill(std::uint32_t color, double outline, std::span<PixelPoint const> corners) {
    Contour contour;
    auto const near = [](double v) { return std::clamp(v, -farthest_pixel, farthest_pixel); };
    for (const PixelPoint corner : corners) contour.push_back(from_edge({near(corner.x), near(corner.y)}));
    turn_clockwise(contour);
    add(Fill{color, outline, state.Smooth, {std::move(contour)}});
}

void VectorSurface::Polygon(std::span<PixelPoint const> corners) {
    if (corners.empty() || !std::ranges::all_of(corners, is_finite)) return;
    const Stroke line = pen(state.ForeColor);
    bool const filled = state.fill_style == FillStyle::Solid;
    bool const solid = line.style == DrawStyle::Solid || line.style == DrawStyle::InsideSolid;
    std::uint32_t const color = painted(state.FillColor);
    if (filled && solid && color == line.color) return fill(color, line.width, corners);
    if (filled) fill(color, 0, corners);
    add_lines(line, corners, true);
}

void VectorSurface::Rectangle(PixelPoint left_top, PixelPoint right_bottom) {
    if (!is_finite(left_top) || !is_finite(right_bottom)) return;
    PixelBox box = spanned(left_top, right_bottom);
    --box.right, --box.bottom;
    if (box.empty()) return;
    if (state.fill_style == FillStyle::Solid) fill_boxes(painted(state.FillColor), {box});
    stroke_box(box, state.ForeColor);
}

void VectorSurface::LineTo(PixelPoint from, PixelPoint to, Color color) {
    if (nodes_->size() > 1 && !texture_) {
        Stroke line{.color = painted(color), .width = 1, .smooth = false};
        return add_lines(std::move(line), std::array{from, to}, false);
    }
    if (!texture_) {
        raster::RasterSurface texture(TwipsPerPixelX(), TwipsPerPixelY(), fonts_);
        texture.Move(Width(), Height());
        std::uint32_t const b = background_;
        texture.state.BackColor = rgb(b >> 16 & 0xFF, b >> 8 & 0xFF, b & 0xFF);
        texture.Cls();
        texture_ = std::move(texture);
    }
    texture_->SelectClipPath({clip_.left * TwipsPerPixelX(), clip_.top * TwipsPerPixelY(),
                              (clip_.width() - 1) * TwipsPerPixelX(),
                              (clip_.height() - 1) * TwipsPerPixelY()});
    texture_->LineTo(from, to, color);
}

void VectorSurface::Polyline(std::span<Point const> points) {
    Contour places;
    places.reserve(points.size());
    for (const Point point : points) places.push_back(pixel(point));
    add_lines(pen(state.ForeColor), places, false);
}

void VectorSurface::Symbols(SymbolBatch const& batch) {
    double const half_size = std::abs(static_cast<double>(batch.half_size));
    bool const lines = batch.shape == SymbolShape::Dot || batch.shape == SymbolShape::Plus
                       || batch.shape == SymbolShape::Cross;
    const SymbolLook look{batch.shape,
                          half_size / TwipsPerPixelX(),
                          half_size / TwipsPerPixelY(),
                          pen_width(),
                          painted(lines ? state.ForeColor : state.FillColor),
                          state.Smooth};
    if (!cloud_ || cloud_->look != look) {
        finish_texture();
        finish_cloud();
        cloud_.emplace(Cloud{look, SymbolCloud(grown(clip_, look.reach()))});
    }
    for (const Point centre : batch.centres) cloud_->symbols.add(pixel(centre));
    if (open_shapes_ == 0) finish_cloud();
}

void VectorSurface::Pixels(PixelPoint left_top, PixelSize size, std::span<std::uint32_t const> pixels) {
    bool const opaque = state.alpha == 255 && std::ranges::all_of(pixels, [](std::uint32_t pixel) {
                            return pixel >> 24 == 255;
                        });
    if (!opaque || !is_finite(left_top) || size.width < 1 || size.height < 1)
        return DrawSurface::Pixels(left_top, size, pixels);
    auto picture = std::make_shared<raster::RasterSurface>(TwipsPerPixelX(), TwipsPerPixelY(), fonts_);
    picture->Move(size.width * TwipsPerPixelX(), size.height * TwipsPerPixelY());
    picture->Pixels({0, 0}, size, pixels);
    add(Picture{std::move(picture), {1.0 * whole_pixel(left_top.x), 1.0 * whole_pixel(left_top.y)}});
}

void VectorSurface::finish_cloud() {
    if (!cloud_) return;
    const Cloud cloud = *std::exchange(cloud_, std::nullopt);
    for (Shape& shape : cloud.look.shapes(cloud.symbols.runs(cloud.look.run_limits()))) add(std::move(shape));
}

void VectorSurface::BeginShape() {
    if (open_shapes_++ > 0) return;
    finish_cloud();
    nodes_before_shape_ = nodes_->size();
}

void VectorSurface::EndShape() {
    open_shapes_ = std::max(0, open_shapes_ - 1);
    if (open_shapes_ == 0) finish_cloud();
}

void VectorSurface::DropShape() noexcept {
    open_shapes_ = std::max(0, open_shapes_ - 1);
    cloud_.reset();
}

double VectorSurface::TextWidth(std::string_view line) {
    measure_.state.font = state.font;
    return measure_.TextWidth(line);
}

double VectorSurface::TextHeight(std::string_view line) {
    measure_.state.font = state.font;
    return measure_.TextHeight(line);
}

void VectorSurface::Print(std::string_view line) {
    TextOutA({state.CurrentX / TwipsPerPixelX(), state.CurrentY / TwipsPerPixelY()}, 0, line);
}

void VectorSurface::TextOutA(PixelPoint top_left, double angle_degrees, std::string_view line) {
    if (!is_finite(top_left) || line.empty()) return;
    measure_.state.font = state.font;
    const raster::LineMetrics metrics = measure_.line_metrics();
    add(vector::Text{.color = pixel_value(state.ForeColor),
                     .font = state.font,
                     .em = metrics.em_pixels,
                     .baseline = metrics.ascent_pixels,
                     .width = TextWidth(line) / TwipsPerPixelX(),
                     .corner = {1.0 * whole_pixel(top_left.x), 1.0 * whole_pixel(top_left.y)},
                     .angle_degrees = std::isfinite(angle_degrees) ? std::fmod(angle_degrees, 360) : 0,
                     .text = std::string(line)});
}

} // namespace qv::vector
