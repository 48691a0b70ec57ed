#include "demo/window.h"

#include "demo/climate_page.h"
#include "platform/qt/QvGraphWidget.h"

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include <array>
#include <cstdlib>
#include <iostream>

namespace qv::demo {
namespace {

bool is_set(char const* variable) {
    char const* const value = std::getenv(variable);
    return value && *value;
}

// The application with the demo page in a window of its own.
class Demo {
public:
    explicit Demo(std::filesystem::path const& data) {
        QObject::connect(
            &window_, &qt::QvGraphWidget::ErrorMsg, [](QString const& source, QString const& description) {
                std::cerr << "qvdemo: " << source.toStdString() << ": " << description.toStdString() << "\n";
            });
        window_.setWindowTitle("qvGraph");
        window_.resize(1216, 816);
        draw_climate_page(page(), data);
        window_.show();
    }
    qvGraph& page() { return window_.control(); }
    int run_until_closed() { return QApplication::exec(); }

private:
    int argument_count_ = 1;
    std::array<char, 7> name_{"qvdemo"};
    std::array<char*, 2> arguments_{name_.data(), nullptr};
    QApplication application_{argument_count_, arguments_.data()};
    qt::QvGraphWidget window_;
};

// Asks for a fill and puts it behind the graphs.
void ask_for_page_fill(qvGraph& page) {
    Color first = 0, second = 0;
    float angle = 0, shift = 0;
    std::int16_t style = 0;
    page.GetGradient(first, second, angle, shift, style);
    if (first == -1) {
        std::cout << "cancelled: the page stays as it is" << std::endl;
        return;
    }
    std::cout << std::hex << "Color1 0x" << first << ", Color2 0x" << second << std::dec << ", GradientAngle "
              << angle << ", gShift " << shift << ", gStyle " << style << std::endl;
    page.PageColor1(first);
    page.PageColor2(second);
    page.PageGradient(angle);
    page.PageGShift(shift);
    page.PageGStyle(style);
    for (std::int16_t graph = 0; graph < page.state().NumGraphs(); ++graph) {
        page.SetSelectedGraph(graph);
        page.BorderTransparent(true);
    }
    page.Refresh();
}

} // namespace

bool has_display() {
    return is_set("DISPLAY") || is_set("WAYLAND_DISPLAY");
}

int show_in_window(std::filesystem::path const& data) {
    return Demo(data).run_until_closed();
}

int show_picker(std::filesystem::path const& data) {
    Demo demo(data);
    QTimer::singleShot(0, [&demo] { ask_for_page_fill(demo.page()); }); // when the page is on the screen
    return demo.run_until_closed();
}

} // namespace qv::demo
