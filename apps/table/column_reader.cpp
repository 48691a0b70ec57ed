#include "table/column_reader.h"

#include "table/text.h"

#include <cmath>

namespace qv::table {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double seconds_a_day = 86400;

} // namespace

ColumnReader::ColumnReader(Wanted const& wanted, Dialect const& dialect, ReadOptions const& options)
    : wanted_(wanted), numbers_(dialect.numbers), options_(options), form_{wanted.order} {
    if (!options.time_zone.empty() && options.time_zone != "UTC") form_.zone = time_zone(options.time_zone);
}

std::optional<double> ColumnReader::value(std::string_view cell, std::string_view time_cell) {
    if (wanted_.kind == ColumnKind::Text) return trimmed(cell).empty() ? nan : category(cell);
    if (wanted_.kind != ColumnKind::Number) return moment(cell, time_cell);
    const NumberCell number = read_number(cell, numbers_);
    switch (number.kind) {
    case CellKind::Number: return value_of_number(number.value);
    case CellKind::Missing: return nan;
    case CellKind::Infinite: return number.value == number.value ? number.value : HUGE_VAL;
    default: return std::nullopt;
    }
}

std::optional<double> ColumnReader::value_of_number(double number) const {
    if (!wanted_.unix_time) return number;
    constexpr double latest = 253402300799; // the end of the year 9999
    double const seconds = number * seconds_in(wanted_.unix_unit.value_or(unix_unit_of(number)));
    return std::abs(seconds) <= latest ? std::optional(seconds) : std::nullopt;
}

std::optional<double> ColumnReader::moment(std::string_view cell, std::string_view time_cell) {
    if (read_number(cell).kind == CellKind::Missing) return nan;
    auto const found = time_cell.empty() ? moment_in(cell, options_, form_)
                                         : moment_in(std::string(cell) + " " + std::string(time_cell),
                                                     {.date_format = ""}, form_);
    if (!found || found->is_time_alone != (wanted_.kind == ColumnKind::TimeOfDay)) return std::nullopt;
    if (!found->is_time_alone) return found->seconds;
    // Past midnight a clock begins anew; the times go on.
    double time = found->seconds;
    if (last_time_ >= 0) time += std::floor(last_time_ / seconds_a_day) * seconds_a_day;
    if (time < last_time_ - seconds_a_day / 2) time += seconds_a_day;
    return last_time_ = time;
}

double ColumnReader::category(std::string_view cell) {
    std::string text = is_utf8(cell) ? std::string(cell) : utf8_of_latin1(cell);
    auto const [place, is_new] =
        categories_.try_emplace(std::move(text), static_cast<double>(categories_.size()));
    if (is_new) new_texts_.push_back(place->first);
    return place->second;
}

void ColumnReader::add_texts(Column& column) {
    for (; !new_texts_.empty(); new_texts_.clear())
        column.texts.insert(column.texts.end(), new_texts_.begin(), new_texts_.end());
}

void ColumnReader::add_plain(Column& column, std::span<double const> values) {
    add_texts(column);
    column.values.append(values);
}

void ColumnReader::add(Column& column, double value) {
    add_texts(column);
    column.missing += std::isnan(value);
    bool const infinite = std::isinf(value);
    column.infinite += infinite;
    column.values.push_back(infinite ? nan : value);
}

void ColumnReader::add_stray(Column& column, std::string_view cell, std::size_t line) const {
    if (column.strays.count++ == 0) {
        column.strays.first_line = line;
        column.strays.first = is_utf8(cell) ? std::string(cell) : utf8_of_latin1(cell);
    }
    column.values.push_back(nan);
}

} // namespace qv::table
