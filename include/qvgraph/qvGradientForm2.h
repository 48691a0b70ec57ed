// qvGradientForm2: the dialog around the picker, with its buttons and its answer.
#pragma once

#include "qvgraph/export.h"
#include "qvgraph/qvGradient.h"

#include <atomic>
#include <string>

namespace qv::gradient_picker {

/// Its base is the answer: what was chosen at the last Okay, both colours -1 after a Cancel.
class QV_EXPORT qvGradientForm2 : public GradientChoice {
public:
    qvGradientForm2();
    qvGradientForm2(qvGradientForm2 const&) = delete;
    qvGradientForm2& operator=(qvGradientForm2 const&) = delete;

    std::string Caption = "Form2";                                ///< of its window
    qvGradient qvGradient1;                                       ///< the picker inside
    host::PushButton Command1{{3720, 3480, 1215, 440}, "Okay"};   ///< takes what is chosen
    host::PushButton Command2{{5280, 3480, 1215, 440}, "Cancel"}; ///< answers with -1 for both colours

    /// Shows the dialog, waits, and returns the answer; a host that returns without one has cancelled. Fault
    /// 5 while it is shown already, also by another thread; what the host throws comes out.
    GradientChoice ShowModal(host::Host& host);
    /// The host goes while it shows the dialog: that counts as Cancel, and nothing more is asked of it.
    void withdraw(host::Host const& host);
    bool Visible() const { return visible_; } ///< whether it is shown
    /// The inner size in twips, kept from one request to the next.
    double Width() const { return width_; }
    double Height() const { return height_; } ///< the same

    /// \name What a person did
    /// \{
    void Command1_Click(); ///< Okay
    void Command2_Click(); ///< Cancel
    /// The form's inner size in twips; a side below 3000 is laid out as 3000.
    void Form_Resize(double width, double height);
    /// \}

    /// \name Passed on to the picker
    /// \{

    /// Paints a fill on a picture.
    void PictureBoxGradient(DrawSurface& Target, GradientChoice const& fill);
    void SetGradientStyle(std::int16_t style); ///< chooses a style
    /// \}

private:
    class Showing;

    host::Host* host_ = nullptr; // while it is shown
    bool visible_ = false;
    std::atomic_flag in_use_;
    double width_ = 7440;
    double height_ = 4125;
};

/// The one dialog of the process, made on first use. It keeps what a person left in it.
QV_EXPORT qvGradientForm2& gradient_form();

} // namespace qv::gradient_picker
