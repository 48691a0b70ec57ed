#include "base/convert.h"
#include "base/fault_report.h"
#include "fault_of.h"

#include <doctest/doctest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <vector>

using namespace qv;
using test::fault_number;

TEST_CASE("halves round to even, at any size and sign") {
    struct Row {
        double value, whole;
    };
    for (auto const& [value, whole] : {Row{0.5, 0}, Row{1.5, 2}, Row{2.5, 2}, Row{-0.5, 0}, Row{-1.5, -2},
                                       Row{-2.5, -2}, Row{2.4999999, 2}, Row{1e15 + 0.5, 1e15}}) {
        CAPTURE(value);
        CHECK(round_half_even(value) == whole);
    }
}

TEST_CASE("a conversion that does not fit is an overflow") {
    CHECK(to_i16(32767.4) == 32767);
    CHECK(to_i16(-32768.5) == -32768);
    CHECK(fault_number([] { to_i16(32767.5); }) == 6);
    CHECK(to_u8(255.5 - 0.1) == 255);
    CHECK(fault_number([] { to_u8(-0.6); }) == 6);
    CHECK(fault_number([] { to_u8(256); }) == 6);
    CHECK(to_i32(-2147483648.0) == std::numeric_limits<std::int32_t>::min());
    CHECK(fault_number([] { to_i32(2147483648.0); }) == 6);
    CHECK(fault_number([] { to_i32(std::nan("")); }) == 6);
    CHECK(fault_number([] { to_i32(HUGE_VAL); }) == 6);
    CHECK(fault_number([] { to_f32(1e39); }) == 6);
    CHECK(std::isinf(to_f32(HUGE_VAL)));
}

TEST_CASE("indices are checked at both ends") {
    std::vector<int> three{1, 2, 3};
    CHECK(at(three, 2) == 3);
    CHECK(fault_number([&] { at(three, 3); }) == 9);
    CHECK(fault_number([&] { at(three, -1); }) == 9);
    auto const told = [](std::size_t size) -> std::string {
        try {
            std::vector<int> const numbers(size);
            at(numbers, 7, "axis");
        } catch (Fault const& fault) {
            return fault.description;
        }
        return "";
    };
    CHECK(told(3) == "Subscript out of range: axis 7 was asked for, there are 0 to 2");
    CHECK(told(1) == "Subscript out of range: axis 7 was asked for, there is only 0");
    CHECK(told(0) == "Subscript out of range: axis 7 was asked for, there is none");
    CHECK(fault_number([] { divide(1, 0); }) == 11);
}

TEST_CASE("foreign exceptions become faults with a number and a text") {
    auto const caught = [](auto thrown) { return as_fault(std::make_exception_ptr(thrown)); };
    CHECK(caught(std::bad_alloc()).number == 7);
    CHECK(caught(std::runtime_error("disk on fire")).number == 5);
    CHECK(caught(std::runtime_error("disk on fire")).description == "disk on fire");
    CHECK(caught(42).number == 5);
}
