// The context menu: when it comes, and what its entries do.
#include "widget.h"

#include "render/plot_geometry.h"

#include <QtCore/QFile>
#include <QtCore/QMetaProperty>
#include <QtCore/QMimeData>
#include <QtCore/QTemporaryDir>
#include <QtGui/QClipboard>
#include <QtGui/QContextMenuEvent>
#include <QtPrintSupport/QPrintPreviewDialog>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>

#include <doctest/doctest.h>

namespace qv::test {
namespace {

struct MenuPage {
    ShownWidget shown;
    qt::QvGraphWidget& widget = shown.widget;
    qvGraph& page = widget.control();
    QPoint in_plot, outside{2, 2};

    MenuPage() {
        page.NewGraph("G", 0, 10, 0, 10);
        page.GraphPosition({10, 10, 80, 80});
        page.Refresh();
        const Box plot = render::plot_box(*control::state_of(page).Graphs[0]);
        in_plot = QPoint(static_cast<int>((plot.left + plot.width / 2) / 15),
                         static_cast<int>((plot.top + plot.height / 2) / 15));
    }
    void ask(QContextMenuEvent::Reason reason, QPoint place, Qt::KeyboardModifiers keys = {}) {
        QContextMenuEvent event(reason, place, widget.page_view().mapToGlobal(place), keys);
        QApplication::sendEvent(&widget.page_view(), &event);
    }
    bool send(QPoint place, Qt::KeyboardModifiers keys = {},
              QContextMenuEvent::Reason reason = QContextMenuEvent::Mouse) {
        ask(reason, place, keys);
        return close_menu();
    }
    QMenu* menu() const { return widget.findChild<QMenu*>("PageMenu"); }
    bool close_menu() {
        bool const was_open = menu() != nullptr;
        delete menu();
        return was_open;
    }
    void choose(char const* name) {
        ask(QContextMenuEvent::Keyboard, outside);
        REQUIRE(menu() != nullptr);
        auto* const action = menu()->findChild<QAction*>(name);
        REQUIRE_MESSAGE(action != nullptr, name);
        REQUIRE(action->isEnabled());
        action->trigger();
        close_menu();
    }
    bool is_possible(char const* name) {
        ask(QContextMenuEvent::Keyboard, outside);
        bool const enabled = menu()->findChild<QAction*>(name)->isEnabled();
        close_menu();
        return enabled;
    }
    template <class Dialog>
    Dialog& dialog(char const* name) {
        auto* const found = widget.findChild<Dialog*>(name);
        REQUIRE_MESSAGE(found != nullptr, name);
        return *found;
    }
};

TEST_CASE("the menu comes where a right click is no gesture of the page") {
    MenuPage on;
    CHECK(on.send(on.outside));
    CHECK_FALSE(on.send(on.in_plot)); // shows everything
    for (const Qt::KeyboardModifier key : {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier})
        CHECK_FALSE(on.send(on.outside, key));
    CHECK(on.send(on.in_plot, {}, QContextMenuEvent::Keyboard));
    QTest::keyClick(&on.widget.page_view(), Qt::Key_F10, Qt::ShiftModifier);
    CHECK(on.close_menu());
    on.page.GraphAllowZoom(false);
    CHECK(on.send(on.in_plot));

    CHECK(on.widget.setProperty("ContextMenu", false));
    CHECK_FALSE(on.send(on.outside));
    CHECK_FALSE(on.send(on.outside, {}, QContextMenuEvent::Keyboard));
    QTest::keyClick(&on.widget.page_view(), Qt::Key_F10, Qt::ShiftModifier);
    CHECK_FALSE(on.close_menu());
}

TEST_CASE("zooming is taken back from the menu, whatever the gestures' switches say") {
    MenuPage on;
    on.page.GestureUndoZoom(false);
    on.page.GestureKeyboard(false);
    CHECK_FALSE(on.is_possible("UndoZoom"));
    auto const first_end = [&] { return control::state_of(on.page).Graphs[0]->Axes[0].AxisValue1; };
    auto const zoom_in = [&] {
        QTest::mouseClick(&on.widget.page_view(), Qt::LeftButton, Qt::ShiftModifier, on.in_plot);
        CHECK(first_end() > 0);
    };
    zoom_in();
    on.choose("UndoZoom");
    CHECK(first_end() == 0);
    zoom_in();
    on.choose("ShowEverything");
    CHECK(first_end() == 0);
    on.page.GraphAllowZoom(false);
    CHECK_FALSE(on.is_possible("ShowEverything"));
}

TEST_CASE("the page is copied, saved and previewed, and a failure is told") {
    MenuPage on;
    QGuiApplication::clipboard()->clear();
    on.choose("Copy");
    CHECK(QGuiApplication::clipboard()->mimeData()->hasFormat("image/png"));

    const QTemporaryDir folder;
    auto const save = [&](QString const& file) {
        on.choose("SaveAs");
        auto& dialog = on.dialog<QFileDialog>("SavePage");
        Q_EMIT dialog.fileSelected(file);
        delete &dialog;
    };
    save(folder.filePath("page.svg"));
    QFile file(folder.filePath("page.svg"));
    REQUIRE(file.open(QIODevice::ReadOnly));
    CHECK(file.readAll().contains("<svg"));
    save(folder.filePath("nowhere/page.png"));
    CHECK(on.dialog<QMessageBox>("PageFailure").text().contains("nowhere"));
    delete on.widget.findChild<QMessageBox*>("PageFailure");

    on.choose("Print");
    delete &on.dialog<QPrintPreviewDialog>("PrintPage");
}

TEST_CASE("help tells of the gestures that are on") {
    MenuPage on;
    auto const help = [&] {
        on.choose("Gestures");
        auto& box = on.dialog<QMessageBox>("GestureHelp");
        const QString text = box.text();
        delete &box;
        return text;
    };
    CHECK(help().contains("Wheel"));
    on.page.GestureWheelZoom(false);
    CHECK_FALSE(help().contains("Wheel"));
    CHECK(help().contains("Escape"));
}

TEST_CASE("every switch of a gesture is a designable property of the widget") {
    qt::QvGraphWidget widget;
    QMetaObject const& meta = qt::QvGraphWidget::staticMetaObject;
    int switches = 0;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        INFO(property.name());
        CHECK(property.isDesignable());
        if (property.typeId() != QMetaType::Bool || QByteArray(property.name()) == "followDesktop") continue;
        CHECK(property.read(&widget) == QVariant(true));
        CHECK(property.write(&widget, false));
        CHECK(property.read(&widget) == QVariant(false));
        if (!QByteArray(property.name()).startsWith("Gesture")) continue;
        CHECK(widget.Get(property.name()) == QVariant(false));
        ++switches;
    }
    CHECK(switches == 9);
}

} // namespace
} // namespace qv::test
