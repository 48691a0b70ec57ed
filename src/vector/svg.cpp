#include "vector/svg.h"

#include "raster/png.h"
#include "raster/stroke.h"
#include "raster/unicode.h"
#include "vector/VectorSurface.h"
#include "vector/svg_path.h"

#include <array>
#include <map>
#include <span>
#include <string_view>
#include <tuple>

namespace qv::vector {
namespace {

std::string hex(std::uint32_t value, int digits) {
    std::string text;
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        text += "0123456789abcdef"[value >> shift & 0xF];
    return text;
}

std::string color_text(std::uint32_t color) {
    return "#" + hex(color & 0xFFFFFF, 6);
}

std::string base64(std::span<std::uint8_t const> bytes) {
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::size_t const count = std::min<std::size_t>(3, bytes.size() - i);
        std::uint32_t three = 0;
        for (std::size_t k = 0; k < 3; ++k) three = three << 8 | (k < count ? bytes[i + k] : 0U);
        for (std::size_t k = 0; k < 4; ++k) text += k <= count ? digits[three >> (18 - 6 * k) & 63] : '=';
    }
    return text;
}

void append_utf8(std::string& text, char32_t c) {
    auto const continued = [](char32_t bits) { return static_cast<char>(0x80 | (bits & 0x3F)); };
    if (c < 0x80) {
        text += static_cast<char>(c);
    } else if (c < 0x800) {
        text += static_cast<char>(0xC0 | c >> 6);
        text += continued(c);
    } else if (c < 0x10000) {
        text += static_cast<char>(0xE0 | c >> 12);
        text += continued(c >> 6);
        text += continued(c);
    } else {
        text += static_cast<char>(0xF0 | c >> 18);
        text += continued(c >> 12);
        text += continued(c >> 6);
        text += continued(c);
    }
}

// Decoded and encoded again, because a single wrong byte would make the whole file unreadable.
std::string escaped(std::string_view text) {
    std::string result;
    for (char32_t const c : raster::decode_utf8(text)) {
        if (c == U'&')
            result += "&amp;";
        else if (c == U'<')
            result += "&lt;";
        else if (c == U'>')
            result += "&gt;";
        else if (c == U'"')
            result += "&quot;";
        else if (c < 0x20 || c == 0x7F || c == 0xFFFE || c == 0xFFFF)
            result += ' '; // no file may hold these
        else
            append_utf8(result, c);
    }
    return result;
}

// As a style sheet writes names: quoted, with what could end the quotation marked.
std::string quoted(std::string_view name) {
    std::string text;
    for (char const c : name) {
        if (c == '\'' || c == '\\') text += '\\';
        text += c;
    }
    return "'" + text + "'";
}

// What to take where the font is not installed.
std::string_view generic_family(std::string_view name) {
    struct Row {
        std::string_view part, generic;
    };
    constexpr std::array rows{Row{"Courier", "monospace"},  Row{"Mono", "monospace"},
                              Row{"Consolas", "monospace"}, Row{"Times", "serif"},
                              Row{"Georgia", "serif"},      Row{"Cambria", "serif"}};
    for (Row const& row : rows)
        if (name.find(row.part) != std::string_view::npos) return row.generic;
    return "sans-serif";
}

std::string font_families(std::string const& name) {
    return escaped(quoted(name)) + "," + std::string(generic_family(name));
}

std::string attribute(std::string_view name, std::string_view value) {
    return ' ' + std::string(name) + "=\"" + std::string(value) + '"';
}

std::string attribute(std::string_view name, double value) {
    return attribute(name, svg_number(value));
}

/// Nothing for what is opaque, which is nearly everything.
std::string opacity(std::string_view name, std::uint32_t color) {
    std::uint8_t const alpha = raster::alpha_of(color);
    if (alpha == raster::opaque) return {};
    const std::string thousandths = std::to_string(1000 + (alpha * 1000 + 127) / 255);
    return attribute(name, "." + thousandths.substr(1));
}

// Neighbouring boxes must not leave a seam when the page is scaled.
std::string rendering(bool smooth) {
    return smooth ? "" : attribute("shape-rendering", "crispEdges");
}

std::string dashes(DrawStyle style, double width, double start) {
    std::string lengths;
    double period = 0;
    for (int const length : raster::dash_lengths(style)) {
        if (length == 0) continue;
        lengths += (lengths.empty() ? "" : " ") + svg_number(length * width);
        period += length * width;
    }
    if (lengths.empty()) return {};
    return attribute("stroke-dasharray", lengths)
           + (start != 0 ? attribute("stroke-dashoffset", start - std::floor(start / period) * period) : "");
}

// What shapes that come in large numbers have in common, for the group around them.
std::string look_of(Oval const& shape) {
    std::string look = attribute("fill", shape.filled ? color_text(shape.fill_color) : "none");
    if (shape.outlined)
        look += attribute("stroke", color_text(shape.color)) + attribute("stroke-width", shape.width)
                + dashes(shape.style, shape.width, 0);
    if (!shape.is_one_paint()) {
        if (shape.filled) look += opacity("fill-opacity", shape.fill_color);
        if (shape.outlined) look += opacity("stroke-opacity", shape.color);
    }
    return look + rendering(shape.smooth);
}

std::string look_of(Text const& shape) {
    return attribute("font-family", font_families(shape.font.name)) + attribute("font-size", shape.em)
           + (shape.font.bold ? attribute("font-weight", "bold") : "")
           + (shape.font.italic ? attribute("font-style", "italic") : "")
           + attribute("fill", color_text(shape.color));
}

std::string look_of(auto const&) {
    return {};
}

class SvgWriter {
public:
    explicit SvgWriter(VectorSurface const& page) : page_(page) {
        const PixelSize size = page.GetClientRect();
        for_each_shape(page.nodes(), {0, 0, size.width, size.height},
                       [this](Shape const& shape, Placed const& placed) {
                           placed_ = placed;
                           std::visit(
                               [this](auto const& kind) {
                                   open_group(look_of(kind));
                                   write(kind);
                               },
                               shape);
                       });
        close_group();
    }

