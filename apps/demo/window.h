// The demo page in a window.
#pragma once

#include <filesystem>

namespace qv::demo {

/// Whether this program can open a window here.
bool has_display();

/// Shows the page in a window until it is closed; the program's exit status.
int show_in_window(std::filesystem::path const& data);

/// The same, and asks for a gradient, which the page is painted with; prints what was chosen.
int show_picker(std::filesystem::path const& data);

} // namespace qv::demo
