// Number formatting: the short texts of tick labels, coordinate read-outs and automatic limits.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace qv::scale {

/// `x` as a short text with at most DP + 1 significant digits. Style: 0 fixed, 1 scientific ("1.5e-7"), 2 as
/// the size asks, upon which it becomes what was chosen if that is fixed. Mode: 1 removes trailing zeros, 2
/// or more keeps them and puts a blank after a number that is not negative.
///
/// A `Fmt` that is not empty is a picture (base/picture_format.h) and overrules the rest; one that begins
/// with minutes and seconds ("m:s") shows a time in days without its hours. Every argument gives a text.
std::string Format_Real(double x, std::int16_t DP, std::int16_t& Style, std::int16_t Mode,
                        std::string_view Fmt);

/// The same in automatic style without trailing zeros.
std::string EasyFormat(double x, std::int16_t DP, std::string_view Fmt);

/// A number to be written, and how far its text may be from it.
struct ShownNumber {
    double value = 0;
    double tolerance = 0;
};

/// The texts of numbers that stand side by side: as EasyFormat writes them where each of those texts keeps
/// within its number's tolerance, else all with as many digits as that takes.
std::vector<std::string> number_texts(std::span<ShownNumber const> numbers, std::int16_t DP);

/// The text of a number read off a page on which neighbouring pixels are `pixel_step` apart: EasyFormat's, or
/// one with so many digits more that no two pixels have the same. A step of 0 asks for none.
std::string text_at_pixel(double x, std::int16_t DP, double pixel_step);

/// The DP, 3 to 9, that shows values of an axis between two ends with the digits its span needs.
std::int16_t AxisDPx(double End1, double End2);

} // namespace qv::scale
