#include "qvgraph/qvGradient.h"

#include "base/convert.h"
#include "base/fault_report.h"
#include "base/picture_format.h"
#include "base/text.h"
#include "gradient_picker/color_names.h"
#include "gradient_picker/shading.h"
#include "qvgraph/Input.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace qv::gradient_picker {
namespace {

constexpr double least_width = 4500, least_height = 2000;
constexpr double swatch_size = 400, swatch_step = 420;
constexpr double swatch_top = 60; // of all but the selected one, which stands at 0
constexpr std::int32_t centred = 50;
constexpr Color button_face = system_color(15);

// -1 to 1.
float position(host::ScrollBar const& bar) {
    return static_cast<float>(bar.Value - centred) / centred;
}

float angle_in(std::string_view text) {
    double const degrees = leading_number(trim(text));
    if (!std::isfinite(degrees)) raise_fault(FaultNumber::Overflow);
    return to_f32(degrees);
}

Color selected_color(host::ColorList const& list) {
    return at(list.items, list.ListIndex).color;
}

std::string signed_text(Color color) {
    return (color < 0 ? "" : " ") + std::to_string(color);
}

void paint(host::PictureBox& box, render::clsGradient const& painter) {
    if (!box.picture) return;
    painter.Draw(*box.picture);
    box.picture->Refresh();
}

void fill(host::PictureBox& box, Color background) {
    if (!box.picture) return;
    box.picture->state.BackColor = background;
    box.picture->Cls();
    box.picture->Refresh();
}

void set_fill(render::clsGradient& painter, GradientChoice const& fill) {
    painter.Color1(fill.Color1);
    painter.Color2(fill.Color2);
    painter.Shift(fill.Shift);
    painter.Angle(fill.Angle);
    painter.Style(fill.Style);
}

// Takes the left edge and the width of a bar.
void put_below(host::Label& label, host::ScrollBar const& bar) {
    label.Left = bar.Left;
    label.Width = bar.Width;
}

} // namespace

template <class Action>
void qvGradient::each_picture(Action&& action) {
    action(Picture1);
    for (host::PictureBox& swatch : Picture2) action(swatch);
}

/// Runs `body`; a failure in it skips its rest and is told by `GradientError`.
template <class Body>
void qvGradient::trapped(std::string_view procedure, Body&& body) {
    try {
        body();
    } catch (...) {
        FaultReport report;
        if (write_report(report, "qvGradient.ocx", procedure, std::current_exception()) != 0)
            GradientError(report.Source, report.Description);
    }
}

host::ScrollBar qvGradient::bar(host::Placement const& place) {
    return {place, centred, 100, 10, 1, true};
}

qvGradient::qvGradient() : GradientChoice{.Color1 = 0, .Color2 = button_face} {
    List1.items = List3.items = color_names();
    for (host::PictureBox& swatch : Picture2)
        static_cast<host::Placement&>(swatch) = {0, swatch_top, swatch_size, swatch_size};
    Picture2_Click(1);
}

void qvGradient::PictureBoxGradient(DrawSurface& Target, GradientChoice const& fill) {
    trapped("PictureBoxGradient", [&] {
        render::clsGradient painter; // one of its own, so that what is chosen here stays
        set_fill(painter, fill);
        painter.Draw(Target);
        Target.Refresh();
    });
}

void qvGradient::SetGradientStyle(std::int16_t style) {
    trapped("SetGradientStyle", [&] {
        auto const index = static_cast<std::size_t>(std::abs(int{style}));
        if (index < Picture2.size()) Picture2_Click(index);
    });
}

void qvGradient::Picture2_Click(std::size_t index) {
    trapped("Picture2_Click", [&] { choose_style(StyleNeg(static_cast<int>(index))); });
}

// The selected swatch is the one that stands higher than the one before it; of none, solid is selected.
void qvGradient::Check1_Click() {
    trapped("Check1_Click", [&] {
        int style = painter_.Style();
        for (std::size_t i = Picture2.size() - 1; i >= 1; --i)
            if (Picture2[i].Top < Picture2[i - 1].Top) style = static_cast<int>(i);
        choose_style(StyleNeg(style));
    });
}

void qvGradient::Check2_Click() {
    trapped("Check2_Click", [&] {
        use_color_names_ = Check2.Value;
        UpdateVisibility();
    });
}

void qvGradient::Command1_Click(std::size_t index) {
    trapped("Command1_Click", [&] {
        Color& color = index == 0 ? Color1 : Color2;
        auto const chosen = CommonDialog1(color);
        if (!chosen) return;
        color = *chosen;
        DrawGradient();
    });
}

void qvGradient::List1_Click() {
    trapped("List1_Click", [&] {
        HScroll1.Value = HScroll3.Value = centred;
        DrawGradient();
    });
}

void qvGradient::List3_Click() {
    trapped("List3_Click", [&] {
        HScroll2.Value = HScroll3.Value = centred;
        DrawGradient();
    });
}

void qvGradient::HScroll_Change() {
    DrawGradient();
}

void qvGradient::AngleText_Change() {
    DrawGradient();
}

