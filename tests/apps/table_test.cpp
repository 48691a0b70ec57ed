#include "table/table.h"

#include "table/text_table.h"
#include "temporary_folder.h"

#include <doctest/doctest.h>

#include <cmath>
#include <fstream>

using namespace qv::table;
using qv::test::TemporaryFolder;

namespace {

// Names and values, "a: 1 2; b: 3 -".
std::string shown(Table& table) {
    std::string text;
    for (std::size_t i = 0; i < table.found().size(); ++i) {
        text += (i == 0 ? "" : "; ") + table.found()[i].name + ":";
        for (double const value : table.columns()[i].values)
            text += " " + (std::isnan(value) ? "-" : std::to_string(std::lround(value)));
    }
    return text;
}

std::string read(std::string_view text, ReadOptions const& options = {}) {
    try {
        auto const table = open_table(bytes_of(text), "t", options);
        read_whole(*table);
        return shown(*table);
    } catch (TableError const& error) {
        return error.what();
    }
}

// Gives its text in pieces of a few bytes.
class SlowBytes : public ByteSource {
public:
    SlowBytes(std::string_view text, std::size_t piece) : rest_(text), piece_(piece) {}
    std::size_t read(std::span<char> target) override {
        const std::size_t count = std::min({target.size(), piece_, rest_.size()});
        std::copy_n(rest_.data(), count, target.data());
        rest_.remove_prefix(count);
        return count;
    }

private:
    std::string_view rest_;
    std::size_t piece_;
};

} // namespace

TEST_CASE("rows at the ends of the blocks a text is read in stay whole, in whatever pieces it comes") {
    std::string text = "x,y,note\r\n", quoted = "x,y,note\n";
    for (int i = 0; i < 30000; ++i) {
        const std::string note(static_cast<std::size_t>(i % 83), 'q');
        text += std::to_string(i) + "," + std::to_string(i % 1000) + "," + note + "\r\n";
        quoted += std::to_string(i) + ",\"" + std::to_string(i % 1000) + "\",\"" + note + "\n\"\n";
    }
    for (std::string const* content : {&text, &quoted})
        for (std::size_t const piece : {std::size_t{1} << 20, std::size_t{4099}}) {
            auto const table = open_table(std::make_unique<SlowBytes>(*content, piece), "t", {});
            table->keep({{.column = 0}, {.column = 1}});
            while (table->read()) {
            }
            table->finish();
            REQUIRE(table->rows() == 30000);
            bool all = true;
            for (std::size_t i = 0; i < 30000; ++i)
                all = all && table->columns()[0].values[i] == static_cast<double>(i)
                      && table->columns()[1].values[i] == static_cast<double>(i % 1000);
            CHECK(all);
        }
}

TEST_CASE("the fast way through plain numbers and the plain way agree") {
    // A quote anywhere in a block leads to the plain way.
    const std::string rows = "1,2,3\n-4,5e2,6\n7,,9\n10,x,12\n,,\n13,14\n15,16,17,18\n# 1,2,3\n19,20,21,\n "
                             "22 ,23,24\n1e400,25,26\n+27,28,29\n";
    auto const fast = open_table(bytes_of(rows), "t", {.header = false});
    const std::string with_quote = rows + "30,31,\"32\"\n", without_quote = rows + "30,31,32\n";
    auto const show = [](std::string const& text) { return read(text, {.header = false}); };
    CHECK(show(with_quote) == show(without_quote));
    CHECK(show(without_quote)
          == "column 1: 1 -4 7 10 - 13 19 22 - 27 30; column 2: 2 500 - - - 14 20 23 25 28 31; "
             "column 3: 3 6 9 12 - - 21 24 26 29 32");
}

TEST_CASE("what is told about a text comes before what is found") {
    CHECK(read("a,b;c\n1,2;3\n", {.separator = ';'}) == "a,b: 1; c: 3");
    CHECK(read("1.234;5\n", {.thousands = '.'}) == "column 1: 1234; column 2: 5");
    CHECK(read("\"1,234\",5\n\"2,345,678\",6\n", {.thousands = ','})
          == "column 1: 1234 2345678; column 2: 5 6");
    CHECK(read("1 000,6;5\n", {.thousands = ' '}) == "column 1: 1001; column 2: 5");
    CHECK(read("1,2\n3,4\n", {.header = true}) == "1: 3; 2: 4");
    CHECK(read("% 1,2\n3,4\n", {.comment = "%", .header = false}) == "column 1: 3; column 2: 4");
    CHECK(read("junk\nmore, junk, here\na,b\n1,2\n", {.skip = 2}) == "a: 1; b: 2");
    CHECK(read("d,n\n31/12/2024,1\n", {.date_order = DateOrder::DayFirst}) == "d: 1735603200; n: 1");
    CHECK(read("d,n\n2024:122,1\n", {.date_format = "%Y:%j"}) == "d: 1714521600; n: 1");
}

