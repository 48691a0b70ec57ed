// The scroll bars and the coordinate read-out as real widgets.
#pragma once

#include "hosts/qt/guarded.h"
#include "hosts/qt/translate_input.h"
#include "qvgraph/ChildControls.h"
#include "qvgraph/Input.h"

#include <QtCore/QEvent>
#include <QtWidgets/QLabel>
#include <QtWidgets/QScrollBar>

#include <functional>
#include <string>

namespace qv::qt {

/// A label that tells when its font or style is another, and breaks a text that is wider than the page into
/// lines, upwards from its place.
class ReadOut final : public QLabel {
public:
    ReadOut(QWidget* parent, std::function<void()> looks_changed, FailureHandler failed);

    /// Takes a text and tells the width of its single line, with what stands round it.
    double natural_width(QString const& text);
    /// In line with the model, but no wider than `room`.
    void follow(host::Label const& model, int room);

protected:
    void changeEvent(QEvent* event) override;

private:
    std::function<void()> looks_changed_;
    FailureHandler failed_;
};

class ChildWidgets {
public:
    using ScrollHandler = std::function<void(host::ScrollInput const&)>;
    using LabelHandler = std::function<void()>;

    /// Hidden until the control's state shows them. The first handler hears of what a person does only, the
    /// second of another font or style of the read-out.
    ChildWidgets(QWidget* parent, ScrollHandler const& handler, LabelHandler const& label_changed,
                 FailureHandler const& failed);

    /// Thickness of a scroll bar and height of the read-out in twips, by style and font.
    double scroll_bar_thickness() const;
    double label_height() const;
    /// Width of a text in the read-out, with what stands round it. The read-out takes the text.
    double read_out_width(std::string const& text);

    /// Brings place, state and text in line with the control's own.
    void follow(host::ChildControls const& controls);

    QScrollBar& across() { return across_; }
    QScrollBar& down() { return down_; }
    QLabel& label() { return label_; }

private:
    QScrollBar across_;
    QScrollBar down_;
    ReadOut label_;
};

/// Device-independent pixels of a place in twips; neighbours in twips are neighbours in pixels.
QRect in_units(host::Placement const& placement, double twips_a_unit = twips_per_unit);

/// Brings a widget in line with its model; its signals are silent meanwhile.
void follow(QScrollBar& widget, host::ScrollBar const& bar, double twips_a_unit = twips_per_unit);
void follow(QLabel& widget, host::Label const& label, double twips_a_unit = twips_per_unit);

} // namespace qv::qt
