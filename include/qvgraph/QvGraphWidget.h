// QvGraphWidget: the graphing control as a Qt widget.
#pragma once

#include "qvgraph/Input.h"
#include "qvgraph/export.h"
#include "qvgraph/qvGraph.h"

#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtGui/QImage>
#include <QtWidgets/QWidget>

#include <memory>

class QLabel;
class QLocale;
class QPrinter;
class QScrollBar;

namespace qv::qt {

class WidgetHost;

/// Holds one control and shows its page without copying it. The page fills the widget but for a strip at the
/// right and at the bottom, where the scroll bars appear. One device-independent pixel is 15 twips; the page
/// has as many pixels as the screen shows, and is drawn anew when the widget comes to a screen of another
/// density. Use it on the thread of the user interface, as any widget.
class QV_EXPORT QvGraphWidget : public QWidget {
    Q_OBJECT
    /// The look of the page by its name.
    Q_PROPERTY(QString look READ look WRITE set_look)
    /// Whether the page is light or dark as the desktop is.
    Q_PROPERTY(bool followDesktop READ follows_desktop WRITE set_follows_desktop)
    /// Title of the first graph.
    Q_PROPERTY(QString title READ title WRITE set_title)
    /// Whether the widget opens its menu.
    Q_PROPERTY(bool ContextMenu READ has_context_menu WRITE set_context_menu)
    /// Whether the wheel zooms about the pointer; with Shift x axes only, with Ctrl y axes only.
    Q_PROPERTY(bool GestureWheelZoom READ GestureWheelZoom WRITE set_GestureWheelZoom)
    /// Whether dragging with the middle button pans.
    Q_PROPERTY(bool GestureMiddlePan READ GestureMiddlePan WRITE set_GestureMiddlePan)
    /// Whether arrows pan, + and - zoom, and Home shows everything.
    Q_PROPERTY(bool GestureKeyboard READ GestureKeyboard WRITE set_GestureKeyboard)
    /// Whether Ctrl and arrows go from point to point and from data set to data set.
    Q_PROPERTY(bool GestureReadPoints READ GestureReadPoints WRITE set_GestureReadPoints)
    /// Whether two fingers zoom.
    Q_PROPERTY(bool GesturePinchZoom READ GesturePinchZoom WRITE set_GesturePinchZoom)
    /// Whether Tab and Shift+Tab go from graph to graph.
    Q_PROPERTY(bool GestureTabThrough READ GestureTabThrough WRITE set_GestureTabThrough)
    /// Whether Escape takes a drag or a rubber band back, or ends the reading of points.
    Q_PROPERTY(bool GestureEscape READ GestureEscape WRITE set_GestureEscape)
    /// Whether Alt+Left and Alt+Right undo and redo zooming.
    Q_PROPERTY(bool GestureUndoZoom READ GestureUndoZoom WRITE set_GestureUndoZoom)
    /// Whether the data point under the pointer is named in the tooltip.
    Q_PROPERTY(bool GesturePointTooltip READ GesturePointTooltip WRITE set_GesturePointTooltip)

public:
    /// An empty page. Where memory ends it is fault 7.
    explicit QvGraphWidget(QWidget* parent = nullptr);
    ~QvGraphWidget() override;

    /// Lets the texts of menu, dialogs and screen readers appear in a language, in widgets made later too;
    /// false where there is no translation into it. Texts are English else, and what ErrorMsg says always.
    static bool translate(QLocale const& locale);

    /// The control with all its members. Its events become the signals below; whoever gives it a sink of
    /// their own takes the signals away.
    qvGraph& control();
    qvGraph const& control() const; ///< the same, to be read

    /// \name Properties by name
    /// Values as the control's own Get and Let take them; a colour may also be a QColor. They throw a
    /// qv::Fault, so no slot should let one out.
    /// \{

    /// Fault 438 for an unknown name, 9 without what it belongs to.
    QVariant Get(QString const& property) const;
    /// Fault 438, 9, 6 for a number that does not fit, 13 for a value of another kind.
    void Let(QString const& property, QVariant const& value);
    /// \}

    /// The page as it is shown now, without a copy. The image stays as it is when the page changes.
    QImage page() const;
    /// PrintImage goes to this printer, such as one that a print dialog has set up, instead of the system's
    /// default; nullptr leads back to that. It must outlive the widget or be taken back. Printing turns it
    /// upright or sideways and lets places count from the corner of the paper.
    void set_printer(QPrinter* printer);
    /// \name Settings of the page that a form keeps
    /// What fails here is told by ErrorMsg.
    /// \{

    /// "light", "dark", "print" or "classic"; empty, as at first: the page stays as the program has it, and
    /// comes back to the classic look after another one.
    QString look() const { return look_; }
    void set_look(QString const& name); ///< the same, set
    /// Whether the page has the look "dark" while the widget's palette has bright texts on a dark ground,
    /// else "light", whatever `look` says. Off by default.
    bool follows_desktop() const { return follows_desktop_; }
    void set_follows_desktop(bool on); ///< the same, set
    /// The title that was set here, empty at first. On an empty page a title makes a first graph, with an x
    /// and a y axis that find their own ranges; on any other it becomes the title of the first graph. An
    /// empty one hides it. A graph other than the first stays selected, in front of the first.
    QString title() const { return title_; }
    void set_title(QString const& title); ///< the same, set
    /// \}

