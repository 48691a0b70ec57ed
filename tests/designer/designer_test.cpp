// A form made in Designer: loaded at run time through the plugin, and compiled into a program.
#include "qvgraph/QvGraphWidget.h"
#include "ui_form.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QPluginLoader>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>
#include <QtUiTools/QUiLoader>
#include <QtWidgets/QApplication>

#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>

#include <memory>

namespace {

using qv::qt::QvGraphWidget;

void check_form(QWidget& form) {
    auto* const page = form.findChild<QvGraphWidget*>("graphPage");
    auto* const plain = form.findChild<QvGraphWidget*>("plainPage");
    REQUIRE(page != nullptr);
    REQUIRE(plain != nullptr);
    CHECK(page->look() == "light");
    CHECK(page->control().LookName() == "light");
    CHECK(page->title() == QString::fromUtf8("Temperatur in Köln"));
    CHECK(page->control().NumGraphs() == 1);
    CHECK(page->control().GraphTitle() == "Temperatur in Köln");
    CHECK_FALSE(page->has_context_menu());
    CHECK_FALSE(page->control().GestureWheelZoom());
    CHECK(page->control().GestureKeyboard());

    CHECK(plain->control().NumGraphs() == 0); // the sample is for designing alone
    CHECK(plain->look().isEmpty());
    CHECK(plain->has_context_menu());
    CHECK(plain->control().GestureWheelZoom());
}

TEST_CASE("a form loaded at run time has the widget, with the properties of its file") {
    QUiLoader loader;
    REQUIRE(loader.availableWidgets().contains("qv::qt::QvGraphWidget"));
    QFile file(qEnvironmentVariable("QV_SOURCE_DIR") + "/tests/designer/form.ui");
    REQUIRE(file.open(QIODevice::ReadOnly));
    const std::unique_ptr<QWidget> form(loader.load(&file));
    REQUIRE_MESSAGE(form != nullptr, loader.errorString().toStdString());
    check_form(*form);
}

TEST_CASE("the same form compiled into a program") {
    QWidget form;
    Ui::Form parts;
    parts.setupUi(&form);
    check_form(form);
}

TEST_CASE("Designer finds icon and group, and shows a sample that follows the properties") {
    QPluginLoader loader(QStringLiteral(QV_DESIGNER_PLUGIN));
    auto* const plugin = qobject_cast<QDesignerCustomWidgetInterface*>(loader.instance());
    REQUIRE_MESSAGE(plugin != nullptr, loader.errorString().toStdString());
    CHECK(plugin->group() == "qvGraph");
    CHECK_FALSE(plugin->icon().pixmap(24, 24).toImage().allGray());
    plugin->initialize(nullptr);
    CHECK(plugin->isInitialized());
    const std::unique_ptr<QWidget> made(plugin->createWidget(nullptr));
    auto* const widget = qobject_cast<QvGraphWidget*>(made.get());
    REQUIRE(widget != nullptr);
    CHECK(widget->control().NumGraphs() == 1);
    CHECK(widget->title().isEmpty());
    widget->resize(400, 300);
    const QImage without = widget->page().copy();
    CHECK(widget->setProperty("title", "A title"));
    CHECK(widget->control().GraphTitle() == "A title");
    CHECK(widget->page() != without);
    CHECK(widget->setProperty("title", QString())); // as Designer's button to reset does
    CHECK(widget->page() == without);
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    doctest::Context context(argc, argv);
    return context.run();
}
