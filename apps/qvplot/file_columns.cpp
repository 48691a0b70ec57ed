#include "qvplot/file_columns.h"

#include "table/text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace qv::plot {
namespace {

using table::ColumnKind;
using table::FoundColumn;
using table::TableError;

constexpr char const* row_numbers = "0"; // as a column

std::vector<std::string> names_of(table::Table const& file) {
    std::vector<std::string> names;
    for (FoundColumn const& column : file.found()) names.push_back(column.name);
    return names;
}

// "5-7" as three columns.
std::vector<std::size_t> columns_between(table::Table const& file, std::string_view text) {
    auto const dash = text.find('-');
    if (dash == std::string_view::npos) return {};
    std::array<std::size_t, 2> ends{};
    std::array const parts{text.substr(0, dash), text.substr(dash + 1)};
    for (std::size_t i = 0; i < 2; ++i) {
        auto const result = std::from_chars(parts[i].data(), parts[i].data() + parts[i].size(), ends[i]);
        if (result.ec != std::errc() || result.ptr != parts[i].data() + parts[i].size()) return {};
    }
    std::vector<std::size_t> found;
    if (ends[0] < 1 || ends[1] > file.found().size()) return {};
    for (std::size_t number = ends[0]; number <= ends[1]; ++number) found.push_back(number - 1);
    return found;
}

std::string kind_name(FoundColumn const& column) {
    if (!column.has_values) return "empty";
    switch (column.kind) {
    case ColumnKind::Number: return "numbers";
    case ColumnKind::TimeOfDay: return "times of day";
    case ColumnKind::Text: return "texts";
    case ColumnKind::Time: break;
    }
    if (column.is_order_open) return "dates that can be read in two ways";
    constexpr std::array orders{"day", "month", "year"};
    return column.order_matters
               ? std::string("dates, the ") + orders[static_cast<std::size_t>(column.order)] + " first"
               : "dates";
}

} // namespace

std::string no_column(table::Table const& file, std::string const& text) {
    return file.name() + ": has no column " + table::one_line(text) + "; its columns are "
           + table::quoted_list(names_of(file));
}

std::vector<std::size_t> columns_in(table::Table const& file, std::string const& text) {
    std::vector<std::size_t> found = file.columns_named(text);
    if (!found.empty()) return found;
    for (std::size_t begin = 0; begin <= text.size();) {
        std::size_t const end = std::min(text.find(',', begin), text.size());
        const std::string part = text.substr(begin, end - begin);
        std::vector<std::size_t> columns = file.columns_named(part);
        if (columns.empty()) columns = columns_between(file, part);
        if (columns.empty()) return {};
        found.insert(found.end(), columns.begin(), columns.end());
        begin = end + 1;
    }
    return found;
}

std::optional<std::size_t> x_column(table::Table const& file, PlotOptions const& options) {
    if (options.x.empty()) {
        if (file.found().size() == 1) return std::nullopt;
        return 0;
    }
    const std::vector<std::size_t> found = file.columns_named(options.x);
    if (found.empty() && options.x == row_numbers) return std::nullopt;
    if (found.empty()) throw TableError(no_column(file, options.x));
    if (found.size() > 1)
        throw TableError(file.name() + ": has " + std::to_string(found.size()) + " columns "
                         + table::one_line(options.x) + "; its columns are "
                         + table::quoted_list(names_of(file)));
    return found.front();
}

std::vector<ChosenColumn> columns_of_numbers(table::Table const& file, std::optional<std::size_t> x) {
    std::vector<ChosenColumn> chosen;
    for (std::size_t i = 0; i < file.found().size(); ++i)
        if (i != x && file.found()[i].kind == ColumnKind::Number) chosen.push_back({i});
    return chosen;
}

table::Wanted wanted_column(table::Table const& file, std::size_t column, bool is_x,
                            PlotOptions const& options) {
    FoundColumn const& found = file.found()[column];
    if (found.is_order_open)
        throw TableError(file.name() + ": column " + table::one_line(found.name) + ": "
                         + table::one_line(found.open_example)
                         + " can be read in two ways; say --date-order dmy or --date-order mdy");
    if (found.is_grouping_open)
        throw TableError(file.name() + ": column " + table::one_line(found.name) + ": "
                         + table::one_line(found.open_example) + " groups its digits; say --thousands "
                         + std::string(1, found.grouped_by));
    table::Wanted wanted{.column = column, .kind = found.kind, .order = found.order};
    if (is_x) wanted.time_column = found.time_column;
    bool const is_count = is_x && options.x_time && found.kind == ColumnKind::Number;
    wanted.unix_time = is_count;
    wanted.unix_unit = options.x_time_unit;
    return wanted;
}

std::vector<std::string> explained(table::Table const& file, ChosenColumns const& chosen,
                                   PlotOptions const& options) {
    std::vector<std::string> lines{file.name() + ": " + file.description()};
    for (std::size_t i = 0; i < file.found().size(); ++i) {
        FoundColumn const& column = file.found()[i];
        auto const y = std::ranges::find(chosen.y, i, &ChosenColumn::column);
        bool const joined = chosen.x && file.found()[*chosen.x].time_column == i;
        const std::string role = chosen.x == i         ? "x"
                                 : joined              ? "the times of x"
                                 : y == chosen.y.end() ? "left out"
                                 : y->on_second_axis   ? "y at the right"
                                                       : "y";
        bool const is_count = chosen.x == i && options.x_time && column.kind == ColumnKind::Number;
        lines.push_back("  " + std::to_string(i + 1) + " " + table::one_line(column.name) + ": "
                        + kind_name(column) + (is_count ? " that count from 1970" : "")
                        + (column.unit.empty() ? "" : ", in " + column.unit) + " -> " + role);
    }
    if (!chosen.x) lines.push_back("  x: the number of the row");
    return lines;
}

} // namespace qv::plot
