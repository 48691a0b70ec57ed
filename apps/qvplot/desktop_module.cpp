#include "qvplot/desktop.h"

#include "qvplot/plot_error.h"

#include <dlfcn.h>

#include <array>
#include <cstdlib>
#include <filesystem>

namespace qv::plot {
namespace {

constexpr char const* module_name = "libqvplot_desktop.so";

bool has_display() {
    for (char const* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        char const* const value = std::getenv(name);
        if (value && *value) return true;
    }
    return false;
}

// Beside the program, as built, or where it was installed.
std::filesystem::path module_file() {
    std::error_code none;
    auto const folder = std::filesystem::read_symlink("/proc/self/exe", none).parent_path();
    for (auto const& place : {folder / module_name, folder / QV_MODULE_FOLDER / module_name})
        if (std::filesystem::exists(place, none)) return place;
    throw PlotError("the module for windows and printers, " + (folder / module_name).string()
                    + ", is missing; write a file with --out FILE.png");
}

} // namespace

int use_desktop(Arguments const& arguments, bool shows_window) {
    if (shows_window && !has_display())
        throw PlotError("there is no display for a window; write a file with --out FILE.png");
    // Never unloaded: the window system's libraries do not survive it.
    void* const module = dlopen(module_file().c_str(), RTLD_NOW | RTLD_LOCAL);
    auto const entry =
        module ? reinterpret_cast<decltype(&qvplot_desktop)>(dlsym(module, "qvplot_desktop")) : nullptr;
    if (!entry)
        throw PlotError(std::string("the module for windows and printers cannot be loaded: ") + dlerror());
    return entry(arguments.count, arguments.values);
}

} // namespace qv::plot
