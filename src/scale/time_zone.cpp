#include "scale/time_zone.h"

#include "qvgraph/fault.h"
#include "scale/zone_rule.h"

#include <cstdlib>
#include <date/tz.h>
#include <fstream>
#include <map>
#include <mutex>
#include <optional>
#include <sstream>

namespace qv::scale {
namespace {

using std::chrono::hours;
using std::chrono::microseconds;
using std::chrono::seconds;

constexpr hours largest_offset{26}; // of any clock from UTC

[[noreturn]] void raise_unknown_zone(std::string_view name) {
    std::string text = "There is no time zone \"" + std::string(name)
                       + "\"; give a name of the system's zone data such as Europe/Berlin, UTC or local";
    raise_fault(FaultNumber::InvalidProcedureCall, std::move(text));
}

date::time_zone const* find_zone(std::string_view name) {
    try {
        return date::locate_zone(name);
    } catch (std::bad_alloc const&) {
        throw;
    } catch (std::exception const&) { // unknown, or the system has no zone data
        return nullptr;
    }
}

// The zone that TZ names, else the one the system is set to; none is UTC.
date::time_zone const* system_zone() {
    if (char const* const chosen = std::getenv("TZ")) {
        std::string_view name(chosen);
        if (name.starts_with(':')) name.remove_prefix(1);
        if (auto const* const zone = find_zone(name)) return zone;
    }
    try {
        return date::current_zone();
    } catch (std::bad_alloc const&) {
        throw;
    } catch (std::exception const&) {
        return nullptr;
    }
}

// The last line of a zone's file holds the rule for all times after its last change. The library passes it
// over.
std::optional<ZoneRule> rule_in_file(std::string const& name) {
    std::ifstream file("/usr/share/zoneinfo/" + name, std::ios::binary);
    std::stringstream stream;
    stream << file.rdbuf();
    std::string text = stream.str();
    if (!text.ends_with('\n')) return std::nullopt;
    text.pop_back();
    auto const line = text.rfind('\n');
    if (line == std::string::npos || line + 1 == text.size()) return std::nullopt;
    return ZoneRule::read(std::string_view(text).substr(line + 1));
}

ZoneRule const* rule_of(date::time_zone const& zone) {
    static std::mutex mutex;
    static std::map<date::time_zone const*, std::optional<ZoneRule>> rules;
    const std::lock_guard lock(mutex);
    auto found = rules.find(&zone);
    if (found == rules.end()) found = rules.emplace(&zone, rule_in_file(zone.name())).first;
    return found->second ? &*found->second : nullptr;
}

ZoneStretch as_stretch(date::sys_info const& info) {
    return {info.begin, info.end, info.offset, info.abbrev};
}

} // namespace

TimeZone TimeZone::named(std::string_view name) {
    if (name == "UTC") return TimeZone(nullptr);
    if (name == "local") return TimeZone(system_zone());
    auto const* const zone = find_zone(name);
    if (zone == nullptr) raise_unknown_zone(name);
    return TimeZone(zone);
}

ZoneStretch TimeZone::stretch(Instant time) const {
    if (zone_ == nullptr) return {beginning_of_time, end_of_time, seconds{0}, "UTC"};
    auto const& zone = *static_cast<date::time_zone const*>(zone_);
    auto const second = std::chrono::floor<seconds>(time);
    ZoneStretch known = as_stretch(zone.get_info(second));
    constexpr date::sys_days after_all_files = date::year(9999) / 12 / 31;
    if (known.end <= after_all_files) return known;
    ZoneRule const* const rule = rule_of(zone);
    if (rule == nullptr) return known;
    auto const [begin, end, setting] = rule->stretch(second);
    return {std::max<Instant>(begin, known.begin), end, setting->offset, setting->abbreviation};
}

LocalTime TimeZone::local(Instant time) const {
    return LocalTime(time.time_since_epoch() + stretch(time).offset);
}

Instant TimeZone::first_instant(LocalTime time) const {
    const Instant as_utc(time.time_since_epoch());
    for (ZoneStretch now = stretch(as_utc - largest_offset);; now = stretch(now.end)) {
        const Instant found = std::max(as_utc - now.offset, now.begin);
        if (found < now.end) return found;
    }
}

bool TimeZone::is_repeated(Instant time) const {
    const ZoneStretch now = stretch(time);
    auto const shows_it_too = [&](Instant other) {
        const ZoneStretch beside = stretch(other);
        const Instant twin = time + now.offset - beside.offset;
        return twin >= beside.begin && twin < beside.end;
    };
    return (time - now.begin < largest_offset && shows_it_too(now.begin - microseconds{1}))
           || (now.end - time < largest_offset && shows_it_too(now.end));
}

} // namespace qv::scale