    /// A menu to copy, save, print, show everything again and read about the gestures: on a right click
    /// without keys wherever the control has no use for it, by the menu key and by Shift+F10. On by default.
    /// Qt's own contextMenuPolicy holds as for any widget.
    bool has_context_menu() const { return has_context_menu_; }
    void set_context_menu(bool on) { has_context_menu_ = on; } ///< the same, set
    /// Does what an entry of that menu does, for menus and keys of one's own: Copy, SaveAs, Print, UndoZoom,
    /// ShowEverything or Gestures. False for another name, and where it is not possible now.
    bool do_menu_entry(QString const& name);
    /// \name The control's switches of gestures, as properties of the widget
    /// \{

    /// Whether the wheel zooms about the pointer; with Shift x axes only, with Ctrl y axes only.
    bool GestureWheelZoom() const { return control().GestureWheelZoom(); }
    void set_GestureWheelZoom(bool on) { control().GestureWheelZoom(on); } ///< the same, set
    /// Whether dragging with the middle button pans.
    bool GestureMiddlePan() const { return control().GestureMiddlePan(); }
    void set_GestureMiddlePan(bool on) { control().GestureMiddlePan(on); } ///< the same, set
    /// Whether arrows pan, + and - zoom, and Home shows everything.
    bool GestureKeyboard() const { return control().GestureKeyboard(); }
    void set_GestureKeyboard(bool on) { control().GestureKeyboard(on); } ///< the same, set
    /// Whether Ctrl and arrows go from point to point and from data set to data set.
    bool GestureReadPoints() const { return control().GestureReadPoints(); }
    void set_GestureReadPoints(bool on) { control().GestureReadPoints(on); } ///< the same, set
    /// Whether two fingers zoom.
    bool GesturePinchZoom() const { return control().GesturePinchZoom(); }
    void set_GesturePinchZoom(bool on) { control().GesturePinchZoom(on); } ///< the same, set
    /// Whether Tab and Shift+Tab go from graph to graph.
    bool GestureTabThrough() const { return control().GestureTabThrough(); }
    void set_GestureTabThrough(bool on) { control().GestureTabThrough(on); } ///< the same, set
    /// Whether Escape takes a drag or a rubber band back, or ends the reading of points.
    bool GestureEscape() const { return control().GestureEscape(); }
    void set_GestureEscape(bool on) { control().GestureEscape(on); } ///< the same, set
    /// Whether Alt+Left and Alt+Right undo and redo zooming.
    bool GestureUndoZoom() const { return control().GestureUndoZoom(); }
    void set_GestureUndoZoom(bool on) { control().GestureUndoZoom(on); } ///< the same, set
    /// Whether the data point under the pointer is named in the tooltip.
    bool GesturePointTooltip() const { return control().GesturePointTooltip(); }
    void set_GesturePointTooltip(bool on) { control().GesturePointTooltip(on); } ///< the same, set
    /// \}
    /// \name Parts
    /// The widget that shows the page, takes mouse and keys and carries the tooltip, and those beside it.
    /// \{
    QWidget& page_view();   ///< the page; takes mouse and keys
    QScrollBar& HScroll1(); ///< below the page
    QScrollBar& VScroll1(); ///< to the right of the page
    QLabel& Label1();       ///< the coordinate read-out
    /// \}

    QSize sizeHint() const override { return {640, 480}; } ///< what a layout should start from
    /// Below this a page is its axes and little else.
    QSize minimumSizeHint() const override { return {160, 120}; }

Q_SIGNALS:
    /// A press and release of the left button at one place of a plot area, with the values there.
    void Click(double X, double Y);
    void DblClick(double X, double Y);                 ///< a double click of the left button
    void MouseMove(double X, double Y);                ///< the pointer has moved over the page
    void KeyPress(short KeyAscii, double X, double Y); ///< a key with a character, one of UTF-16
    void NewGraphInFront();                            ///< another graph has come to the front
    void GraphScaleChanged();                          ///< an axis is new, or a range has changed
    void GraphPositionChanged();                       ///< a person has moved or resized a graph
    void LegendPositionChanged();                      ///< a person has moved a legend
    /// A person has dragged a mark to these values; graph and data set are counted from 0.
    void MarkMoved(short Graph, short DataSet, double X1, double Y1, double X2, double Y2);
    /// A procedure has failed. Source ends with its name, Description says what was wrong.
    void ErrorMsg(QString const& Source, QString const& Description);

protected:
    /// Takes what a person did to the page or a scroll bar and hands it to the control. True when it was
    /// used up; other wheel turns and keys go on to the parent widget. What it throws becomes ErrorMsg; a
    /// handler of ErrorMsg that throws itself is not heard of.
    virtual bool input(host::Input const& input);

    bool event(QEvent* event) override;                       ///< follows the density of the screen
    void changeEvent(QEvent* event) override;                 ///< follows font, style and colours
    void contextMenuEvent(QContextMenuEvent* event) override; ///< opens the menu where it may
    void keyPressEvent(QKeyEvent* event) override;            ///< opens the menu by Shift+F10
    void paintEvent(QPaintEvent* event) override;             ///< fills the strip beside the page
    void resizeEvent(QResizeEvent* event) override;           ///< gives the page its new size

private:
    bool take(host::Input const& input);
    void open_menu(QPoint on_screen);
    void bring_look();
    std::unique_ptr<WidgetHost> host_;
    QString look_, shown_look_, title_;
    bool follows_desktop_ = false;
    bool has_context_menu_ = true;
};

} // namespace qv::qt
