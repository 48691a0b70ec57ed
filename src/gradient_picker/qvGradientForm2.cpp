#include "qvgraph/qvGradientForm2.h"

#include "qvgraph/fault.h"

#include <algorithm>

namespace qv::gradient_picker {
namespace {

constexpr double least_side = 3000;
constexpr double room_for_buttons = 1200, gap_above_buttons = 80;
constexpr Color no_color = -1; // leaves a colour as it is where it is given to a style method

} // namespace

/// Holds the form while a host shows it. Afterwards nothing of that host is left in it.
class qvGradientForm2::Showing {
public:
    Showing(qvGradientForm2& form, host::Host& host) : form_(form) {
        if (form_.in_use_.test_and_set())
            raise_fault(FaultNumber::InvalidProcedureCall, "The gradient dialog is open already");
        form_.host_ = &host;
        form_.visible_ = true;
    }
    ~Showing() {
        form_.qvGradient1.drop_pictures();
        form_.visible_ = false;
        form_.host_ = nullptr;
        form_.in_use_.clear();
    }
    Showing(Showing const&) = delete;
    Showing& operator=(Showing const&) = delete;

private:
    qvGradientForm2& form_;
};

qvGradientForm2::qvGradientForm2() {
    qvGradient1.CommonDialog1 = [this](Color opened_at) {
        return host_ ? host_->choose_color(opened_at) : std::nullopt;
    };
    qvGradient1.GradientError = [this](std::string const& Source, std::string const& Description) {
        if (host_) host_->show_message(Source + "\r\n" + Description);
    };
    Form_Resize(width_, height_);
}

GradientChoice qvGradientForm2::ShowModal(host::Host& host) {
    const Showing showing(*this, host);
    qvGradient1.make_pictures(host);
    Form_Resize(width_, height_);
    host.show_modal(*this);
    if (visible_) Command2_Click();
    return *this;
}

void qvGradientForm2::withdraw(host::Host const& host) {
    if (host_ != &host) return; // the dialog is another's
    host_ = nullptr;
    Command2_Click();
}

void qvGradientForm2::Command1_Click() {
    static_cast<GradientChoice&>(*this) = qvGradient1;
    visible_ = false;
}

void qvGradientForm2::Command2_Click() {
    Color1 = Color2 = no_color;
    visible_ = false;
}

void qvGradientForm2::Form_Resize(double width, double height) {
    width_ = std::max(width, least_side);
    height_ = std::max(height, least_side);
    qvGradient1.UserControl_Resize(width_, height_ - room_for_buttons);
    Command1.Top = Command2.Top = qvGradient1.Height() + gap_above_buttons;
}

void qvGradientForm2::PictureBoxGradient(DrawSurface& Target, GradientChoice const& fill) {
    qvGradient1.PictureBoxGradient(Target, fill);
}

void qvGradientForm2::SetGradientStyle(std::int16_t style) {
    qvGradient1.SetGradientStyle(style);
}

qvGradientForm2& gradient_form() {
    static qvGradientForm2 form;
    return form;
}

} // namespace qv::gradient_picker
