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

public:
    /// An empty page. Where memory ends it is fault 7.
    explicit QvGraphWidget(QWidget* parent = nullptr);
    ~QvGraphWidget() override;

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

    /// The page as it is shown. The image shares the page's pixels: it changes with the page and must be
    /// copied before it may outlive the next change of size.
    QImage page() const;
    /// PrintImage goes to this printer, such as one that a print dialog has set up, instead of the system's
    /// default; nullptr leads back to that. It must outlive the widget or be taken back. Printing turns it
    /// upright or sideways and lets places count from the corner of the paper.
    void set_printer(QPrinter* printer);
    /// \name Parts
    /// The widget that shows the page, takes mouse and keys and carries the tooltip, and those beside it.
    /// \{
    QWidget& page_view();   ///< the page; takes mouse and keys
    QScrollBar& HScroll1(); ///< below the page
    QScrollBar& VScroll1(); ///< to the right of the page
    QLabel& Label1();       ///< the coordinate read-out
    /// \}

    QSize sizeHint() const override { return {640, 480}; } ///< what a layout should start from

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
    /// A procedure has failed. Source ends with its name, Description says what was wrong.
    void ErrorMsg(QString const& Source, QString const& Description);

protected:
    /// Takes what a person did to the page or a scroll bar and hands it to the control. True when it was
    /// used up; other wheel turns and keys go on to the parent widget. What it throws becomes ErrorMsg.
    virtual bool input(host::Input const& input);

    bool event(QEvent* event) override;             ///< follows the density of the screen
    void changeEvent(QEvent* event) override;       ///< follows font and style
    void paintEvent(QPaintEvent* event) override;   ///< fills the strip beside the page
    void resizeEvent(QResizeEvent* event) override; ///< gives the page its new size

private:
    bool take(host::Input const& input);
    std::unique_ptr<WidgetHost> host_;
};

} // namespace qv::qt
