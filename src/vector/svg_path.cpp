#include "vector/svg_path.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace qv::vector {
namespace {

constexpr double farthest = 1e9;

long long in_hundredths(double value) {
    return std::llround(std::clamp(value, -farthest, farthest) * 100);
}

std::string number(long long hundredths) {
    std::string text = hundredths < 0 ? "-" : "";
    long long const whole = std::llabs(hundredths) / 100, part = std::llabs(hundredths) % 100;
    if (whole != 0 || part == 0) text += std::to_string(whole);
    if (part == 0) return text;
    text += '.';
    text += static_cast<char>('0' + part / 10);
    if (part % 10 != 0) text += static_cast<char>('0' + part % 10);
    return text;
}

} // namespace

std::string svg_number(double value) {
    return number(in_hundredths(value));
}

SvgPath::Hundredths SvgPath::hundredths(PixelPoint point) {
    return {in_hundredths(point.x), in_hundredths(point.y)};
}

void SvgPath::append(char command) {
    if (command_ == command) return;
    text_ += command;
    command_ = command;
}

void SvgPath::append(long long hundredths) {
    const std::string digits = number(hundredths);
    bool const apart = digits[0] == '-' || (text_.back() >= 'A' && text_.back() != '.');
    if (!apart) text_ += ' ';
    text_ += digits;
}

void SvgPath::step(char command, Hundredths by) {
    append(command);
    if (command != 'v') append(by.x);
    if (command != 'h') append(by.y);
}

void SvgPath::move(PixelPoint to) {
    const Hundredths place = hundredths(to);
    command_ = 0; // a second pair of numbers would be a line
    step('m', {place.x - here_.x, place.y - here_.y});
    command_ = 'l';
    here_ = start_ = place;
}

void SvgPath::line(PixelPoint to) {
    const Hundredths place = hundredths(to);
    const Hundredths by{place.x - here_.x, place.y - here_.y};
    step(by.y == 0 ? 'h' : by.x == 0 ? 'v' : 'l', by);
    here_ = place;
}

void SvgPath::close() {
    text_ += 'z';
    command_ = 0;
    here_ = start_;
}

} // namespace qv::vector
