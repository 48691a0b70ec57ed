// Tests of the widget: doctest cases inside one application object.
#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QStyleFactory>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    // The same bars and frames whatever desktop the tests run on.
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    doctest::Context context(argc, argv);
    return context.run();
}
