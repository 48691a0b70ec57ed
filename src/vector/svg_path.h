// The text of SVG paths: as short as two decimals allow.
#pragma once

#include "qvgraph/geometry.h"

#include <string>

namespace qv::vector {

/// A number with at most two decimals.
std::string svg_number(double value);

/// Moves and lines relative to the place before, counted in hundredths so that roundings do not add up.
class SvgPath {
public:
    void move(PixelPoint to);
    void line(PixelPoint to);
    void close();
    std::string const& text() const { return text_; }

private:
    struct Hundredths {
        long long x = 0;
        long long y = 0;
    };
    void step(char command, Hundredths by);
    void append(char command);
    void append(long long hundredths);
    static Hundredths hundredths(PixelPoint point);

    std::string text_;
    char command_ = 0; // the one that further numbers belong to
    Hundredths here_;
    Hundredths start_;
};

} // namespace qv::vector
