#include "table/csv_reader.h"

#include "temporary_folder.h"

#include <doctest/doctest.h>

#include <cmath>
#include <fstream>

using namespace qv::table;
using qv::test::TemporaryFolder;

namespace {

// Header and rows with the lines they begin on: "1 a|b", "2 1|2".
std::string read(std::string const& content) {
    const TemporaryFolder folder;
    CsvReader csv(folder.file("t.csv", content));
    auto const show = [&](std::size_t line, auto const& field) {
        std::string text = std::to_string(line);
        for (std::size_t i = 0; i < csv.header().size(); ++i)
            text += (i == 0 ? " " : "|") + std::string(field(i));
        return text + "\n";
    };
    std::string text = show(0, [&](std::size_t i) { return csv.header()[i]; });
    while (csv.next_row()) text += show(csv.line(), [&](std::size_t i) { return csv.field(i); });
    return text;
}

// The message without the path of the file.
std::string error(std::string const& content, void (*use)(CsvReader&)) {
    const TemporaryFolder folder;
    auto const file = folder.file("t.csv", content);
    try {
        CsvReader csv(file);
        while (csv.next_row()) use(csv);
    } catch (TableError const& failure) {
        const std::string text = failure.what(), path = file.string();
        return text.starts_with(path) ? text.substr(path.size()) : text;
    }
    return "no error";
}

void numbers(CsvReader& csv) {
    csv.number(0);
    csv.number(csv.column("b"));
}

} // namespace

TEST_CASE("rows are read whatever separates, quotes and ends them, and know their line") {
    struct {
        char const* content;
        char const* rows;
    } const table[]{
        {"a,b\n1,2\n3,4\n", "0 a|b\n2 1|2\n3 3|4\n"},
        {"a;b\n1,5;2\n", "0 a|b\n2 1,5|2\n"},
        {"a\tb c\n1\t2", "0 a|b c\n2 1|2\n"},                   // no end after the last row
        {"a,b\r\n1,2\r\n\r\n3,4\r\n", "0 a|b\n2 1|2\n4 3|4\n"}, // an empty line counts as one
        {"a,b\r1,2\r3,4", "0 a|b\n2 1|2\n3 3|4\n"},
        {"\xEF\xBB\xBF\"a;x\",b\n1,2\n", "0 a;x|b\n2 1|2\n"},     // byte order mark; no separator in quotes
        {"a,b\n\"x\ny\",2\n3,4\n", "0 a|b\n2 x\ny|2\n4 3|4\n"},   // a field over two lines
        {"a,b\n\"say \"\"hi\"\"\",\n", "0 a|b\n2 say \"hi\"|\n"}, // doubled quotes
        {"a,b,c\n1\n,,3\n1,2,3,,\n", "0 a|b|c\n2 1||\n3 ||3\n4 1|2|3\n"},
        {"a,b\n5\" pipe,2\n", "0 a|b\n2 5\" pipe|2\n"},
        {"a\n5\n", "0 a\n2 5\n"},
        {"5\n6\n", "0 column 1\n1 5\n2 6\n"}, // numbers and dates are no header
        {"2020-01,NA,1\n", "0 column 1|column 2|column 3\n1 2020-01|NA|1\n"},
        {"NA,\n1,2\n", "0 NA|column 2\n2 1|2\n"},
        {"a;b 1,5\n1,5;2\n", "0 a|b 1,5\n2 1,5|2\n"},
        {"1,5;2\n3,5;4\n", "0 1,5|2\n2 3,5|4\n"}, // decimal commas
        {"a (x; y),b,b\n1,2,3\n", "0 a (x; y)|b (column 2)|b (column 3)\n2 1|2|3\n"},
        {"a,b\n", "0 a|b\n"},
    };
    for (auto const& row : table) {
        CAPTURE(row.content);
        CHECK(read(row.content) == row.rows);
    }
}

TEST_CASE("rows at the ends of the blocks a file is read in stay whole") {
    std::string content = "x,text\r\n", rows = "0 x|text\n";
    for (int i = 0; i < 60000; ++i) {
        const std::string text(static_cast<std::size_t>(i % 83), 'q');
        content += std::to_string(i) + ",\"" + text + "\"\r\n";
        rows += std::to_string(i + 2) + " " + std::to_string(i) + "|" + text + "\n";
    }
    REQUIRE(content.size() > 2 << 20);
    CHECK(read(content) == rows);
}

