// Two screens side by side, the right one twice as dense.
#include "widget.h"

#include "qvgraph/qvGradientForm2.h"

#include <QtCore/QTimer>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>

#include <doctest/doctest.h>

namespace qv::test {
namespace {

QPoint corner_of_screen(char const* name) {
    for (QScreen const* screen : QApplication::screens())
        if (screen->name() == name) return screen->geometry().topLeft();
    FAIL("no such screen");
    return {};
}

void move_to(QWidget& widget, char const* screen) {
    widget.move(corner_of_screen(screen));
    for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
}

/// How many black pixels the picture's middle row begins with: the outline of a graph at its edge.
int outline_of(QImage const& page) {
    int width = 0;
    while (page.pixel(width, page.height() / 2) == qRgb(0, 0, 0)) ++width;
    return width;
}

TEST_SUITE("screens") {
    TEST_CASE("a page moved to another screen is drawn anew in that screen's pixels") {
        ShownWidget shown;
        draw_page(shown.widget.control());
        CHECK(different_pixels(shown.widget.page(), headless_page({600, 400}, 96)) == 0);
        move_to(shown.widget, "dense");
        CHECK(shown.widget.devicePixelRatioF() == 2);
        CHECK(shown.widget.page().devicePixelRatio() == 2);
        CHECK(different_pixels(shown.widget.page(), headless_page({1200, 800}, 192)) == 0);
        CHECK(outline_of(shown.widget.page()) == 2);
        move_to(shown.widget, "plain");
        CHECK(outline_of(shown.widget.page()) == 1);
        CHECK(different_pixels(shown.widget.page(), headless_page({600, 400}, 96)) == 0);
    }

    TEST_CASE("an emptied page follows too") {
        ShownWidget shown;
        draw_page(shown.widget.control());
        shown.widget.control().Reset();
        move_to(shown.widget, "dense");
        QImage white(1200, 800, QImage::Format_RGB32);
        white.fill(Qt::white);
        CHECK(different_pixels(shown.widget.page(), white) == 0);
    }

    TEST_CASE("a page put into a window on another screen fits it") {
        ShownWidget shown;
        draw_page(shown.widget.control());
        QWidget window;
        window.resize(shown.widget.size());
        window.move(corner_of_screen("dense"));
        window.show();
        REQUIRE(QTest::qWaitForWindowExposed(&window));
        shown.widget.setParent(&window);
        shown.widget.show();
        CHECK(different_pixels(shown.widget.page(), headless_page({1200, 800}, 192)) == 0);
        shown.widget.setParent(nullptr);
    }

    TEST_CASE("the gradient dialog moved to another screen paints in that screen's pixels") {
        ShownWidget shown;
        auto const& preview = gradient_picker::gradient_form().qvGradient1.Picture1;
        int moves = 0;
        QTimer::singleShot(0, [&] {
            QWidget& dialog = *QApplication::activeModalWidget();
            for (auto const& [screen, twips] : {std::pair("dense", 7.5), {"plain", 15.0}}) {
                move_to(dialog, screen);
                CHECK(preview.picture->TwipsPerPixelX() == twips);
                CHECK(preview.picture->Width() == doctest::Approx(preview.Width).epsilon(0.01));
                ++moves;
            }
            dialog.close();
        });
        Color color = 0;
        shown.widget.control().GetColor(color);
        CHECK(moves == 2);
    }

    TEST_CASE("a page made on one screen and first shown on another fits it") {
        qt::QvGraphWidget widget;
        widget.resize(around_page(widget, {600, 400}));
        draw_page(widget.control());
        widget.move(corner_of_screen("dense"));
        widget.show();
        REQUIRE(QTest::qWaitForWindowExposed(&widget));
        CHECK(different_pixels(widget.page(), headless_page({1200, 800}, 192)) == 0);
    }
}

} // namespace
} // namespace qv::test
