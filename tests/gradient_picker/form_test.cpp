// The dialog: its buttons, its layout, and what happens to the host that shows it.
#include "qvgraph/qvGradientForm2.h"

#include "qvgraph/HeadlessHost.h"
#include "qvgraph/fault.h"

#include <doctest/doctest.h>

#include <cmath>

namespace qv::gradient_picker {
namespace {

const GradientChoice first_choice{0, system_color(15), 0, 0, 1};

TEST_CASE("Okay hands over the picker's choice, Cancel no colours and the rest as it was") {
    qvGradientForm2 form;
    headless::HeadlessHost host({10, 10});
    CHECK(static_cast<GradientChoice&>(form) == GradientChoice{0, 0, 0, 0, 1});
    CHECK(form.ShowModal(host) == GradientChoice{-1, -1, 0, 0, 1}); // nobody is there
    for (int i = 0; i < 2; ++i) {
        host.answer_next_form(&qvGradientForm2::Command1_Click);
        CHECK(form.ShowModal(host) == first_choice);
    }
    host.answer_next_form([](qvGradientForm2& shown) {
        CHECK(shown.Visible());
        shown.SetGradientStyle(4);
        shown.qvGradient1.AngleText.Text = "30";
        shown.qvGradient1.AngleText_Change();
        shown.Command2_Click();
        CHECK_FALSE(shown.Visible());
    });
    CHECK(form.ShowModal(host) == GradientChoice{-1, -1, 0, 0, 1});
    CHECK_FALSE(form.Visible());
    host.answer_next_form(&qvGradientForm2::Command1_Click); // the cancelled edits are still there
    CHECK(form.ShowModal(host) == GradientChoice{0, system_color(15), 0, 30, 4});
    CHECK(form.ShowModal(host) == GradientChoice{-1, -1, 0, 30, 4});
}

TEST_CASE("the picker takes the form's width and leaves room for the buttons") {
    qvGradientForm2 form;
    struct Row {
        double width, height, picker_width, picker_height;
    };
    for (const Row row : {Row{7440, 4125, 7440, 2925}, {9000, 5000, 9000, 3800}, {10, 10, 4500, 2000}}) {
        form.Form_Resize(row.width, row.height);
        CHECK(form.qvGradient1.Width() == row.picker_width);
        CHECK(form.qvGradient1.Height() == row.picker_height);
        CHECK(form.Command1.Top == row.picker_height + 80);
        CHECK(form.Command2.Top == row.picker_height + 80);
    }
    CHECK(form.Command1.Left == 3720);
    CHECK(form.Command2.Left == 5280);
}

TEST_CASE("nothing of a host stays in the form, and each host's pictures have its own density") {
    qvGradientForm2 form;
    for (double const dots_per_inch : {96.0, 192.0, 120.0}) {
        headless::HeadlessHost host({10, 10}, dots_per_inch);
        host.answer_next_form([&](qvGradientForm2& shown) {
            DrawSurface const& preview = *shown.qvGradient1.Picture1.picture;
            CHECK(preview.TwipsPerPixelX() == 1440 / dots_per_inch);
            CHECK(preview.GetClientRect().width == std::lround(3475 * dots_per_inch / 1440));
            shown.Command1_Click();
        });
        CHECK(form.ShowModal(host) == first_choice);
        CHECK(form.qvGradient1.Picture1.picture == nullptr);
    }
    // Without a host its operations still work: nothing is painted and nobody is asked.
    form.SetGradientStyle(6);
    form.qvGradient1.Command1_Click(0);
    CHECK(form.qvGradient1.Style == 6);
}

TEST_CASE("an angle beyond all bounds is told; the one before stays, and all else goes on") {
    qvGradient picker;
    std::vector<std::string> told;
    picker.GradientError = [&](std::string const& Source, std::string const&) { told.push_back(Source); };
    picker.AngleText.Text = "45";
    picker.AngleText_Change();
    picker.AngleText.Text = std::string(50, '9');
    picker.AngleText_Change();
    picker.SetGradientStyle(0);
    picker.CommonDialog1 = [](Color) { return rgb(1, 2, 3); };
    picker.Command1_Click(0);
    CHECK(told == std::vector<std::string>(3, "Error 6 has occured in qvGradient.ocx, DrawGradient"));
    const GradientChoice choice = picker;
    CHECK(choice == GradientChoice{rgb(1, 2, 3), rgb(1, 2, 3), 0, 45, 0});
    CHECK(picker.Label2.Caption == "Color1 = 197121");
}

TEST_CASE("a failing colour chooser is told in a message box, and the choice stays whole") {
    qvGradientForm2 form;
    headless::HeadlessHost host({10, 10});
    host.answer_next_color([](Color) -> std::optional<Color> { raise_fault(FaultNumber::OutOfMemory); });
    host.answer_next_color([](Color) { return rgb(1, 2, 3); });
    host.answer_next_form([](qvGradientForm2& shown) {
        shown.qvGradient1.Command1_Click(0);
        CHECK(static_cast<GradientChoice&>(shown.qvGradient1) == first_choice);
        CHECK(shown.Visible());
        shown.qvGradient1.Command1_Click(1);
        shown.qvGradient1.Command1_Click(0); // no more answers: cancelled
        shown.Command1_Click();
    });
    CHECK(form.ShowModal(host) == GradientChoice{0, rgb(1, 2, 3), 0, 0, 1});
    CHECK(host.messages()
          == std::vector<std::string>{
              "Error 7 has occured in qvGradient.ocx, Command1_Click\r\nOut of memory"});
}

TEST_CASE("a form that is shown already cannot be shown once more, and stays as it is") {
    qvGradientForm2 form;
    headless::HeadlessHost host({10, 10}), other({10, 10});
    int fault = 0;
    host.answer_next_form([&](qvGradientForm2& shown) {
        try {
            shown.ShowModal(other);
        } catch (Fault const& refused) {
            fault = refused.number;
        }
        CHECK(shown.Visible());
        CHECK(shown.qvGradient1.Picture1.picture != nullptr);
        shown.Command1_Click();
    });
    CHECK(form.ShowModal(host) == first_choice);
    CHECK(fault == 5);
}

} // namespace
} // namespace qv::gradient_picker
