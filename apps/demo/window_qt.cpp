#include "demo/window.h"

#include "demo/climate_page.h"
#include "qvgraph/QvGraphWidget.h"

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

void tell_color(char const* name, Color color) {
    std::cout << name << " 0x" << std::hex << color << std::dec << std::endl;
}

void see_through_to_page(qvGraph& page) {
    for (std::int16_t graph = 0; graph < page.NumGraphs(); ++graph) {
        page.SetSelectedGraph(graph);
        page.BorderTransparent(true);
    }
}

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
    tell_color("Color1", first);
    tell_color("Color2", second);
    std::cout << "GradientAngle " << angle << ", gShift " << shift << ", gStyle " << style << std::endl;
    page.PageColor1(first);
    page.PageColor2(second);
    page.PageGradient(angle);
    page.PageGShift(shift);
    page.PageGStyle(style);
    see_through_to_page(page);
    page.Refresh();
}

// Asks for the colour of the graphs' titles.
void ask_for_title_color(qvGraph& page) {
    Color color = 0;
    page.GetColor(color);
    if (color == -1) {
        std::cout << "cancelled: the titles stay as they are" << std::endl;
        return;
    }
    tell_color("GraphTitleColor", color);
    for (std::int16_t graph = 0; graph < page.NumGraphs(); ++graph) {
        page.SetSelectedGraph(graph);
        page.GraphTitleColor(color);
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
    QTimer::singleShot(0, [&demo] { // when the page is on the screen
        ask_for_page_fill(demo.page());
        ask_for_title_color(demo.page());
    });
    return demo.run_until_closed();
}

} // namespace qv::demo
