// Built where Qt is not installed: there is no window to open.
#include "demo/window.h"

namespace qv::demo {

bool has_display() {
    return false;
}

int show_in_window(std::filesystem::path const&) {
    return 2;
}

int show_picker(std::filesystem::path const&) {
    return 2;
}

} // namespace qv::demo