void qvGradient::Picture1_MouseDown(std::uint8_t Button, Point place) {
    trapped("Picture1_MouseDown", [&] {
        if (!(Button & host::left_button)) return;
        auto const degrees =
            ArcTanDeg(place.x - to_i32(Picture1.Width / 2), to_i32(Picture1.Height / 2) - place.y);
        if (!degrees) return;
        AngleText.Text = std::to_string(*degrees);
        AngleText_Change();
    });
}

void qvGradient::Picture1_MouseMove(std::uint8_t Button, Point place) {
    Picture1_MouseDown(Button, place);
}

void qvGradient::choose_style(std::int16_t style) {
    painter_.Style(style);
    Style = style;
    place_swatches();
    lay_out(); // solid hides controls and widens the preview; draws
}

// An angle beyond all bounds is told and leaves the one before. What else may fail, a picture that cannot be
// painted, stands last. So no failure leaves the choice half changed.
void qvGradient::DrawGradient() {
    float angle = Angle;
    trapped("DrawGradient", [&] { angle = angle_in(AngleText.Text); });
    trapped("DrawGradient", [&] {
        if (use_color_names_) {
            Color1 = selected_color(List1);
            Color2 = selected_color(List3);
        }
        set_painter(angle);
        if (Style == 0) Color2 = Color1;
        place_swatches();
        UpdateLabels();
        paint_pictures();
    });
}

void qvGradient::set_painter(float angle) {
    set_fill(painter_, {.Color1 = ShadeColor(Color1, position(HScroll1)),
                        .Color2 = ShadeColor(Color2, position(HScroll2)),
                        .Shift = position(HScroll3),
                        .Angle = angle,
                        .Style = painter_.Style()});
    Shift = painter_.Shift();
    Angle = painter_.Angle();
    Style = painter_.Style();
}

void qvGradient::paint_pictures() {
    if (Style == 0)
        fill(Picture1, Color1);
    else
        paint(Picture1, painter_);
    fill(Picture2[0], Color1);
    render::clsGradient painter = painter_; // its own keeps the chosen style when one of these fails
    for (std::size_t i = 1; i < Picture2.size(); ++i) {
        painter.Style(StyleNeg(static_cast<int>(i)));
        paint(Picture2[i], painter);
    }
}

void qvGradient::place_swatches() {
    auto const selected = static_cast<std::size_t>(std::abs(int{Style}));
    for (std::size_t i = 0; i < Picture2.size(); ++i) {
        Picture2[i].Top = i == selected ? 0 : swatch_top;
        Picture2[i].Left = Picture1.Left + swatch_step * static_cast<double>(i);
    }
}

std::int16_t qvGradient::StyleNeg(int style) const {
    return to_i16(Check1.Value ? -std::abs(style) : std::abs(style));
}

void qvGradient::UpdateLabels() {
    trapped("UpdateLabels", [&] {
        Label2.Caption = "Color1 =" + signed_text(Style == 0 ? Color1 : painter_.Color1());
        if (Style == 0) return;
        Label3.Caption = "gShift = " + picture_format(painter_.Shift(), "#0.00");
        Label4.Caption = "Color2 =" + signed_text(painter_.Color2());
    });
}

void qvGradient::UpdateVisibility() {
    trapped("UpdateVisibility", [&] {
        List1.Visible = use_color_names_;
        List3.Visible = use_color_names_ && Style != 0;
        for (host::PushButton& button : Command1) button.Visible = !use_color_names_;
        Command1[1].Left = Picture1.Left + Picture1.Width + 500;
    });
}

void qvGradient::UserControl_Resize(double width, double height) {
    width_ = std::max(width, least_width);
    height_ = std::max(height, least_height);
    lay_out();
}

void qvGradient::lay_out() {
    trapped("UserControl_Resize", [&] {
        bool const two_colors = Style != 0;
        List1.Height = height_ - List1.Top - 500;
        Picture1.Height = height_ - Picture1.Top - 500;
        List3.Height = List1.Height;
        List3.Left = width_ - List3.Width;
        Picture1.Width = two_colors ? List3.Left - Picture1.Left - 50 : width_ - Picture1.Left - 180;

        for (host::Label* const label : {&Label2, &Label3, &Label4})
            label->Top = List1.Top + List1.Height + 20;
        for (host::ScrollBar* const scroll : {&HScroll1, &HScroll2, &HScroll3})
            scroll->Top = Label2.Top + 200;
        HScroll3.Width = Picture1.Width;
        HScroll2.Left = List3.Left;
        put_below(Label2, HScroll1);
        put_below(Label3, HScroll3);
        put_below(Label4, HScroll2);

        for (bool* const visible : {&HScroll2.Visible, &HScroll3.Visible, &Label3.Visible, &Label4.Visible,
                                    &Label1.Visible, &Check1.Visible, &AngleText.Visible})
            *visible = two_colors;
        each_picture([](host::PictureBox& box) {
            if (box.picture) box.picture->Move(box.Width, box.Height);
        });
        UpdateVisibility();
        DrawGradient();
    });
}

void qvGradient::make_pictures(host::Host& host) {
    each_picture([&](host::PictureBox& box) { box.picture = host.make_surface(); });
}

void qvGradient::drop_pictures() {
    each_picture([](host::PictureBox& box) { box.picture.reset(); });
}

} // namespace qv::gradient_picker