TEST_CASE("numbers") {
    const TemporaryFolder folder;
    CsvReader csv(folder.file("t.csv", "a\n 1.5 \n-2e3\n+7\n\"\"  \n\"\"\nNaN\n0x\n"));
    for (double const expected : {1.5, -2000.0, 7.0}) {
        REQUIRE(csv.next_row());
        CHECK(csv.number(0) == expected);
    }
    while (csv.next_row() && csv.field(0) != "0x") CHECK(std::isnan(csv.number(0)));
    CHECK(csv.progress() == 1);
}

TEST_CASE("errors name file, line, column and text, in one line") {
    struct {
        char const* content;
        char const* message;
    } const table[]{
        {"a,b\n1,2\n3,4 ppm\n", ":3: column \"b\": \"4 ppm\" is not a number"},
        {"a,b\n\"1\n2\",3\n", ":2: column \"a\": \"1 2\" is not a number"},
        {"a,b\n+-1,2\n", ":2: column \"a\": \"+-1\" is not a number"},
        {"a,b\ninf,2\n", ":2: column \"a\": \"inf\" is not a finite number of double precision"},
        {"a,b\n1e999,2\n", ":2: column \"a\": \"1e999\" is not a finite number of double precision"},
        {"a,c\n1,2\n", ": has no column \"b\"; its columns are \"a\", \"c\""},
        {"a,b\n1,2,3\n", ":2: has 3 fields where the header names 2"},
        {"a,b\n1,2\n\n\"3,4\n5,6\n", ":4: the row has a quote that is never closed"},
        {"", ": is empty; a header row is expected"},
        {"\n \n", ": is empty; a header row is expected"},
        {"\xFF\xFE\x61\x00", ": is UTF-16 text; save it as UTF-8"},
    };
    for (auto const& row : table) {
        CAPTURE(row.content);
        CHECK(error(row.content, numbers) == row.message);
    }
    CHECK_THROWS_WITH(CsvReader(std::filesystem::path(std::string("a\0b.csv", 7))),
                      "\"a b.csv\": a file's name cannot hold a zero character");
    CHECK_THROWS_WITH(CsvReader("/no/such.csv"),
                      "/no/such.csv: cannot be opened; check the name and its permissions");
    CHECK_THROWS_WITH(CsvReader("/tmp"), "/tmp: cannot be read; is it a folder?");
}

// Millions of characters one by one take minutes with sanitizers; the optimised build runs this.
#ifdef __SANITIZE_ADDRESS__
constexpr bool is_too_slow = true;
#else
constexpr bool is_too_slow = false;
#endif

TEST_CASE("a row without end is an error, whether it is long or wide" * doctest::skip(is_too_slow)) {
    const TemporaryFolder folder;
    auto const file = folder.file("t.csv", "a,b\n1,2\n");
    auto const append = [&](std::size_t bytes, char c) {
        std::ofstream stream(file, std::ios::app | std::ios::binary);
        const std::string block(1 << 20, c);
        for (std::size_t i = 0; i < bytes; i += block.size()) stream << block;
    };
    auto const message = [&] {
        try {
            CsvReader csv(file);
            while (csv.next_row()) {
            }
        } catch (TableError const& error) {
            return std::string(error.what()).substr(file.string().size());
        }
        return std::string("no error");
    };
    append(CsvReader::longest_row / 2, 'x');
    append(1, '\n');
    CHECK(message() == "no error");
    append(CsvReader::longest_row, 'x');
    CHECK(message()
          == ":" + std::to_string(3 + (1 << 20))
                 + ": the row is longer than 64 MB; is it a CSV file with all quotes closed?");
    std::filesystem::resize_file(file, 8);
    append(CsvReader::longest_row / 32, ',');
    CHECK(message() == ":3: has more than 1000000 fields");
    std::ofstream(file, std::ios::binary) << "a,b\n\"";
    append(CsvReader::longest_row, '\n'); // a quote that is never closed
    CHECK(message() == ":2: the row is longer than 64 MB; is it a CSV file with all quotes closed?");
}
