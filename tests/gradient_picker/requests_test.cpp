// GetGradient and GetColor of the control, answered by a script.
#include "control/state_of.h"
#include "qvgraph/HeadlessHost.h"
#include "qvgraph/fault.h"
#include "qvgraph/qvGradientForm2.h"

#include <doctest/doctest.h>

#include <array>
#include <stdexcept>

namespace qv::gradient_picker {
namespace {

struct HeardErrors : host::EventSink {
    std::vector<std::string> errors;
    void ErrorMsg(std::string& Source, std::string& Description) override {
        errors.push_back(Source + ": " + Description);
    }
};

struct Asking {
    headless::HeadlessHost host{{60, 40}};
    HeardErrors heard;
    qvGraph& page = host.control();
    GradientChoice got{7, 7, 7, 7, 7};

    Asking() { page.set_events(&heard); }
    GradientChoice GetGradient() {
        page.GetGradient(got.Color1, got.Color2, got.Angle, got.Shift, got.Style);
        return got;
    }
    /// The next request finds a person who chooses this.
    void answer(GradientChoice const& choice) {
        host.answer_next_color([choice](Color) { return choice.Color1; });
        host.answer_next_color([choice](Color) { return choice.Color2; });
        host.answer_next_form([choice](qvGradientForm2& form) {
            qvGradient& picker = form.qvGradient1;
            picker.Check1.Value = choice.Style < 0;
            picker.SetGradientStyle(choice.Style);
            picker.Command1_Click(0);
            picker.Command1_Click(1);
            picker.HScroll3.Value = static_cast<int>(50 + 50 * choice.Shift);
            picker.AngleText.Text = std::to_string(choice.Angle);
            picker.AngleText_Change();
            form.Command1_Click();
        });
    }
};

const GradientChoice sample{rgb(10, 20, 30), rgb(40, 50, 60), -0.5F, 45, -3};

TEST_CASE("GetGradient hands back what was chosen, again when nothing was touched, and by name") {
    Asking asking;
    asking.answer(sample);
    CHECK(asking.GetGradient() == sample);
    asking.host.answer_next_form(&qvGradientForm2::Command1_Click);
    asking.got = {};
    CHECK(asking.GetGradient() == sample);

    std::array<Variant, 5> arguments{0, 0, 0.0, 0.0, 0};
    asking.host.answer_next_form(&qvGradientForm2::Command1_Click);
    asking.page.Call("GetGradient", arguments);
    CHECK(number_of<Color>(arguments[0]) == sample.Color1);
    CHECK(number_of<Color>(arguments[1]) == sample.Color2);
    CHECK(number_of<float>(arguments[2]) == sample.Angle);
    CHECK(number_of<float>(arguments[3]) == sample.Shift);
    CHECK(number_of<std::int16_t>(arguments[4]) == sample.Style);
    CHECK(asking.heard.errors.empty());
}

TEST_CASE("a host that has gone leaves the next one the choice") {
    { Asking().GetGradient(); }
    Asking first;
    first.answer(sample);
    first.GetGradient();
    Asking second;
    second.host.answer_next_form(&qvGradientForm2::Command1_Click);
    CHECK(second.GetGradient() == sample);
}

TEST_CASE("the answer to Cancel leaves a page's colours as they are") {
    Asking asking;
    asking.page.NewGraph("G");
    asking.page.PageColors({.Color1 = rgb(1, 2, 3), .Color2 = rgb(4, 5, 6)});
    asking.answer(sample);
    asking.GetGradient();
    GradientChoice cancelled = sample;
    cancelled.Color1 = cancelled.Color2 = -1;
    CHECK(asking.GetGradient() == cancelled);
    asking.page.PageColors({.Color1 = asking.got.Color1, .Color2 = asking.got.Color2});
    CHECK(asking.page.PageColor1() == rgb(1, 2, 3));
    CHECK(asking.page.PageColor2() == rgb(4, 5, 6));
}

TEST_CASE("GetColor hands back the first colour, of solid too") {
    Asking asking;
    GradientChoice solid = sample;
    solid.Style = 0;
    asking.answer(solid);
    Color color = 7;
    asking.page.GetColor(color);
    CHECK(color == solid.Color1);
    asking.page.GetColor(color);
    CHECK(color == -1);
    std::array<Variant, 1> by_name{5};
    asking.host.answer_next_form(&qvGradientForm2::Command1_Click);
    asking.page.Call("getcolor", by_name);
    CHECK(number_of<Color>(by_name[0]) == solid.Color1);
}

TEST_CASE("a failing request is told by ErrorMsg, changes nothing, and the next one works") {
    Asking asking;
    auto const fail = [](qvGradientForm2&) { raise_fault(FaultNumber::OutOfMemory); };
    asking.host.answer_next_form(fail);
    CHECK(asking.GetGradient() == GradientChoice{7, 7, 7, 7, 7});
    Color color = 7;
    asking.host.answer_next_form(fail);
    asking.page.GetColor(color);
    CHECK(color == 7);
    asking.host.answer_next_form([&](qvGradientForm2& form) {
        asking.page.GetColor(color); // asked while the dialog is open
        form.Command2_Click();
    });
    asking.GetGradient();
    CHECK(color == 7);
    CHECK(asking.heard.errors
          == std::vector<std::string>{
              "Error 7 has occured in qvGraph.ocx, GetGradient: Out of memory",
              "Error 7 has occured in qvGraph.ocx, GetColor: Out of memory",
              "Error 5 has occured in qvGraph.ocx, GetColor: The gradient dialog is open already"});
    asking.answer(sample);
    CHECK(asking.GetGradient() == sample);
}

TEST_CASE("a dialog without pictures to paint on does not open") {
    struct PoorHost : host::Host {
        int surfaces_left = 5 + 3; // the control's own, then some of the dialog's
        bool shown = false;
        std::unique_ptr<DrawSurface> make_surface() override {
            if (surfaces_left-- == 0) throw std::bad_alloc();
            return std::make_unique<raster::RasterSurface>(15, 15, nullptr);
        }
        void show_modal(qvGradientForm2&) override { shown = true; }
    };
    PoorHost host;
    HeardErrors heard;
    qvGraph page(host);
    page.set_events(&heard);
    Color color = 7;
    page.GetColor(color);
    CHECK(color == 7);
    CHECK_FALSE(host.shown);
    CHECK(heard.errors
          == std::vector<std::string>{"Error 7 has occured in qvGraph.ocx, GetColor: Out of memory"});
    CHECK(gradient_form().qvGradient1.Picture1.picture == nullptr);
}

TEST_CASE("a control that goes while its dialog is open takes the dialog with it") {
    auto host = std::make_unique<headless::HeadlessHost>(PixelSize{60, 40});
    bool asked = false;
    host->answer_next_color([&](Color) {
        asked = true;
        return rgb(1, 2, 3);
    });
    host->answer_next_form([&](qvGradientForm2& form) {
        host.reset();
        CHECK_FALSE(form.Visible());
        form.qvGradient1.Command1_Click(0);
        form.qvGradient1.SetGradientStyle(2);
    });
    Color color = 7;
    host->control().GetColor(color);
    CHECK(color == 7);
    CHECK_FALSE(asked);

    // Another control's dialog stays.
    Asking asking;
    asking.host.answer_next_form([](qvGradientForm2& form) {
        headless::HeadlessHost{{10, 10}};
        CHECK(form.Visible());
        form.Command1_Click();
    });
    CHECK(asking.GetGradient().Color1 != -1);
}

TEST_CASE("a control whose handler throws when asking failed can ask again, and go") {
    struct Thrower : host::EventSink {
        void ErrorMsg(std::string&, std::string&) override { throw std::runtime_error("from the handler"); }
    };
    Thrower thrower;
    Asking asking;
    asking.page.set_events(&thrower);
    asking.host.answer_next_form([](qvGradientForm2&) { raise_fault(FaultNumber::DeviceError); });
    Color color = 7;
    CHECK_THROWS_AS(asking.page.GetColor(color), std::runtime_error);
    CHECK(control::state_of(asking.page).gone_while_asking == nullptr);
    CHECK_FALSE(gradient_form().Visible());
    asking.answer(sample);
    CHECK(asking.GetGradient() == sample);
}

} // namespace
} // namespace qv::gradient_picker
