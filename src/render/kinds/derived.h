// What is worked out of a data set's points and settings, kept in `DataSet::derived` until either are others.
#pragma once

#include "document/records.h"

#include <cstddef>
#include <memory>
#include <utility>

namespace qv::render {

template <class Result, class Settings>
struct Derived : document::DerivedData {
    std::size_t size = 0; // of the points it was worked out of
    std::size_t dropped = 0;
    Settings settings;
    Result result;
};

/// The result that is kept, or else what `make(settings)` returns now. It stays until the points change.
template <class Result, class Settings, class Make>
Result const& derived_of(document::DataSet const& set, Settings settings, Make make) {
    using Kept = Derived<Result, Settings>;
    auto const* const kept = dynamic_cast<Kept const*>(set.derived.get());
    if (kept && kept->size == set.points.size() && kept->dropped == set.points.dropped()
        && kept->settings == settings)
        return kept->result;
    set.derived.reset(); // both at once would take twice the memory
    auto made = std::make_unique<Kept>();
    made->size = set.points.size();
    made->dropped = set.points.dropped();
    made->result = make(settings);
    made->settings = std::move(settings);
    Result const& result = made->result;
    set.derived = std::move(made);
    return result;
}

} // namespace qv::render