    std::string document() const {
        const PixelSize size = page_.GetClientRect();
        auto const points = [](double twips) { // four decimals: no pixel is gained by rounding
            const std::string whole = std::to_string(std::llround(twips / twips_per_point * 10000));
            return (whole.size() > 4
                        ? whole.substr(0, whole.size() - 4) + "." + whole.substr(whole.size() - 4)
                        : whole + "e-4")
                   + "pt";
        };
        bool const is_square = page_.TwipsPerPixelX() == page_.TwipsPerPixelY();
        return "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
               "version=\"1.1\" width=\""
               + points(page_.Width()) + "\" height=\"" + points(page_.Height()) + "\" viewBox=\"0 0 "
               + std::to_string(size.width) + " " + std::to_string(size.height) + "\""
               + (is_square ? "" : " preserveAspectRatio=\"none\"") + " xml:space=\"preserve\">\n"
               + definitions_ + body_ + "</svg>\n";
    }

private:
    PixelPoint moved(PixelPoint point) const { return {point.x + placed_.dx, point.y + placed_.dy}; }

    // Neighbours of one clip and look share a group.
    void open_group(std::string const& look) {
        const std::string attributes =
            (placed_.is_cut ? attribute("clip-path", "url(#" + clip_id(placed_.clip) + ")") : "") + look;
        if (attributes == group_) return;
        close_group();
        group_ = attributes;
        if (!group_.empty()) body_ += "<g" + group_ + ">\n";
    }

    void close_group() {
        if (!group_.empty()) body_ += "</g>\n";
        group_.clear();
    }

    std::string clip_id(PixelBox const& box) {
        auto const key = std::tuple(box.left, box.top, box.right, box.bottom);
        auto const [entry, is_new] = clips_.try_emplace(key, "c" + std::to_string(clips_.size() + 1));
        if (is_new)
            definitions_ += "<clipPath id=\"" + entry->second + "\"><path d=\"" + path_of(box).text()
                            + "\"/></clipPath>\n";
        return entry->second;
    }

    static SvgPath path_of(PixelBox const& box) {
        SvgPath path;
        add_box(path, box);
        return path;
    }

    static void add_box(SvgPath& path, PixelBox const& box) {
        path.move({1.0 * box.left, 1.0 * box.top});
        path.line({1.0 * box.right, 1.0 * box.top});
        path.line({1.0 * box.right, 1.0 * box.bottom});
        path.line({1.0 * box.left, 1.0 * box.bottom});
        path.close();
    }

    /// A box as a line as wide as the box is high, which takes half the characters.
    static void add_row(SvgPath& path, PixelBox const& box) {
        double const middle = (box.top + box.bottom) / 2.0;
        path.move({1.0 * box.left, middle});
        path.line({1.0 * box.right, middle});
    }

