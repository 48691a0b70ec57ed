// Named values and the ordered table that holds them.
#pragma once

#include "base/variant.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace qv {

/// A named value. Compiled programs hold the object itself, so a value set later reaches them.
struct qvVariable {
    std::string Name;
    Variant Value;
};

} // namespace qv

namespace qv::expression {

enum class NameMatch { AnyCase, SameCase };

/// Variables in order of creation, at positions 1 to `size()`; names compare without regard to case unless
/// asked otherwise. A variable is found under the name it had when it was appended.
class VariableTable {
public:
    using Entry = std::shared_ptr<qvVariable>;

    std::int32_t size() const { return static_cast<std::int32_t>(variables_.size()); }
    /// The variable at this position; a position outside 1..size() is fault 9.
    Entry const& item(std::int32_t position) const;
    /// Position of the first variable of this name, 0 when there is none.
    std::int32_t position_of(std::string_view name, NameMatch match = NameMatch::AnyCase) const;
    /// The variable of this name or none.
    Entry find(std::string_view name, NameMatch match = NameMatch::AnyCase) const;
    void append(Entry variable);
    void remove(std::int32_t position);
    void clear();

private:
    std::int32_t indexed_position(std::string_view name, NameMatch match) const;
    void add_to_index(std::size_t place);

    std::vector<Entry> variables_;
    // Upper-case names of the variables that the plain search does not reach.
    std::unordered_multimap<std::string, std::size_t> index_;
};

} // namespace qv::expression