TEST_CASE("errors name file and line, in one line that says what to try") {
    struct {
        char const* content;
        char const* message;
    } const table[]{
        {"", "t: is empty; rows of numbers are expected, with or without a header"},
        {"\n \n", "t: is empty; rows of numbers are expected, with or without a header"},
        {"# only\n# comments\n", "t: is empty; rows of numbers are expected, with or without a header"},
        {"a,b\n1,2\n\n\"3,4\n5,6\n", "t:4: the row has a quote that is never closed"},
        {"PK\x03\x04 rest", "t: is a spreadsheet or another packed file; save the table as .csv"},
        {"{\"a\": 1}\n{\"a\": \n", "t:2: is no line of JSON; an object a line is expected"},
        {"\x1F\x8B\x08 rest", "t: is packed by gzip and damaged or cut off; pack it anew"},
        {"\x28\xB5\x2F\xFD rest", "t: is packed by zstd and damaged or cut off; pack it anew"},
    };
    for (auto const& row : table) {
        CAPTURE(row.content);
        CHECK(read(row.content) == row.message);
    }
    CHECK(
        read({"a,b\n1,\0\n", 8})
        == "t: is no text; qvplot reads tables of text, JSON and .npy arrays, packed by gzip or zstd or not");
    CHECK(read({"\x93NUMPY\1\0\5\0abcde", 15})
          == "t: has a header that is none of an array of numbers; save it as .csv");
    CHECK_THROWS_WITH(open_table(std::string("a\0b.csv", 7)),
                      "\"a...\": a file's name cannot hold a zero character");
    CHECK_THROWS_WITH(open_table("/no/such.csv"),
                      "/no/such.csv: cannot be opened; check the name and its permissions");
    CHECK_THROWS_WITH(open_table("/tmp"), "/tmp: cannot be read: it is a folder; name a file in it");
}

TEST_CASE("the order of dates is looked for far into a file") {
    std::string text = "when,n\n";
    for (int i = 0; i < 20000; ++i) text += i % 2 == 0 ? "05/01/24,1\n" : "03/02/24,1\n";
    CHECK(open_table(bytes_of(text), "t", {})->found()[0].is_order_open);
    text += "01/17/24,1\n";
    auto const table = open_table(bytes_of(text), "t", {});
    CHECK_FALSE(table->found()[0].is_order_open);
    CHECK(table->found()[0].order == DateOrder::MonthFirst);
}

TEST_CASE("a file that is cut begins anew, and one that grows goes on") {
    const TemporaryFolder folder;
    auto const file = folder.file("t.csv", "a,b\n1,2\n3,4\n5,");
    auto const table = open_table(file.string(), {.early = true});
    table->keep({{.column = 0}, {.column = 1}});
    while (table->read()) {
    }
    CHECK(shown(*table) == "a: 1 3; b: 2 4");
    std::ofstream(file, std::ios::app) << "6\n7,8\n";
    while (table->read()) {
    }
    CHECK(shown(*table) == "a: 1 3 5 7; b: 2 4 6 8");
    folder.file("t.csv", "a,b\n9,10\n");
    for (int i = 0; i < 3; ++i) table->read(); // the first tells of the cut
    CHECK(shown(*table) == "a: 1 3 5 7 9; b: 2 4 6 8 10");
}

// Millions of characters one by one take minutes with sanitizers; the optimised build runs this.
#ifdef __SANITIZE_ADDRESS__
constexpr bool is_too_slow = true;
#else
constexpr bool is_too_slow = false;
#endif

TEST_CASE("a row without end is an error" * doctest::skip(is_too_slow)) {
    CHECK(read("a,b\n1,2\n\"" + std::string(2 * TextTable::longest_row, '\n'))
          == "t:3: the row is longer than 64 MB; is it a table with all quotes closed?");
}
