#include "demo/window.h"

#include "demo/climate_page.h"
#include "platform/qt/QvGraphWidget.h"

#include <QtWidgets/QApplication>

#include <cstdlib>
#include <iostream>

namespace qv::demo {
namespace {

bool is_set(char const* variable) {
    char const* const value = std::getenv(variable);
    return value && *value;
}

} // namespace

bool has_display() {
    return is_set("DISPLAY") || is_set("WAYLAND_DISPLAY");
}

int show_in_window(std::filesystem::path const& data) {
    int argument_count = 1;
    char name[] = "qvdemo";
    char* arguments[] = {name, nullptr};
    QApplication application(argument_count, arguments);
    qt::QvGraphWidget window;
    QObject::connect(
        &window, &qt::QvGraphWidget::ErrorMsg, [](QString const& source, QString const& description) {
            std::cerr << "qvdemo: " << source.toStdString() << ": " << description.toStdString() << "\n";
        });
    window.setWindowTitle("qvGraph");
    window.resize(1216, 816);
    draw_climate_page(window.control(), data);
    window.show();
    return QApplication::exec();
}

} // namespace qv::demo
