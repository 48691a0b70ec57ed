// The widget's own texts in another language.
#include "widget.h"

#include <QtCore/QLocale>
#include <QtCore/QRegularExpression>
#include <QtCore/QTimer>
#include <QtCore/QTranslator>
#include <QtGui/QContextMenuEvent>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
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

/// What a person sees and hears of the gradient dialog, in every state that shows other texts.
QStringList texts_of_dialog() {
    ShownWidget shown;
    QStringList texts;
    auto const look = [&] {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog) return false;
        texts.push_back(dialog->windowTitle());
        for (auto const* const button : dialog->findChildren<QAbstractButton*>())
            texts << button->text() << button->toolTip() << button->accessibleName();
        for (auto const* const label : dialog->findChildren<QLabel*>()) {
            texts.push_back(label->text());
            CHECK(label->fontMetrics().horizontalAdvance(label->text()) <= label->contentsRect().width());
        }
        for (auto const* const edit : dialog->findChildren<QLineEdit*>())
            texts << edit->toolTip() << edit->accessibleName();
        dialog->reject();
        return true;
    };
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        if (look()) timer.stop();
    });
    timer.start(1);
    Color color = 0;
    shown.widget.control().GetColor(color);
    texts.removeAll(QString());
    return texts;
}

TEST_CASE("the gradient dialog speaks the person's language, numbers and all") {
    const QStringList english = texts_of_dialog();
    CHECK(english.contains("Use color names"));
    REQUIRE(qt::QvGraphWidget::translate(QLocale(QLocale::German)));
    const QStringList german = texts_of_dialog();
    for (QTranslator* const translator : qApp->findChildren<QTranslator*>()) delete translator;
    REQUIRE(german.size() == english.size());
    for (qsizetype i = 0; i < german.size(); ++i) CHECK(german[i] != english[i]);
    CHECK(german.contains("Abbrechen"));
    CHECK(german.filter(QRegularExpression("^Farbe 1 =.\\d+$")).size() == 1);
    CHECK(texts_of_dialog() == english);
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
