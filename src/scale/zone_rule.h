// The rule by which a zone's clocks go on after its last recorded change, as the files of the zone data end
// with.
#pragma once

#include <array>
#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace qv::scale {

/// Where a stretch of time ends that does not end: far beyond all years that are shown.
constexpr std::chrono::sys_days beginning_of_time = std::chrono::year(-20000) / 1 / 1;
constexpr std::chrono::sys_days end_of_time = std::chrono::year(20000) / 1 / 1;

/// The day of a year on which clocks change, and when on it by the clocks of before: in the POSIX form, where
/// "M3.5.0/2" is two o'clock on the last Sunday of March, "J60" the 1st of March and "59" the 60th day.
struct RuleDay {
    enum class Kind { WeekdayOfMonth, DayWithoutLeapDay, DayFromZero };
    Kind kind = Kind::WeekdayOfMonth;
    unsigned month = 1;
    unsigned week = 1; // 5 is the last
    unsigned day = 0;  // of the week, from Sunday, or of the year
    std::chrono::seconds time{7200};

    std::chrono::local_seconds in(std::chrono::year year) const;
};

struct ZoneRule {
    /// What clocks are set to, and the day from which on.
    struct Setting {
        std::string abbreviation;
        std::chrono::seconds offset{}; // from UTC
        RuleDay since;
    };
    struct Stretch {
        std::chrono::sys_seconds begin;
        std::chrono::sys_seconds end;
        Setting const* setting;
    };

    Setting standard;
    std::optional<Setting> summer;

    /// Of "CET-1CEST,M3.5.0,M10.5.0/3"; none of what is no such text.
    static std::optional<ZoneRule> read(std::string_view text);
    Stretch stretch(std::chrono::sys_seconds time) const;
};

} // namespace qv::scale
