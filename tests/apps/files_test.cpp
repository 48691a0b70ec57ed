// The files of tests/files, each odd in the way its name says, read as a person means them.
#include "base/text.h"
#include "qvplot/plot_error.h"
#include "qvplot/series.h"
#include "table/table_error.h"

#include <doctest/doctest.h>

#include <cstdlib>
#include <filesystem>
#include <set>

using namespace qv::plot;

namespace {

std::filesystem::path files() {
    return std::filesystem::path(std::getenv("QV_SOURCE_DIR")) / "tests" / "files";
}

std::string values(qv::table::Values const& numbers) {
    std::string text;
    for (double const number : numbers) text += " " + (std::isnan(number) ? "-" : qv::number_text(number));
    return text;
}

std::string name(std::string const& title, std::string const& unit) {
    return unit.empty() ? title : title + " in " + unit;
}

// "x: 1 2; y: 3 4", with what is left out behind bars. Seconds of dates count from 2024.
std::string shown(PlotData data) {
    constexpr double start_of_2024 = 1704067200;
    std::string text = name(data.x_name, data.x_unit);
    if (data.x.is_time && !data.x.is_time_of_day) {
        text += " since 2024";
        for (std::size_t i = 0; i < data.series[0].x.size(); ++i)
            data.series[0].x.set(i, data.series[0].x[i] - start_of_2024);
    }
    if (data.x.is_time_of_day) text += " since midnight";
    for (std::string const& one : data.x.texts) text += " [" + one + "]";
    text += ":" + values(data.series[0].x);
    for (Series const& series : data.series)
        text += "; " + name(series.name, series.unit) + ":" + values(series.y);
    for (std::string const& note : notes_of_what_is_left_out(data)) text += " | " + note;
    return text;
}

std::string read(std::string const& file, PlotOptions options) {
    options.files = {files() / file};
    std::string text;
    try {
        text = shown(read_series(options));
    } catch (std::runtime_error const& error) {
        text = error.what();
    }
    return qv::replace_all(text, options.files[0].string(), "FILE");
}

struct Row {
    char const* file;
    char const* shown;
    void (*set)(PlotOptions&) = nullptr;
};

const Row rows[]{
    {"array.npy", "column 1: 1 2; column 2: 12.5 13"},
    {"bars.txt", "day: 1 2; temp: 12.5 13"},
    {"blanks.dat", "column 1: 1 2 10; column 2: 12.5 13 9.75; column 3: 3 4 12"},
    {"blanks_header.txt", "time: 0 0.5; temp: 12.5 13"},
    {"bom.csv", "day: 1 2; temp: 12.5 13"},
    {"by_columns.npy", "column 1: 1 2 3; column 2: 4 5 6"},
    {"comments.csv", "day: 1 2; temp: 12.5 13"},
    {"date_and_time.csv", "date since 2024: 10476000 10521000; temp: 1 2"},
    {"day_first.csv", "when since 2024: 345600 1382400; temp: 12.5 13"},
    {"dotted_dates.csv", "Datum since 2024: 10480500 10567800; Wert: 12.5 13"},
    {"header_in_comment.dat", "day: 1 2; temp: 12.5 13; wind: 3 4"},
    {"infinite.csv", "day: 1 2 3 4; temp: 12.5 - - 13 | left out of \"temp\": 2 infinite values"},
    {"iso_dates.csv", "when since 2024: 10454400 10540800; temp: 12.5 13"},
    {"iso_offsets.csv", "when since 2024: 10490400 10497600.5 10512000 10510200; temp: 12.5 13 9 8"},
    {"json_array.json", "day: 1 2; temp: 12.5 13"},
    {"json_columns.json", "day: 1 2; temp: 12.5 13"},
    {"json_lines.jsonl", "day: 1 2 3; wind.speed: 3.5 - 5 | left out of FILE: 1 column that holds no "
                         "numbers, \"place\" | left out of \"wind.speed\": 1 row without a value"},
    {"latin1.csv",
     "Tag: 1 2; Größe in °: 12.5 13 | FILE: is not UTF-8 and read as Latin-1; --encoding names another"},
    {"lines_above.csv",
     "day: 1 2 3; temp: 12.5 13 14; wind: 3 4 5 | left out of FILE: 2 lines above the table"},
    {"markdown.txt", "day: 1 2; temp: 12.5 13"},
    {"missing_marks.csv",
     "day: 1 2 3 4 5 6 7 8 9; temp: 12.5 - - - - - - - 13 | left out of \"temp\": 7 rows without a value"},
    {"month_first.csv", "when since 2024: 394200 1382700; temp: 12.5 13"},
    {"month_names.csv", "when since 2024: 10497600 10540800 13305600; temp: 1 2 3"},
    {"no_header.csv", "column 1: 1 2 3; column 2: 12.5 13 11.8"},
    {"no_header_texts.csv", "column 1 [Oslo] [Rome] [Cairo]: 0 1 2; column 2: 4.2 16.1 22"},
    {"no_last_end.csv", "day: 1 2; temp: 12.5 13"},
    {"one_column.txt", "row: 1 2 3; column 1: 12.5 13 11.8"},
    {"one_column_header.txt", "row: 1 2; temp: 12.5 13"},
    {"order_by_sequence.csv", "when since 2024: 345600 432000 950400 2678400; temp: 1 2 3 4"},
    {"order_open.csv",
     "FILE: column \"when\": \"05/01/24\" can be read in two ways; say --date-order dmy or --date-order mdy"},
    {"packed.csv.gz", "day: 1 2; temp: 12.5 13"},
    {"packed.csv.zst", "day: 1 2; temp: 12.5 13"},
    {"plain.csv", "day: 1 2 3; temp: 12.5 13 11.8; wind: 3 4 6"},
    {"put_together.csv", "day: 1 2 3; temp: 12.5 13 11"},
    {"quoted_decimal_commas.csv", "day: 1 2 3; temp: 12.5 13.25 7"},
    {"quoted_line_end.csv", "day: 1 2; temp\noutside: 12.5 13"},
    {"quotes.csv", "day: 1 2; temp, outside: 12.5 13; said \"hot\": 1 0"},
    {"records.npy", "when since 2024: 10497600 10540800; temp: 1.5 2.5"},
    {"returns_as_ends.csv", "day: 1 2; temp: 12.5 13"},
    {"row_names.txt", "column 1 [Oslo] [Rome] [Cairo]: 0 1 2; temp: 4.2 16.1 22; wind: 3 2 4"},
    {"same_titles.csv", "day: 1 2; temp (column 2): 12.5 13; temp (column 3): 3 4"},
    {"semicolons_decimal_commas.csv", "Tag: 1 2 3; Temperatur: 12.5 13 11.8; Wind: 3 4.25 6.5"},
    {"short_rows.csv", "day: 1 2 3 4; temp: 12.5 13 - 11; wind: 3 - - 5 | left out of \"temp\": 1 row "
                       "without a value | left out of \"wind\": 2 rows without a value"},
    {"signs.csv", "day: 1 2 3 4 5 6; temp: 12.5 -13 1000 -0.02 0.5 50"},
    {"slashed_iso.csv", "when since 2024: 379800 510310; temp: 12.5 13"},
    {"stray.csv", "day: 1 2 3 4; temp: 12.5 - 13 12 | left out of \"temp\": 1 cell that is no number, in "
                  "line 3: \"broken\""},
    {"tabs.tsv", "day: 1 2; temp in shade: 12.5 13; wind: 3 4"},
    {"tabs_decimal_commas.tsv", "day: 1 2 3; temp: 12.5 13.25 7"},
    {"texts.csv", "place [Oslo] [Rome]: 0 1 0; temp: 4.2 16.1 5"},
    {"thousands.csv", "FILE: column \"sold\": \"1.234.567\" groups its digits; say --thousands ."},
    {"times_alone.csv", "clock since midnight: 84600 85800 87000; temp: 1 2 3"},
    {"trailing_separator.csv", "day: 1 2; temp: 12.5 13"},
    {"units_line.csv", "time in s: 0 1; temp in °C: 12.5 13; wind in m/s: 3 4"},
    {"unix_milliseconds.csv", "stamp: 1714564800000 1714564860000; temp: 1 2"},
    {"utf16.csv", "day: 1 2; Größe: 12.5 13"},
    {"utf16_no_mark.csv", "day: 1 2; temp: 12.5 13.1"},
    {"week_dates.csv", "week since 2024: 0 604800; sold: 5 7"},
    {"wide_row.csv", "day: 1 3; temp: 12.5 11 | left out of FILE: 1 row with more cells than there are "
                     "columns, the first in line 3"},
    {"windows_ends.csv", "day: 1 2; temp: 12.5 13"},
    {"years_as_titles.csv", "country [Norway] [Italy]: 0 1; 1990: 4.2 57; 1991: 4.3 57.1"},
    // What is asked for is told.
    {"order_open.csv", "when since 2024: 345600 3110400; temp: 1 2",
     [](PlotOptions& options) { options.reading.date_order = qv::table::DateOrder::DayFirst; }},
    {"order_open.csv", "when since 2024: 10454400 13219200; temp: 1 2",
     [](PlotOptions& options) { options.reading.date_order = qv::table::DateOrder::MonthFirst; }},
    {"thousands.csv", "day: 1 2 3; sold: 1234 12000 1234567",
     [](PlotOptions& options) { options.reading.thousands = '.'; }},
    {"unix_milliseconds.csv", "stamp since 2024: 10497600 10497660; temp: 1 2",
     [](PlotOptions& options) { options.x_time = true; }},
    {"dotted_dates.csv", "Datum since 2024: 10473300 10560600; Wert: 12.5 13",
     [](PlotOptions& options) { options.reading.time_zone = "Europe/Berlin"; }},
    {"plain.csv", "row: 1 2 3; wind: 3 4 6; day: 1 2 3",
     [](PlotOptions& options) {
         options.x = "0";
         options.y = {"3,day"};
     }},
    {"plain.csv", "wind: 3 4 6; day: 1 2 3; temp: 12.5 13 11.8",
     [](PlotOptions& options) {
         options.x = "3";
         options.y = {"1-2"};
     }},
};

} // namespace

TEST_CASE("every odd file is read as a person means it") {
    std::set<std::string> read_so_far;
    for (Row const& row : rows) {
        CAPTURE(row.file);
        PlotOptions options;
        if (row.set) row.set(options);
        CHECK(read(row.file, options) == row.shown);
        read_so_far.insert(row.file);
    }
    for (auto const& file : std::filesystem::directory_iterator(files())) {
        CAPTURE(file.path().filename().string());
        CHECK(read_so_far.contains(file.path().filename().string()));
    }
}
