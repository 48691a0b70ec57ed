// Named values and the ordered table that holds them.
#pragma once

#include "qvgraph/export.h"
#include "qvgraph/variant.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace qv {

/// A named value. Compiled programs hold the object itself, so a value set later reaches them.
struct qvVariable {
    std::string Name; ///< as it was first written
    Variant Value;    ///< a number, as a rule a double
};

} // namespace qv

namespace qv::expression {

enum class NameMatch { AnyCase, SameCase };

/// Written out because a call to compare memory would cost more than the few letters of a name.
inline bool is_same_name(std::string_view a, std::string_view b, NameMatch match) {
    constexpr auto upper = [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; };
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (a[i] != b[i] && (match == NameMatch::SameCase || upper(a[i]) != upper(b[i]))) return false;
    return true;
}

/// Variables in order of creation, at positions 1 to `size()`; names compare without regard to case unless
/// asked otherwise. A variable is found under the name it had when it was appended.
class QV_EXPORT VariableTable {
public:
    using Entry = std::shared_ptr<qvVariable>; ///< shared with the compiled programs that use it

    /// How many variables there are.
    std::int32_t size() const { return static_cast<std::int32_t>(variables_.size()); }
    /// The variable at this position; a position outside 1..size() is fault 9.
    Entry const& item(std::int32_t position) const;
    /// Position of the first variable of this name, 0 when there is none.
    std::int32_t position_of(std::string_view name, NameMatch match = NameMatch::AnyCase) const;
    /// The variable of this name or none.
    Entry find(std::string_view name, NameMatch match = NameMatch::AnyCase) const;
    /// The first variable, if it has just this name.
    qvVariable* first_if_named(std::string_view name) const {
        bool const is_it = !variables_.empty() && variables_.front()->Name == name;
        return is_it ? variables_.front().get() : nullptr;
    }
    /// The same as `find` without a share in its ownership: what setting a variable for every sample of a
    /// curve needs.
    qvVariable* known(std::string_view name, NameMatch match) const {
        for (Entry const& entry : std::span(variables_).first(plain_search_reach()))
            if (is_same_name(entry->Name, name, match)) return entry.get();
        return index_.empty() ? nullptr : find(name, match).get();
    }
    void append(Entry variable); ///< at the next position
    /// About the memory of all variables.
    std::size_t bytes() const { return bytes_; }
    /// About the memory of a variable of this name.
    static std::size_t bytes_of(std::string_view name) { return 192 + 2 * name.size(); }
    void remove(std::int32_t position); ///< 1 to size(), else fault 9; later ones move up
    void clear();                       ///< removes all

private:
    // So few names are compared faster than one is hashed; formulas have two or three.
    static constexpr std::size_t plain_search_length = 12;

    std::size_t plain_search_reach() const {
        return variables_.size() < plain_search_length ? variables_.size() : plain_search_length;
    }
    std::int32_t indexed_position(std::string_view name, NameMatch match) const;
    void add_to_index(std::size_t place);

    std::vector<Entry> variables_;
    std::size_t bytes_ = 0;
    // Upper-case names of the variables that the plain search does not reach.
    std::unordered_multimap<std::string, std::size_t> index_;
};

} // namespace qv::expression
