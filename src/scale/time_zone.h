// Time zones: what the clocks of a place show at any time, by the system's zone data.
#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace qv::scale {

/// A moment, and what a clock and a calendar show at one. Years are those of the Gregorian calendar, before
/// its beginning too; there is a year 0.
using Instant = std::chrono::sys_time<std::chrono::microseconds>;
using LocalTime = std::chrono::local_time<std::chrono::microseconds>;

/// A stretch of time during which a zone's clocks differ from UTC by the same offset.
struct ZoneStretch {
    Instant begin;
    Instant end; // the first moment after it
    std::chrono::seconds offset{};
    std::string abbreviation;
};

class TimeZone {
public:
    TimeZone() = default; ///< UTC
    /// The zone of an IANA name such as "Europe/Berlin"; "UTC", which needs no zone data; "local", the
    /// system's. An unknown name is fault 5.
    static TimeZone named(std::string_view name);

    ZoneStretch stretch(Instant time) const;
    LocalTime local(Instant time) const;
    /// The first moment at which a clock shows this time, or, where clocks skip it, a later one.
    Instant first_instant(LocalTime time) const;
    /// Whether clocks show the time of this moment twice, as when summer time ends.
    bool is_repeated(Instant time) const;

private:
    explicit TimeZone(void const* zone) : zone_(zone) {}

    void const* zone_ = nullptr; // of the date library; none for UTC
};

} // namespace qv::scale
