#include "platform/raster/column_band.h"

#include <cstring>

namespace qv::raster {
namespace {

constexpr int lanes = 16;       // rows computed at once
constexpr int steps = 255 * 16; // of distance in a pixel, in 16 bits
using Lanes = std::array<std::int16_t, lanes>;

// 255 for the first lanes that count, 0 after them: the table from 16 - count on.
constexpr auto kept_lanes = [] {
    std::array<std::uint8_t, 2 * lanes> table{};
    for (std::size_t i = 0; i < lanes; ++i) table[i] = 255;
    return table;
}();

std::int16_t in_steps(double pixels) {
    // Beyond the reach only "far" matters, and sums with a ramp must not overflow.
    return static_cast<std::int16_t>(std::clamp(pixels * steps, -17000.0, 17000.0));
}

void raise_run(std::uint8_t* rows, Lanes const& ramp, std::int16_t start, std::int16_t reach, int count) {
    std::uint8_t const* const keep = kept_lanes.data() + lanes - std::min(count, lanes);
    for (int k = 0; k < lanes; ++k) {
        auto const distance = static_cast<std::int16_t>(ramp[k] + start);
        auto const away = static_cast<std::int16_t>(distance < 0 ? -distance : distance);
        auto const covered = static_cast<std::int16_t>((reach - away + 8) >> 4);
        auto const low = static_cast<std::int16_t>(covered < 0 ? 0 : covered);
        auto const coverage = static_cast<std::uint8_t>(low > 255 ? 255 : low);
        auto const kept = static_cast<std::uint8_t>(coverage & keep[k]);
        rows[k] = rows[k] > kept ? rows[k] : kept;
    }
}

// Exchanges rows and columns of a 16 by 16 block. Interleaving both halves turns the eight bits of each
// byte's index by one; after four times the row bits stand where the column bits were.
void transpose(std::array<std::uint8_t, 256>& block) {
    std::array<std::uint8_t, 256> turned;
    for (int round = 0; round < 2; ++round) {
        for (std::size_t k = 0; k < 128; ++k) turned[2 * k] = block[k], turned[2 * k + 1] = block[k + 128];
        for (std::size_t k = 0; k < 128; ++k) block[2 * k] = turned[k], block[2 * k + 1] = turned[k + 128];
    }
}

} // namespace

void ColumnBand::begin(CoverageMask& mask, PixelBox const& clip) {
    mask_ = &mask;
    clip_ = clip;
    height_ = (clip.height() + group - 1) / group * group + lanes;
    bytes_.resize(static_cast<std::size_t>(columns) * static_cast<std::size_t>(height_));
    first_column_ = clip.left - 2 * columns;
    touched_.fill({height_, 0});
}

bool ColumnBand::cover(SteepLine const& line) {
    double const slope = line.along_x / line.along_y;
    double const half = line.reach / std::abs(line.along_y);
    double const x0 = line.x + (line.top - line.y) * slope;
    double const x1 = line.x + (line.bottom - 1 - line.y) * slope;
    int const left = std::max(clip_.left, floor_int(std::min(x0, x1) - half) + 1);
    int const right = std::min(clip_.right, floor_int(std::max(x0, x1) + half) + 1);
    if (right - left > columns) return false;
    if (left >= right) return true;
    move_to(left, right);

    Lanes ramp;
    for (int k = 0; k < lanes; ++k) ramp[k] = in_steps(-k * line.along_x);
    const std::int16_t reach = in_steps(line.reach);
    int const rows = line.bottom - line.top;
    for (int x = left; x < right; ++x) {
        // Distance at the first row; it falls by along_x a row.
        double const distance = (x - line.x) * line.along_y - (line.top - line.y) * line.along_x;
        int first = 0, past = rows;
        if (std::abs(line.along_x) * rows > 0.1) {
            double const middle = distance / line.along_x, around = std::abs(line.reach / line.along_x);
            first = std::max(0, floor_int(std::clamp(middle - around, 0.0, 1e6)));
            past = std::min(rows, floor_int(std::clamp(middle + around, -1.0, 1e6)) + 1);
        }
        std::uint8_t* const bytes = column(x) + (line.top - clip_.top);
        for (int k = first; k < past; k += lanes)
            raise_run(bytes + k, ramp, in_steps(distance - k * line.along_x), reach, past - k);
    }
    for (int g = (left - first_column_) / group; g <= (right - 1 - first_column_) / group; ++g) {
        Rows& touched = touched_[static_cast<std::size_t>(g)];
        touched.top = std::min(touched.top, line.top - clip_.top);
        touched.bottom = std::max(touched.bottom, line.bottom - clip_.top);
    }
    return true;
}

void ColumnBand::move_to(int left, int right) {
    if (left >= first_column_ && right <= first_column_ + columns) return;
    flush();
    // Curves mostly run to the right: three quarters of what is free lie there.
    first_column_ = left - (columns - (right - left)) / 4;
}

void ColumnBand::flush() {
    for (std::size_t g = 0; g < touched_.size(); ++g) {
        if (touched_[g].top < touched_[g].bottom) flush_group(static_cast<int>(g) * group, touched_[g]);
        touched_[g] = {height_, 0};
    }
}

void ColumnBand::flush_group(int group_column, Rows rows) {
    int const x = first_column_ + group_column;
    std::array<std::uint8_t, group * group> block;
    for (int top = rows.top / group * group; top < rows.bottom; top += group) {
        for (int i = 0; i < group; ++i) {
            std::uint8_t* const from = column(x + i) + top;
            std::memcpy(block.data() + i * group, from, group);
            std::memset(from, 0, group);
        }
        transpose(block);
        raise_block(x, clip_.top + top, block);
    }
}

void ColumnBand::raise_block(int x, int top, std::array<std::uint8_t, group * group> const& block) {
    const PixelBox box = intersection({x, top, x + group, top + group}, clip_);
    if (box.empty()) return;
    bool const whole = box.width() == group;
    for (int y = box.top; y < box.bottom; ++y) {
        std::uint8_t const* const from = block.data() + (y - top) * group;
        std::uint8_t* const to = mask_->row(y);
        if (whole)
            for (int i = 0; i < group; ++i) to[x + i] = std::max(to[x + i], from[i]);
        else
            for (int i = box.left - x; i < box.right - x; ++i) to[x + i] = std::max(to[x + i], from[i]);
    }
    mask_->touch(box);
}

} // namespace qv::raster
