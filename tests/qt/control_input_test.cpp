// What the control takes of each kind of input.
#include "control/state_of.h"
#include "qvgraph/HeadlessHost.h"

#include "qvgraph/fault.h"

#include <doctest/doctest.h>

#include <vector>

namespace qv::headless {
namespace {

struct Listener : host::EventSink {
    int double_clicks = 0;
    std::vector<int> keys;
    std::int16_t left_in_key = 1;

    void DblClick(double&, double&) override { ++double_clicks; }
    void KeyPress(std::int16_t& KeyAscii, double&, double&) override {
        keys.push_back(KeyAscii);
        KeyAscii = left_in_key;
    }
};

struct Fixture {
    HeadlessHost host{{100, 80}};
    Listener heard;
    Fixture() { host.control().set_events(&heard); }
};

host::MouseInput mouse(host::MouseKind kind, std::uint8_t button) {
    return {.kind = kind, .button = button, .shift = 0, .place = {}};
}

TEST_CASE_FIXTURE(Fixture, "only a double click of the left button is one") {
    using host::MouseKind;
    for (auto const kind : {MouseKind::Press, MouseKind::Move, MouseKind::Release})
        CHECK(host.input(mouse(kind, host::left_button)));
    CHECK_FALSE(host.input(mouse(MouseKind::DoubleClick, host::right_button)));
    CHECK(heard.double_clicks == 0);
    CHECK(host.input(mouse(MouseKind::DoubleClick, host::left_button)));
    CHECK(heard.double_clicks == 1);
}

TEST_CASE_FIXTURE(Fixture, "a key is its UTF-16 unit in 16 bits, and used up when the handler leaves 0") {
    CHECK_FALSE(host.input(host::KeyInput{.character = u'a'}));
    heard.left_in_key = 0;
    CHECK(host.input(host::KeyInput{.character = 0xFFFD}));
    CHECK(heard.keys == std::vector{97, -3});
}

TEST_CASE_FIXTURE(Fixture, "a bar stands where it was moved") {
    host.input(host::ScrollInput{.bar = host::Bar::VScroll1, .value = 250});
    CHECK(control::state_of(host.control()).VScroll1.Value == 250);
    CHECK(control::state_of(host.control()).HScroll1.Value == 0);
}

TEST_CASE("a failing handler fails the input") {
    struct Failing : host::EventSink {
        void DblClick(double&, double&) override { raise_fault(FaultNumber::DivisionByZero); }
    } failing;
    HeadlessHost host({100, 80});
    host.control().set_events(&failing);
    CHECK_THROWS_AS(host.input(mouse(host::MouseKind::DoubleClick, host::left_button)), Fault);
}

} // namespace
} // namespace qv::headless
