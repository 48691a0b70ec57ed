// qvdemo: draws real measurements on a page, in a window where there is a display, else into a PNG file.
#include "demo/climate_page.h"
#include "demo/window.h"
#include "qvgraph/EventSink.h"
#include "qvgraph/HeadlessHost.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <iostream>

namespace {

constexpr int failed = 2;

// Tells on stderr what the control reports.
class ErrorPrinter : public qv::host::EventSink {
public:
    void ErrorMsg(std::string& Source, std::string& Description) override {
        std::cerr << "qvdemo: " << Source << ": " << Description << "\n";
        any = true;
    }
    bool any = false;
};

int draw(std::filesystem::path const& data, std::filesystem::path const& folder) {
    qv::headless::HeadlessHost host({1200, 800});
    ErrorPrinter errors;
    host.control().set_events(&errors);
    qv::demo::draw_climate_page(host.control(), data);
    std::filesystem::create_directories(folder);
    auto const file = folder / "climate.png";
    host.save(file);
    std::cout << "wrote " << file.string() << "\n";
    return errors.any ? failed : 0;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app(
        "Draws real measurements on a page: in a window where there is a display, else into a PNG file");
    std::filesystem::path folder = "out";
    std::filesystem::path data = QV_EXAMPLE_DATA;
    auto const* const out = app.add_option("--out", folder, "folder for the picture; opens no window");
    app.add_option("--data", data, "folder of the data files");
    bool picker = false;
    app.add_flag("--picker", picker,
                 "asks for a gradient and a colour in a window and paints the page with them")
        ->excludes("--out");
    CLI11_PARSE(app, argc, argv);
    try {
        if (picker && !qv::demo::has_display())
            throw std::runtime_error(
                "--picker needs a display (DISPLAY or WAYLAND_DISPLAY) and a build with Qt");
        if (picker) return qv::demo::show_picker(data);
        if (out->empty() && qv::demo::has_display()) return qv::demo::show_in_window(data);
        return draw(data, folder);
    } catch (std::exception const& failure) {
        std::cerr << "qvdemo: " << failure.what() << "\n";
        return failed;
    }
}
