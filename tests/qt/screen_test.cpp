// On a real display: what the display server shows, and input that comes through it.
#include "control/state_of.h"
#include "interact/zoom.h"
#include "widget.h"

#include <QtCore/QProcess>
#include <QtGui/QScreen>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>

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

    TEST_CASE("the menu comes by mouse and by keys, and leaves right clicks to the plot area") {
        ShownWidget shown;
        shown.widget.activateWindow();
        REQUIRE(QTest::qWaitForWindowActive(&shown.widget));
        shown.widget.setFocus();
        shown.widget.control().NewGraph("G", 0, 10, 0, 10);
        shown.widget.control().Refresh();
        const QPoint corner = shown.widget.page_view().mapToGlobal(QPoint(0, 0));
        auto const act = [&](QPoint place, QStringList const& what) {
            const QStringList there{"mousemove", QString::number(corner.x() + place.x()),
                                    QString::number(corner.y() + place.y()), "sleep", "0.1"};
            CHECK(QProcess::execute("xdotool", there + what) == 0);
        };
        auto const has_menu = [&] { return shown.widget.findChild<QMenu*>("PageMenu") != nullptr; };
        QSignalSpy keys(&shown.widget, &qt::QvGraphWidget::KeyPress);
        act({300, 200}, {"click", "3", "sleep", "0.1", "key", "Q"}); // a menu would take the key
        CHECK(QTest::qWaitFor([&] { return keys.size() == 1; }, 20000));
        CHECK_FALSE(has_menu());
        struct Row {
            QPoint place;
            QStringList what;
        };
        for (Row const& row : {Row{{3, 3}, {"click", "3"}},
                               {{300, 200}, {"key", "shift+F10"}},
                               {{300, 200}, {"key", "Menu"}}}) {
            INFO(row.what.join(' ').toStdString());
            act(row.place, row.what);
            CHECK(QTest::qWaitFor(has_menu, 20000));
            delete shown.widget.findChild<QMenu*>("PageMenu");
        }
    }

    TEST_CASE("a rubber band drawn by hand zooms as it does without a window") {
        ShownWidget shown;
        shown.widget.activateWindow();
        REQUIRE(QTest::qWaitForWindowActive(&shown.widget));
        headless::HeadlessHost host({600, 400});
        for (qvGraph* const page : {&shown.widget.control(), &host.control()}) {
            page->NewGraph("zoomed", 0, 10, 0, 10);
            page->Refresh();
        }
        const Point from{150 * 15.0, 120 * 15.0}, to{400 * 15.0, 260 * 15.0};
        for (auto const& [kind, place] : {std::pair(host::MouseKind::Press, from),
                                          {host::MouseKind::Move, to},
                                          {host::MouseKind::Release, to}})
            host.input(host::MouseInput{kind, host::left_button, 0, place});
        const QPoint corner = shown.widget.page_view().mapToGlobal(QPoint(0, 0));
        auto const at = [&](int x, int y) {
            return QStringList{QString::number(corner.x() + x), QString::number(corner.y() + y)};
        };
        QProcess hands;
        hands.start("xdotool",
                    QStringList{"mousemove"} + at(150, 120)
                        + QStringList{"sleep", "0.1", "mousedown", "1", "sleep", "0.1", "mousemove"}
                        + at(300, 200) + QStringList{"sleep", "0.1", "mousemove"} + at(400, 260)
                        + QStringList{"sleep", "0.1", "mouseup", "1"});
        REQUIRE(hands.waitForStarted());
        auto const ranges = [](qvGraph& page) {
            return interact::shown_ranges(*control::state_of(page).Graphs[0]);
        };
        CHECK(
            QTest::qWaitFor([&] { return ranges(shown.widget.control()) == ranges(host.control()); }, 20000));
        CHECK((hands.state() == QProcess::NotRunning || hands.waitForFinished()));
        CHECK(ranges(host.control())[0].first > 1);
    }
}

} // namespace
} // namespace qv::test
