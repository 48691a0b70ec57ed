// The groups of benchmarks, each registered under its own names.
#pragma once

#include <array>
#include <cstddef>

namespace qv::bench {

constexpr std::array<std::size_t, 5> point_counts{1000, 10000, 100000, 1000000, 10000000};

void register_data_entry();
void register_redraw();
void register_gradient();
void register_interaction();
void register_formulas();
void register_read_csv(); // where qvplot is built

} // namespace qv::bench
