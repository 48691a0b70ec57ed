// The groups of benchmarks, each registered under its own names.
#pragma once

namespace qv::bench {

void register_data_entry();
void register_redraw();

} // namespace qv::bench
