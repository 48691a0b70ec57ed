// qvGradient: the control with which a person composes a fill. A host shows its constituent controls, writes
// what a person did into them and calls the handler of that event; afterwards it shows them again.
#pragma once

#include "qvgraph/ChildControls.h"
#include "qvgraph/GradientChoice.h"
#include "qvgraph/Host.h"
#include "qvgraph/clsGradient.h"
#include "qvgraph/export.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace qv::gradient_picker {

/// Its base is what is chosen at the moment. No procedure throws: a failure is told by `GradientError`.
class QV_EXPORT qvGradient : public GradientChoice {
public:
    qvGradient();

    /// \name Constituent controls
    /// \{
    host::PictureBox Picture1{{1980, 510, 3135, 1455}, {}}; ///< preview
    std::array<host::PictureBox, 7> Picture2;               ///< swatches of the styles, 0 is solid
    /// Ask for a colour, the first and the second.
    std::array<host::PushButton, 2> Command1{
        {{{480, 960, 975, 495}, "Color 1"}, {{5520, 960, 975, 495}, "Color 2"}}};
    host::CheckBox Check1{{5160, 120, 975, 255}, "Double", "Double color gradients"}; ///< there and back
    host::CheckBox Check2{{120, 120, 1815, 255}, "Use color names", {}};              ///< colours from lists
    host::ColorList List1{{0, 510, 1935, 1500}, {}, 7};      ///< names for Color1, at first Black
    host::ColorList List3{{5160, 510, 1935, 1020}, {}, 0};   ///< names for Color2, at first AliceBlue
    host::ScrollBar HScroll1 = bar({0, 2280, 1935, 255});    ///< shade of Color1
    host::ScrollBar HScroll2 = bar({5160, 2280, 1935, 255}); ///< shade of Color2
    host::ScrollBar HScroll3 = bar({2040, 2280, 1935, 255}); ///< shift
    host::TextBox AngleText{{6120, 120, 495, 285}, "0", "Gradient angle, degrees"}; ///< the angle
    host::Label Label1{{6675, 150, 375, 255}, "deg", true};                         ///< beside the angle
    host::Label Label2{{0, 2040, 1935, 255}, "Color1", true};                       ///< above its shade
    host::Label Label3{{2040, 2040, 1935, 255}, "gShift", true};                    ///< above the shift
    host::Label Label4{{5160, 2040, 1935, 255}, "Color2", true};                    ///< above its shade
    /// The colour chooser: from a colour to the one chosen, or none when it was cancelled.
    std::function<std::optional<Color>(Color)> CommonDialog1 = [](Color) { return std::nullopt; };
    /// \}

    /// Told when a procedure has failed.
    std::function<void(std::string const& Source, std::string const& Description)> GradientError =
        [](auto const&, auto const&) {};

    static std::string Version() { return "1.3"; } ///< the picker's own
    /// Paints a fill on a picture of the caller's. What is chosen here stays.
    void PictureBoxGradient(DrawSurface& Target, GradientChoice const& fill);
    /// Chooses the style of this magnitude; its sign is told by `Check1`.
    void SetGradientStyle(std::int16_t style);

    /// \name What a person did
    /// Check boxes, lists, bars and the text box hold their new value already.
    /// \{
    void Picture2_Click(std::size_t index); ///< a swatch, 0 to 6
    void Check1_Click();                    ///< there and back, or not
    void Check2_Click();                    ///< lists of names, or buttons
    void Command1_Click(std::size_t index); ///< 0 asks for Color1, 1 for Color2
    void List1_Click();                     ///< a name for Color1
    void List3_Click();                     ///< a name for Color2
    /// Any of the bars stands at another value, or its thumb is on the way there.
    void HScroll_Change();
    void AngleText_Change(); ///< another text; what is no angle leaves the one before
    /// Button as in host/Input.h, of a move what is held; twips from the preview's left top corner.
    void Picture1_MouseDown(std::uint8_t Button, Point place);
    void Picture1_MouseMove(std::uint8_t Button, Point place); ///< the same
    /// \}

    /// \name For the form
    /// \{

    /// Lays the controls out in this size, raised to at least 4500 x 2000 twips, and draws.
    void UserControl_Resize(double width, double height);
    double Width() const { return width_; }   ///< twips
    double Height() const { return height_; } ///< twips
    /// Gives the picture boxes pictures of this host, or takes them away. Not trapped.
    void make_pictures(host::Host& host);
    void drop_pictures(); ///< when the dialog is hidden
    /// \}

private:
    static host::ScrollBar bar(host::Placement const& place);

    void DrawGradient();
    void UpdateLabels();
    void UpdateVisibility();
    std::int16_t StyleNeg(int style) const;

    void lay_out();
    void place_swatches();
    void choose_style(std::int16_t style);
    void set_painter(float angle);
    void paint_pictures();
    template <class Action>
    void each_picture(Action&& action);
    template <class Body>
    void trapped(std::string_view procedure, Body&& body);

    render::clsGradient painter_;
    bool use_color_names_ = false;
    double width_ = 7455;
    double height_ = 3255;
};

} // namespace qv::gradient_picker
