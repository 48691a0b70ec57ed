// The picker's rules, its pictures painted in memory.
#include "qvgraph/qvGradient.h"

#include "RecordingSurface.h"
#include "gradient_picker/color_names.h"
#include "qvgraph/HeadlessHost.h"
#include "qvgraph/Input.h"
#include "qvgraph/fault.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace qv::gradient_picker {
namespace {

using Pixels = std::vector<std::uint32_t>;

Pixels pixels(DrawSurface const& surface) {
    auto const all = dynamic_cast<raster::RasterSurface const&>(surface).pixels();
    return {all.begin(), all.end()};
}

/// A picker in its dialog's usual size, on a host in memory.
struct ShownPicker : qvGradient {
    headless::HeadlessHost host{{10, 10}};
    std::vector<std::string> errors;

    ShownPicker() {
        make_pictures(host);
        GradientError = [this](std::string const& Source, std::string const& Description) {
            errors.push_back(Source + ": " + Description);
        };
        UserControl_Resize(7440, 2925);
    }
    void move(host::ScrollBar& bar, int value) {
        bar.Value = value;
        HScroll_Change();
    }
    void type_angle(std::string text) {
        AngleText.Text = std::move(text);
        AngleText_Change();
    }
    void check_double(bool value) {
        Check1.Value = value;
        Check1_Click();
    }
    void use_names(bool value) {
        Check2.Value = value;
        Check2_Click();
    }
    /// What the painter alone makes of a fill, in a picture of the same size.
    Pixels painted(GradientChoice const& fill, host::PictureBox const& box) {
        auto const surface = host.make_surface();
        surface->Move(box.Width, box.Height);
        PictureBoxGradient(*surface, fill);
        return pixels(*surface);
    }
    bool is_plain(host::PictureBox const& box, Color color) const {
        std::uint32_t const argb = 0xFF000000U | static_cast<std::uint32_t>(color & 0xFF) << 16
                                   | static_cast<std::uint32_t>(color & 0xFF00)
                                   | static_cast<std::uint32_t>(color >> 16 & 0xFF);
        return std::ranges::all_of(pixels(*box.picture), [argb](auto pixel) { return pixel == argb; });
    }
    std::vector<int> tops() const {
        std::vector<int> result;
        for (host::PictureBox const& swatch : Picture2) result.push_back(static_cast<int>(swatch.Top));
        return result;
    }
};

TEST_CASE("the picker opens on a linear gradient from black to the button face") {
    ShownPicker picker;
    CHECK(static_cast<GradientChoice&>(picker) == GradientChoice{0, system_color(15), 0, 0, 1});
    CHECK(picker.tops() == std::vector{60, 0, 60, 60, 60, 60, 60});
    CHECK(picker.Picture2[6].Left == 1980 + 6 * 420);
    CHECK(picker.Label2.Caption == "Color1 = 0");
    CHECK(picker.Label3.Caption == "gShift = 0.00");
    CHECK(picker.Label4.Caption == "Color2 = 15790320");
    CHECK(picker.List1.items[std::size_t(picker.List1.ListIndex)].name == "Black");
    CHECK(picker.Command1[0].Visible);
    CHECK_FALSE(picker.List1.Visible);
    CHECK_FALSE(picker.List3.Visible);
    CHECK(picker.Version() == "1.3");
}

TEST_CASE("the layout follows the size, never below 4500 x 2000") {
    ShownPicker picker;
    struct Row {
        double width, height, preview_width, preview_height, list3_left;
    };
    for (const Row row :
         {Row{7440, 2925, 3475, 1915, 5505}, {9000, 4000, 5035, 2990, 7065}, {100, 100, 535, 990, 2565}}) {
        CAPTURE(row.width);
        picker.UserControl_Resize(row.width, row.height);
        CHECK(picker.Picture1.Width == row.preview_width);
        CHECK(picker.Picture1.Height == row.preview_height);
        CHECK(picker.List1.Height == row.preview_height);
        CHECK(picker.List3.Height == row.preview_height);
        CHECK(picker.List3.Left == row.list3_left);
        CHECK(picker.HScroll2.Left == row.list3_left);
        CHECK(picker.HScroll3.Width == row.preview_width);
        double const under_preview = 510 + row.preview_height + 20;
        for (host::Label const* label : {&picker.Label2, &picker.Label3, &picker.Label4})
            CHECK(label->Top == under_preview);
        for (host::ScrollBar const* bar : {&picker.HScroll1, &picker.HScroll2, &picker.HScroll3})
            CHECK(bar->Top == under_preview + 200);
        CHECK(picker.Label3.Left == 2040);
        CHECK(picker.Label3.Width == row.preview_width);
        CHECK(picker.Label4.Left == row.list3_left);
        CHECK(picker.Command1[1].Left == 1980 + row.preview_width + 500);
        CHECK(pixels(*picker.Picture1.picture)
              == picker.painted({0, system_color(15), 0, 0, 1}, picker.Picture1));
    }
}

TEST_CASE("preview and swatches show exactly what the painter makes of the choice, shades included") {
    ShownPicker picker;
    picker.host.answer_next_color([](Color) { return rgb(200, 40, 20); });
    picker.CommonDialog1 = [&](Color opened_at) { return picker.host.choose_color(opened_at); };
    picker.Command1_Click(0);
    picker.move(picker.HScroll1, 75);
    picker.move(picker.HScroll2, 0);
    picker.move(picker.HScroll3, 10);
    picker.type_angle("-45");
    picker.SetGradientStyle(4);
    GradientChoice shown{rgb(228, 148, 138), rgb(0, 0, 0), -0.8F, 315, 4};
    CHECK(pixels(*picker.Picture1.picture) == picker.painted(shown, picker.Picture1));
    for (std::int16_t style = 1; style < 7; ++style) {
        shown.Style = style;
        auto const& swatch = picker.Picture2[std::size_t(style)];
        CHECK(pixels(*swatch.picture) == picker.painted(shown, swatch));
    }
    CHECK(picker.is_plain(picker.Picture2[0], rgb(200, 40, 20)));
    // What is handed back are the base colours.
    CHECK(static_cast<GradientChoice&>(picker)
          == GradientChoice{rgb(200, 40, 20), system_color(15), -0.8F, 315, 4});
    CHECK(picker.Label2.Caption == "Color1 = " + std::to_string(rgb(228, 148, 138)));
    CHECK(picker.Label3.Caption == "gShift = -0.80");
    CHECK(picker.Label4.Caption == "Color2 = 0");
    CHECK(picker.errors.empty());
}

TEST_CASE("solid hides what belongs to the second colour and makes both colours one") {
    ShownPicker picker;
    auto const second_color_visible = [&] {
        std::vector<bool> const each{picker.HScroll2.Visible, picker.HScroll3.Visible, picker.Label1.Visible,
                                     picker.Label3.Visible,   picker.Label4.Visible,   picker.Check1.Visible,
                                     picker.AngleText.Visible};
        CHECK(std::ranges::count(each, each.front()) == std::ssize(each));
        return each.front();
    };
    picker.use_names(true);
    CHECK(picker.List3.Visible);
    picker.List1.ListIndex = 25; // Cyan is next to it, so a slip by one shows
    picker.List1_Click();
    picker.move(picker.HScroll1, 80);
    picker.Picture2_Click(0);
    Color const chosen = color_names()[25].color;
    CHECK_FALSE(second_color_visible());
    CHECK_FALSE(picker.List3.Visible);
    CHECK(picker.List1.Visible);
    CHECK(picker.Picture1.Width == 7440 - 1980 - 180);
    CHECK(picker.Color1 == chosen);
    CHECK(picker.Color2 == chosen);
    CHECK(picker.Style == 0);
    CHECK(picker.is_plain(picker.Picture1, chosen)); // the base colour, whatever its shade
    CHECK(picker.Label2.Caption == "Color1 = " + std::to_string(chosen));
    CHECK(picker.tops() == std::vector{0, 60, 60, 60, 60, 60, 60});
    picker.Picture2_Click(5);
    CHECK(second_color_visible());
    CHECK(picker.List3.Visible);
    CHECK(picker.Picture1.Width == 3475);
    CHECK(picker.Color2 == color_names()[0].color); // the list has kept it
}

TEST_CASE("Double turns the style's sign, whichever style is selected") {
    ShownPicker picker;
    for (std::int16_t style = 0; style < 7; ++style) {
        CAPTURE(style);
        picker.Picture2_Click(std::size_t(style));
        picker.check_double(true);
        CHECK(picker.Style == -style);
        CHECK(picker.tops()[std::size_t(style)] == 0);
        picker.check_double(false);
        CHECK(picker.Style == style);
    }
    picker.check_double(true);
    picker.SetGradientStyle(3);
    CHECK(picker.Style == -3);
    picker.check_double(false);
    for (auto const& [given, style] : {std::pair(7, 3), {-2, 2}, {-7, 2}, {-32768, 2}, {0, 0}, {6, 6}}) {
        picker.SetGradientStyle(static_cast<std::int16_t>(given));
        CHECK(picker.Style == style);
    }
}

TEST_CASE("painting for somebody else leaves the choice as it is") {
    ShownPicker picker;
    picker.SetGradientStyle(2);
    const GradientChoice before = picker;
    auto const target = picker.host.make_surface();
    target->Move(900, 600);
    picker.PictureBoxGradient(*target, {rgb(1, 2, 3), rgb(200, 100, 50), 0.5F, 45, -6});
    CHECK(static_cast<GradientChoice&>(picker) == before);
    picker.HScroll_Change();
    CHECK(static_cast<GradientChoice&>(picker) == before);
}

TEST_CASE("named colours count from the next change on, and put the shades back") {
    ShownPicker picker;
    picker.move(picker.HScroll1, 80);
    picker.move(picker.HScroll2, 20);
    picker.move(picker.HScroll3, 60);
    picker.use_names(true);
    CHECK_FALSE(picker.Command1[0].Visible);
    CHECK_FALSE(picker.Command1[1].Visible);
    CHECK(picker.Color2 == system_color(15));
    picker.List1.ListIndex = 139;
    picker.List1_Click();
    CHECK(picker.Color1 == rgb(0x9A, 0xCD, 0x32));
    CHECK(picker.Color2 == rgb(0xF0, 0xF8, 0xFF));
    CHECK(picker.HScroll1.Value == 50);
    CHECK(picker.HScroll2.Value == 20);
    CHECK(picker.HScroll3.Value == 50);
    CHECK(picker.Shift == 0);
    picker.move(picker.HScroll1, 70);
    picker.List3_Click();
    CHECK(picker.HScroll1.Value == 70);
    CHECK(picker.HScroll2.Value == 50);
    picker.List1.ListIndex = -1;
    picker.List1_Click();
    CHECK(picker.errors
          == std::vector<std::string>{"Error 9 has occured in qvGradient.ocx, DrawGradient: Subscript out of "
                                      "range: entry -1 was asked for, there are 0 to 139"});
}

TEST_CASE("the angle is the number that its text begins with") {
    struct Row {
        char const* text;
        float angle;
    };
    ShownPicker picker;
    for (const Row row : {Row{"45", 45},
                          {"", 0},
                          {"abc", 0},
                          {"-45", 315},
                          {"360", 0},
                          {"765.5 deg", 45.5F},
                          {" 30", 30},
                          {"1.5.5", 1.5F}}) {
        CAPTURE(row.text);
        picker.type_angle(row.text);
        CHECK(picker.Angle == row.angle);
    }
    CHECK(picker.errors.empty());
    picker.type_angle(std::string(60, '9'));
    CHECK(picker.errors
          == std::vector<std::string>{"Error 6 has occured in qvGradient.ocx, DrawGradient: Overflow"});
    CHECK(picker.Angle == 1.5F);
    picker.type_angle(std::string(400, '9'));
    CHECK(picker.Angle == 1.5F);
    picker.type_angle("10");
    CHECK(picker.Angle == 10);
    CHECK(picker.errors.size() == 2);
}

TEST_CASE("a press or a drag on the preview sets the angle") {
    ShownPicker picker; // centre at 1738, 958: halves to even
    struct Row {
        double x, y;
        char const* angle;
    };
    for (const Row row : {Row{1838, 958, "0"},
                          {1838, 858, "45"},
                          {1738, 0, "90"},
                          {1638, 958, "180"},
                          {1738, 1900, "270"},
                          {1838, 1058, "315"},
                          {-5000, 958, "180"}}) {
        CAPTURE(row.x);
        CAPTURE(row.y);
        picker.Picture1_MouseDown(host::left_button, {row.x, row.y});
        CHECK(picker.AngleText.Text == row.angle);
        CHECK(picker.Angle == std::stof(row.angle));
    }
    picker.Picture1_MouseDown(host::left_button, {1738, 958}); // the centre has no angle
    picker.Picture1_MouseDown(host::right_button, {1738, 0});
    picker.Picture1_MouseMove(0, {1738, 0});
    CHECK(picker.Angle == 180);
    picker.Picture1_MouseMove(host::left_button | host::right_button, {1738, 0});
    CHECK(picker.Angle == 90);
    CHECK(picker.errors.empty());
}

TEST_CASE("the colour chooser opens at the colour; without a choice nothing changes") {
    ShownPicker picker;
    std::vector<Color> opened_at;
    std::optional<Color> answer;
    picker.CommonDialog1 = [&](Color color) {
        opened_at.push_back(color);
        return answer;
    };
    picker.Command1_Click(1);
    CHECK(picker.Color2 == system_color(15));
    answer = rgb(9, 8, 7);
    picker.Command1_Click(1);
    picker.Command1_Click(1);
    CHECK(opened_at == std::vector{system_color(15), system_color(15), rgb(9, 8, 7)});
    CHECK(picker.Color2 == rgb(9, 8, 7));
    CHECK(picker.Color1 == 0);

    const GradientChoice before = picker;
    const Pixels shown = pixels(*picker.Picture1.picture);
    for (int const number : {5, 7, 94}) {
        picker.CommonDialog1 = [&](Color) -> std::optional<Color> { raise_fault(FaultNumber(number)); };
        picker.Command1_Click(0);
        CHECK(static_cast<GradientChoice&>(picker) == before);
        CHECK(pixels(*picker.Picture1.picture) == shown);
    }
    CHECK(picker.errors
          == std::vector<std::string>{
              "Error 5 has occured in qvGradient.ocx, Command1_Click: Invalid procedure call or argument",
              "Error 7 has occured in qvGradient.ocx, Command1_Click: Out of memory"});
}

/// Fails at its n-th line, once.
struct FailingSurface : testing::RecordingSurface {
    explicit FailingSurface(int& lines) : lines_left(lines) {}
    void LineTo(PixelPoint, PixelPoint, Color) override {
        if (--lines_left == 0) throw std::bad_alloc();
    }
    void Rectangle(PixelPoint, PixelPoint) override { LineTo({}, {}, 0); }
    void Polygon(std::span<PixelPoint const>) override { LineTo({}, {}, 0); }
    int& lines_left;
};

struct FailingHost : host::Host {
    int lines_left = 0;
    std::unique_ptr<DrawSurface> make_surface() override {
        return std::make_unique<FailingSurface>(lines_left);
    }
};

TEST_CASE("wherever painting fails, it is told once and the choice is whole") {
    for (int const line : {1, 200, 260, 300, 340}) { // in the preview and in several swatches
        CAPTURE(line);
        FailingHost host;
        qvGradient picker;
        std::vector<std::string> errors;
        picker.GradientError = [&](std::string const& Source, std::string const&) {
            errors.push_back(Source);
        };
        picker.make_pictures(host);
        picker.UserControl_Resize(7440, 2925);
        host.lines_left = line;
        picker.Picture2_Click(5);
        CHECK(errors == std::vector<std::string>{"Error 7 has occured in qvGradient.ocx, DrawGradient"});
        CHECK(picker.Style == 5);
        picker.Check1.Value = true;
        picker.Check1_Click();
        CHECK(picker.Style == -5);
        CHECK(errors.size() == 1);
    }
}

} // namespace
} // namespace qv::gradient_picker
