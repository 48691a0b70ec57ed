// The page's context menu, and the dialogs that it opens.
#pragma once

#include <QtCore/QPoint>

namespace qv::qt {

class QvGraphWidget;
class WidgetHost;

/// Opens the menu and returns at once; nothing happens while one is open already. Menu and dialogs belong to
/// the widget and go with it. What fails is told to the person in a message.
void open_page_menu(QvGraphWidget& widget, WidgetHost& host, QPoint on_screen);

} // namespace qv::qt
