// The widget's own texts in another language.
#include "widget.h"

#include <QtCore/QLocale>
#include <QtCore/QRegularExpression>
#include <QtCore/QTranslator>
#include <QtGui/QContextMenuEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>

#include <doctest/doctest.h>

namespace qv::test {
namespace {

/// Every text of the menu, and the help that its last entry opens.
QStringList texts_of_menu() {
    ShownWidget shown;
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(&shown.widget.page_view(), &event);
    auto* const menu = shown.widget.findChild<QMenu*>("PageMenu");
    REQUIRE(menu != nullptr);
    QStringList texts;
    for (QAction const* action : menu->actions())
        if (!action->isSeparator()) texts.push_back(action->text());
    menu->actions().last()->trigger();
    delete menu;
    auto* const help = shown.widget.findChild<QMessageBox*>("GestureHelp");
    REQUIRE(help != nullptr);
    texts += help->text().split(QStringLiteral("<td>"));
    delete help;
    return texts;
}

TEST_CASE("a translation reaches every text, and no language is made up") {
    const QStringList english = texts_of_menu();
    CHECK_FALSE(qt::QvGraphWidget::translate(QLocale(QLocale::Japanese)));
    CHECK(texts_of_menu() == english);
    REQUIRE(qt::QvGraphWidget::translate(QLocale(QLocale::German, QLocale::Austria)));
    const QStringList german = texts_of_menu();
    for (QTranslator* const translator : qApp->findChildren<QTranslator*>()) delete translator;
    REQUIRE(german.size() == english.size());
    CHECK(german[0] == "&Kopieren");
    CHECK(german.join(' ').contains(QString::fromUtf8("zurücknehmen")));
    for (qsizetype i = 0; i < german.size(); ++i) {
        INFO(english[i].toStdString());
        CHECK((german[i] != english[i] || !english[i].contains(QRegularExpression("^[&A-Za-z]"))));
    }
    CHECK(texts_of_menu() == english);
}

} // namespace
} // namespace qv::test
