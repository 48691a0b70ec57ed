#include "hosts/qt/page_menu.h"

#include "hosts/qt/WidgetHost.h"
#include "hosts/qt/guarded.h"
#include "qvgraph/QvGraphWidget.h"

#include <QtCore/QCoreApplication>
#include <QtPrintSupport/QPrintPreviewDialog>
#include <QtPrintSupport/QPrinter>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>

#include <algorithm>
#include <exception>
#include <iterator>
#include <memory>

namespace qv::qt {
namespace {

char const* const menu_name = "PageMenu";

/// The texts of menu and dialogs, for translators in one place.
struct PageMenu {
    Q_DECLARE_TR_FUNCTIONS(qv::qt::PageMenu)
};

struct FileKind {
    char const* filter;
    char const* suffix;
};
constexpr FileKind file_kinds[] = {{QT_TRANSLATE_NOOP("qv::qt::PageMenu", "Picture (*.png)"), "png"},
                                   {QT_TRANSLATE_NOOP("qv::qt::PageMenu", "Shapes and text (*.svg)"), "svg"},
                                   {QT_TRANSLATE_NOOP("qv::qt::PageMenu", "Sheet of paper (*.pdf)"), "pdf"},
                                   {QT_TRANSLATE_NOOP("qv::qt::PageMenu", "Bitmap (*.bmp)"), "bmp"}};

struct HelpRow {
    char const* gesture;
    char const* effect;
    bool (qvGraph::*is_on)() const = nullptr; // nullptr: always
};
constexpr HelpRow help_rows[] = {
    {QT_TRANSLATE_NOOP("qv::qt::PageMenu", "Drag in the plot area"),
     QT_TRANSLATE_NOOP("qv::qt::PageMenu", "zooms into the box")},
    {QT_TRANSLATE_NOOP("qv::qt::PageMenu", "Right click in the plot area"),
     QT_TRANSLATE_NOOP("qv::qt::PageMenu", "shows everything")},
    {QT_TRANSLATE_NOOP("qv::qt::PageMenu", "Shift + click, Shift + right click"),
     QT_TRANSLATE_NOOP("qv::qt::PageMenu", "zooms in, zooms out")},
    {QT_TRANSLATE_NOOP("qv::qt::PageMenu", "Drag a graph, an edge, the legend"),
     QT_TRANSLATE_NOOP("qv::qt::PageMenu", "moves it")},
    {QT_TRANSLATE_NOOP("qv::qt::PageMenu", "Ctrl + click, Ctrl + right click"),
     QT_TRANSLATE_NOOP("qv::qt::PageMenu", "brings the legend here, shows or hides it")},
    {QT_TRANSLATE_NOOP("qv::qt::PageMenu", "Alt + click, Alt + right click"),
     QT_TRANSLATE_NOOP("qv::qt::PageMenu", "shows or hides the cross-hair, changes its lines")},
    {QT_TRANSLATE_NOOP("qv::qt::PageMenu", "Wheel (Shift: across, Ctrl: upright)"),
     QT_TRANSLATE_NOOP("qv::qt::PageMenu", "zooms about the pointer"), &qvGraph::GestureWheelZoom},
    {QT_TRANSLATE_NOOP("qv::qt::PageMenu", "Drag with the middle button"),
     QT_TRANSLATE_NOOP("qv::qt::PageMenu", "moves what is shown"), &qvGraph::GestureMiddlePan},
    {QT_TRANSLATE_NOOP("qv::qt::PageMenu", "Two fingers"), QT_TRANSLATE_NOOP("qv::qt::PageMenu", "zoom"),
     &qvGraph::GesturePinchZoom},
    {QT_TRANSLATE_NOOP("qv::qt::PageMenu", "Arrows; + and -; Home"),
     QT_TRANSLATE_NOOP("qv::qt::PageMenu", "move what is shown; zoom; show everything"),
     &qvGraph::GestureKeyboard},
    {QT_TRANSLATE_NOOP("qv::qt::PageMenu", "Ctrl + arrows"),
     QT_TRANSLATE_NOOP("qv::qt::PageMenu", "read point by point, data set by data set"),
     &qvGraph::GestureReadPoints},
    {QT_TRANSLATE_NOOP("qv::qt::PageMenu", "Alt + Left, Alt + Right"),
     QT_TRANSLATE_NOOP("qv::qt::PageMenu", "undo and redo zooming"), &qvGraph::GestureUndoZoom},
    {QT_TRANSLATE_NOOP("qv::qt::PageMenu", "Tab, Shift + Tab"),
     QT_TRANSLATE_NOOP("qv::qt::PageMenu", "go to the next, the previous graph"),
     &qvGraph::GestureTabThrough},
    {QT_TRANSLATE_NOOP("qv::qt::PageMenu", "Escape"),
     QT_TRANSLATE_NOOP("qv::qt::PageMenu", "takes a drag back"), &qvGraph::GestureEscape}};

void open(QDialog& dialog, char const* name) {
    dialog.setObjectName(name);
    dialog.setAttribute(Qt::WA_DeleteOnClose);
    dialog.open();
}

void open_message(QvGraphWidget& widget, QMessageBox::Icon icon, QString const& text, char const* name) {
    auto* const message =
        new QMessageBox(icon, widget.window()->windowTitle(), text, QMessageBox::Ok, &widget);
    message->setTextFormat(icon == QMessageBox::NoIcon ? Qt::RichText : Qt::PlainText);
    open(*message, name);
}

void tell_failure(QvGraphWidget& widget) noexcept {
    guarded([&] {
        QString why;
        try {
            throw;
        } catch (std::exception const& failure) {
            why = QString::fromUtf8(failure.what());
        } catch (...) {
        }
        open_message(widget, QMessageBox::Warning, PageMenu::tr("This could not be done.\n%1").arg(why),
                     "PageFailure");
    });
}

void copy(QvGraphWidget& widget, WidgetHost& host) {
    auto const clipboard = host.open_clipboard();
    clipboard->clear();
    clipboard->set_picture(*widget.control().page_picture());
}

void save_as(QvGraphWidget& widget, WidgetHost& host) {
    auto* const dialog = new QFileDialog(&widget, PageMenu::tr("Save the page"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    QStringList filters;
    for (FileKind const& kind : file_kinds) filters.push_back(PageMenu::tr(kind.filter));
    dialog->setNameFilters(filters);
    dialog->setDefaultSuffix(QString::fromLatin1(file_kinds[0].suffix));
    QObject::connect(dialog, &QFileDialog::filterSelected, dialog, [dialog, filters](QString const& chosen) {
        auto const kind = std::max<qsizetype>(0, filters.indexOf(chosen));
        dialog->setDefaultSuffix(QString::fromLatin1(file_kinds[kind].suffix));
    });
    QObject::connect(dialog, &QFileDialog::fileSelected, &widget, [&widget, &host](QString const& file) {
        guarded([&] { tell_failure(widget); },
                [&] { host.save_picture(file.toStdString(), *widget.control().page_picture()); });
    });
    open(*dialog, "SavePage");
}

void print(QvGraphWidget& widget, WidgetHost& host) {
    auto const printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
    auto* const preview = new QPrintPreviewDialog(printer.get(), &widget);
    // The connection keeps the printer for as long as the dialog lives.
    QObject::connect(preview, &QPrintPreviewDialog::paintRequested, &widget,
                     [&widget, &host, printer](QPrinter* sheet) {
                         guarded([&] { tell_failure(widget); }, [&] { host.print_on(*sheet); });
                     });
    open(*preview, "PrintPage");
}

void help(QvGraphWidget& widget, WidgetHost&) {
    QString rows;
    for (HelpRow const& row : help_rows)
        if (!row.is_on || (widget.control().*row.is_on)())
            rows +=
                QStringLiteral("<tr><td>%1&nbsp;&nbsp;</td><td>%2</td></tr>")
                    .arg(PageMenu::tr(row.gesture).toHtmlEscaped(), PageMenu::tr(row.effect).toHtmlEscaped());
    open_message(widget, QMessageBox::NoIcon, QStringLiteral("<table>%1</table>").arg(rows), "GestureHelp");
}

bool always(qvGraph&) {
    return true;
}

struct Entry {
    char const* name;
    char const* text;
    void (*act)(QvGraphWidget&, WidgetHost&);
    bool (*possible)(qvGraph&) = always;
    bool ends_group = false;
};
constexpr Entry entries[] = {
    {"Copy", QT_TRANSLATE_NOOP("qv::qt::PageMenu", "&Copy"), copy},
    {"SaveAs", QT_TRANSLATE_NOOP("qv::qt::PageMenu", "&Save as..."), save_as},
    {"Print", QT_TRANSLATE_NOOP("qv::qt::PageMenu", "&Print..."), print, always, true},
    {"UndoZoom", QT_TRANSLATE_NOOP("qv::qt::PageMenu", "&Undo zoom"),
     [](QvGraphWidget& widget, WidgetHost&) { widget.control().undo_zoom(); },
     [](qvGraph& control) { return control.can_undo_zoom(); }},
    {"ShowEverything", QT_TRANSLATE_NOOP("qv::qt::PageMenu", "Show &everything"),
     [](QvGraphWidget& widget, WidgetHost&) { widget.control().show_everything(); },
     [](qvGraph& control) { return control.can_show_everything(); }, true},
    {"Gestures", QT_TRANSLATE_NOOP("qv::qt::PageMenu", "&Gestures and keys"), help}};

} // namespace

void open_page_menu(QvGraphWidget& widget, WidgetHost& host, QPoint on_screen) {
    if (widget.findChild<QMenu*>(QLatin1String(menu_name))) return;
    auto* const menu = new QMenu(&widget);
    menu->setObjectName(QLatin1String(menu_name));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (Entry const& entry : entries) {
        QAction* const action = menu->addAction(PageMenu::tr(entry.text));
        action->setObjectName(QLatin1String(entry.name));
        action->setEnabled(entry.possible(widget.control()));
        QObject::connect(action, &QAction::triggered, &widget, [&widget, &host, act = entry.act] {
            guarded([&] { tell_failure(widget); }, [&] { act(widget, host); });
        });
        if (entry.ends_group) menu->addSeparator();
    }
    menu->popup(on_screen);
}

bool do_menu_entry(QvGraphWidget& widget, WidgetHost& host, QString const& name) {
    auto const entry =
        std::ranges::find_if(entries, [&](Entry const& row) { return name == QLatin1String(row.name); });
    if (entry == std::end(entries) || !entry->possible(widget.control())) return false;
    guarded([&] { tell_failure(widget); }, [&] { entry->act(widget, host); });
    return true;
}

} // namespace qv::qt
