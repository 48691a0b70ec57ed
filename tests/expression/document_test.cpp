// Runs every example of the page for users.
#include "evaluate.h"

#include "base/text.h"

#include <doctest/doctest.h>

#include <cstdlib>
#include <fstream>

using namespace qv;
using namespace qv::test;

namespace {

std::string shown_outcome(qvExpression& engine, std::string const& formula) {
    Variant const value = value_of(engine, formula);
    if (engine.ErrorCode() == 0) return text_of(value);
    return "error " + std::to_string(engine.ErrorCode()) + " "
           + replace_all(engine.ErrorDescription(), "\r\n", " ");
}

// What stands before a definition says what it defines.
void prepare(qvExpression& engine, std::string_view prose, std::string const& text) {
    auto const equals = text.find(" = ");
    if (prose.ends_with("define ")) engine.UserFunc(text);
    if (prose.ends_with("array ")) engine.DefineArray(text);
    if (prose.ends_with("set ")) engine.Variable(text.substr(0, equals), std::stod(text.substr(equals + 3)));
}

constexpr std::string_view arrow = " → ";

} // namespace

TEST_CASE("the examples for users") {
    std::ifstream page(std::string(std::getenv("QV_SOURCE_DIR")) + "/docs/expressions.md");
    REQUIRE(page);
    qvExpression engine;
    int examples = 0;
    for (std::string line; std::getline(page, line);) {
        CAPTURE(line);
        // Prose and code take turns.
        auto const parts = split(line, "`");
        for (std::size_t code = 1; code + 1 < parts.size(); code += 2) {
            prepare(engine, parts[code - 1], std::string(parts[code]));
            if (!parts[code + 1].starts_with(arrow)) continue;
            std::string const expected =
                std::string(parts[code + 1].substr(arrow.size())).append(parts[code + 2]);
            CHECK(shown_outcome(engine, std::string(parts[code])) == expected);
            ++examples;
        }
    }
    CHECK(examples > 80);
}
