// On a real display: what the display server shows, and input that comes through it.
#include "widget.h"

#include <QtCore/QProcess>
#include <QtGui/QScreen>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QApplication>

#include <doctest/doctest.h>

namespace qv::test {
namespace {

TEST_SUITE("display") {
    TEST_CASE("a screenshot equals the page of a host without a window") {
        REQUIRE(QApplication::platformName() == "xcb");
        ShownWidget shown({1200, 800});
        draw_page(shown.widget.control());
        const QImage expected = headless_page({1200, 800}, 96);
        auto const screenshot = [] {
            QScreen* const screen = QApplication::primaryScreen();
            return screen->grabWindow(0, 0, 0, 1200, 800).toImage().convertToFormat(QImage::Format_RGB32);
        };
        // The server draws when it comes to it; QTRY-like waiting ends with the first equal picture.
        bool const equal = QTest::qWaitFor([&] { return different_pixels(screenshot(), expected) == 0; });
        CHECK(equal);
        if (equal) return;
        screenshot().save("screenshot_actual.png");
        expected.save("screenshot_expected.png");
    }

    TEST_CASE("mouse and keys come through the display server") {
        ShownWidget shown;
        shown.widget.activateWindow();
        REQUIRE(QTest::qWaitForWindowActive(&shown.widget));
        shown.widget.setFocus();
        QSignalSpy double_clicks(&shown.widget, &qt::QvGraphWidget::DblClick);
        QSignalSpy keys(&shown.widget, &qt::QvGraphWidget::KeyPress);
        QProcess hands;
        hands.start("xdotool", {"mousemove", "100", "120", "click", "--repeat", "2", "--delay", "60", "1",
                                "key", "--delay", "60", "Q", "Left", "Return"});
        REQUIRE(hands.waitForStarted());
        CHECK(QTest::qWaitFor([&] { return keys.size() == 2; }, 20000));
        CHECK(hands.waitForFinished());
        CHECK(double_clicks.size() == 1);
        REQUIRE(keys.size() == 2);
        CHECK(keys[0][0].toInt() == 'Q');
        CHECK(keys[1][0].toInt() == 13);
    }
}

} // namespace
} // namespace qv::test