    template <class Value>
    void put(std::string_view name, Value const& value) {
        body_ += attribute(name, value);
    }

    void write(Boxes const& shape) {
        SvgPath path;
        for (PixelBox const& box : shape.boxes) {
            const PixelBox place = raster::moved(box, placed_.dx, placed_.dy);
            shape.height > 0 ? add_row(path, place) : add_box(path, place);
        }
        body_ += "<path";
        put("fill", shape.height > 0 ? "none" : color_text(shape.color));
        if (shape.height > 0) {
            put("stroke", color_text(shape.color));
            if (shape.height != 1) put("stroke-width", shape.height);
        }
        body_ += opacity("opacity", shape.color);
        body_ += rendering(false);
        put("d", path.text());
        body_ += "/>\n";
    }

    void add_contours(SvgPath& path, std::vector<Contour> const& contours, bool closed) {
        for (Contour const& contour : contours) {
            if (contour.empty()) continue;
            path.move(moved(contour[0]));
            for (std::size_t i = 1; i < contour.size(); ++i) path.line(moved(contour[i]));
            if (contour.size() == 1) path.line(moved(contour[0])); // a dot
            if (closed) path.close();
        }
    }

    void write(Fill const& shape) {
        SvgPath path;
        add_contours(path, shape.contours, true);
        body_ += "<path";
        put("fill", color_text(shape.color));
        if (shape.contours.size() == 1) put("fill-rule", "evenodd");
        if (shape.outline > 0) {
            put("stroke", color_text(shape.color));
            put("stroke-width", shape.outline);
            put("stroke-linejoin", "round");
        }
        body_ += opacity("opacity", shape.color);
        body_ += rendering(shape.smooth);
        put("d", path.text());
        body_ += "/>\n";
    }

    void write(Stroke const& shape) {
        SvgPath path;
        add_contours(path, shape.lines, shape.closed);
        body_ += "<path fill=\"none\"";
        put("stroke", color_text(shape.color));
        if (shape.width != 1) put("stroke-width", shape.width);
        if (!raster::is_dashed(shape.style)) put("stroke-linecap", "round");
        put("stroke-linejoin", "round");
        body_ += dashes(shape.style, shape.width, shape.dash_start);
        body_ += opacity("opacity", shape.color);
        body_ += rendering(shape.smooth);
        put("d", path.text());
        body_ += "/>\n";
    }

    void write(Oval const& shape) {
        const PixelPoint centre = moved(shape.centre);
        bool const is_circle = shape.radius_x == shape.radius_y;
        body_ += is_circle ? "<circle" : "<ellipse";
        put("cx", centre.x);
        put("cy", centre.y);
        put(is_circle ? "r" : "rx", shape.radius_x);
        if (!is_circle) put("ry", shape.radius_y);
        // Of the shape, not of a group: each is painted by itself.
        if (shape.is_one_paint()) body_ += opacity("opacity", shape.color);
        body_ += "/>\n";
    }

    void write(Text const& shape) {
        const PixelPoint corner = moved(shape.corner);
        body_ += "<text";
        if (shape.angle_degrees == 0) {
            put("x", corner.x);
            put("y", corner.y + shape.baseline);
        } else {
            // Turned about the middle of the corner's pixel, as pixels are.
            put("y", shape.baseline);
            put("transform", "translate(" + svg_number(corner.x + 0.5) + " " + svg_number(corner.y + 0.5)
                                 + ")rotate(" + svg_number(-shape.angle_degrees) + ")translate(-.5 -.5)");
        }
        if (shape.width > 0) put("textLength", shape.width);
        body_ += '>' + escaped(shape.text) + "</text>\n";
    }

    void write(Picture const& shape) {
        const PixelPoint place = moved(shape.place);
        body_ += "<image";
        put("x", place.x);
        put("y", place.y);
        put("width", shape.pixels->width());
        put("height", shape.pixels->height());
        put("preserveAspectRatio", "none");
        put("xlink:href", "data:image/png;base64," + base64(raster::encode_png(*shape.pixels)));
        body_ += "/>\n";
    }

    void write(Copy const&) {} // copies are taken apart before

    VectorSurface const& page_;
    Placed placed_;
    std::string group_; // attributes of the open group; empty: none is open
    std::map<std::tuple<int, int, int, int>, std::string> clips_;
    std::string definitions_;
    std::string body_;
};

} // namespace

std::string svg_of(VectorSurface const& page) {
    return SvgWriter(page).document();
}

} // namespace qv::vector
