// The series all benchmarks draw: a noisy sine, the same on every machine.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace qv::bench {

struct Series {
    std::vector<double> x;
    std::vector<double> y;
};

constexpr std::uint64_t first_seed = 12345;

/// x runs evenly from 0 to 100, y is sin(x) with noise below 0.1 from a 64-bit linear congruential
/// generator, plus an offset.
inline Series noisy_sine(std::size_t count, std::uint64_t seed = first_seed, double offset = 0) {
    Series series{std::vector<double>(count), std::vector<double>(count)};
    for (std::size_t i = 0; i < count; ++i) {
        seed = seed * 6364136223846793005ULL + 1442695040888963407ULL;
        double const noise = static_cast<double>(seed >> 11) * 0x1p-53;
        series.x[i] = count > 1 ? 100.0 * static_cast<double>(i) / static_cast<double>(count - 1) : 0;
        series.y[i] = std::sin(series.x[i]) + 0.1 * (2 * noise - 1) + offset;
    }
    return series;
}

} // namespace qv::bench
