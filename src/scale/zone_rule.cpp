#include "scale/zone_rule.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace qv::scale {
namespace {

using namespace std::chrono;

// Reads a rule from the left; what is not there is remembered as a failure.
class RuleReader {
public:
    explicit RuleReader(std::string_view text) : rest_(text) {}

    bool ended() const { return rest_.empty(); }
    bool failed() const { return failed_; }
    bool next_is(char character) const { return rest_.starts_with(character); }
    bool take(char character) {
        bool const found = next_is(character);
        if (found) rest_.remove_prefix(1);
        return found;
    }
    void expect(char character) {
        if (!take(character)) failed_ = true;
    }
    // "CET", or "<+03>" where it has other characters than letters.
    std::string name() {
        bool const quoted = take('<');
        std::string_view const after = quoted ? ">" : "+-,0123456789";
        auto const length = std::min(rest_.find_first_of(after), rest_.size());
        std::string found(rest_.substr(0, length));
        rest_.remove_prefix(length);
        if (quoted) expect('>');
        if (found.empty()) failed_ = true;
        return found;
    }
    unsigned number() {
        unsigned value = 0;
        auto const result = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
        if (result.ec != std::errc() || value > 400) failed_ = true;
        rest_.remove_prefix(static_cast<std::size_t>(result.ptr - rest_.data()));
        return value;
    }
    // "-1", "5:30", "167:00:00".
    seconds time() {
        bool const negative = take('-');
        if (!negative) take('+');
        seconds value = hours(number());
        if (take(':')) value += minutes(number());
        if (take(':')) value += seconds(number());
        return negative ? -value : value;
    }
    RuleDay day() {
        RuleDay found;
        if (take('M')) {
            found.month = number();
            expect('.');
            found.week = number();
            expect('.');
        } else {
            found.kind = take('J') ? RuleDay::Kind::DayWithoutLeapDay : RuleDay::Kind::DayFromZero;
        }
        found.day = number();
        if (take('/')) found.time = time();
        bool const of_month = found.kind == RuleDay::Kind::WeekdayOfMonth;
        if (of_month && !(month(found.month).ok() && found.week >= 1 && found.week <= 5 && found.day <= 6))
            failed_ = true;
        return found;
    }

private:
    std::string_view rest_;
    bool failed_ = false;
};

local_days day_in(RuleDay const& rule, year y) {
    const local_days new_year = local_days{y / January / 1};
    switch (rule.kind) {
    case RuleDay::Kind::DayFromZero: return new_year + days(rule.day);
    case RuleDay::Kind::DayWithoutLeapDay:
        return new_year + days(rule.day - 1 + (y.is_leap() && rule.day >= 60 ? 1 : 0));
    case RuleDay::Kind::WeekdayOfMonth: break;
    }
    const weekday wanted{rule.day};
    if (rule.week == 5) return local_days{y / month(rule.month) / wanted[last]};
    return local_days{y / month(rule.month) / wanted[rule.week]};
}

} // namespace

local_seconds RuleDay::in(year y) const {
    return day_in(*this, y) + time;
}

std::optional<ZoneRule> ZoneRule::read(std::string_view text) {
    RuleReader reader(text);
    ZoneRule rule;
    rule.standard.abbreviation = reader.name();
    rule.standard.offset = -reader.time(); // the form counts westwards
    if (!reader.ended() && !reader.failed()) {
        Setting summer{reader.name(), rule.standard.offset + hours(1), {}};
        if (!reader.next_is(',')) summer.offset = -reader.time();
        reader.expect(',');
        summer.since = reader.day();
        reader.expect(',');
        rule.standard.since = reader.day();
        rule.summer = std::move(summer);
    }
    if (reader.failed() || !reader.ended()) return std::nullopt;
    return rule;
}

ZoneRule::Stretch ZoneRule::stretch(sys_seconds time) const {
    if (!summer) return {beginning_of_time, end_of_time, &standard};
    auto const change = [](Setting const& to, Setting const& from, year y) {
        return std::pair(sys_seconds(to.since.in(y).time_since_epoch() - from.offset), &to);
    };
    // One change may lie in the neighbouring year by UTC.
    const year middle = year_month_day(floor<days>(time)).year();
    std::array<std::pair<sys_seconds, Setting const*>, 6> changes;
    std::size_t count = 0;
    for (year y = middle - years(1); y <= middle + years(1); ++y) {
        changes[count++] = change(*summer, standard, y);
        changes[count++] = change(standard, *summer, y);
    }
    std::ranges::sort(changes);
    auto after = std::ranges::upper_bound(changes, time, {}, [](auto const& c) { return c.first; });
    after = std::clamp(after, changes.begin() + 1, changes.end() - 1);
    return {std::prev(after)->first, after->first, std::prev(after)->second};
}

} // namespace qv::scale
