// The page's context menu, and the dialogs that it opens.
#pragma once

#include <QtCore/QPoint>
#include <QtCore/QString>

namespace qv::qt {

class QvGraphWidget;
class WidgetHost;

/// Opens the menu and returns at once; nothing happens while one is open already. Menu and dialogs belong to
/// the widget and go with it. What fails is told to the person in a message.
void open_page_menu(QvGraphWidget& widget, WidgetHost& host, QPoint on_screen);

/// Does what the menu's entry of that name does; false where there is none, or it is not possible now.
bool do_menu_entry(QvGraphWidget& widget, WidgetHost& host, QString const& name);

} // namespace qv::qt
