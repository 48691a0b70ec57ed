#include "qvgraph/variables.h"

#include "base/convert.h"
#include "base/text.h"

#include <algorithm>

namespace qv::expression {

VariableTable::Entry const& VariableTable::item(std::int32_t position) const {
    if (position < 1 || position > size()) raise_subscript_fault("variable", position, 1, size());
    return variables_[static_cast<std::size_t>(position - 1)];
}

std::int32_t VariableTable::position_of(std::string_view name, NameMatch match) const {
    for (std::size_t place = 0; place < plain_search_reach(); ++place)
        if (is_same_name(variables_[place]->Name, name, match)) return static_cast<std::int32_t>(place + 1);
    return index_.empty() ? 0 : indexed_position(name, match);
}

std::int32_t VariableTable::indexed_position(std::string_view name, NameMatch match) const {
    auto const [first, last] = index_.equal_range(to_upper(name));
    std::size_t position = 0;
    for (auto entry = first; entry != last; ++entry) {
        if (match == NameMatch::SameCase && variables_[entry->second]->Name != name) continue;
        if (position == 0 || entry->second + 1 < position) position = entry->second + 1;
    }
    return static_cast<std::int32_t>(position);
}

VariableTable::Entry VariableTable::find(std::string_view name, NameMatch match) const {
    const std::int32_t position = position_of(name, match);
    return position > 0 ? item(position) : nullptr;
}

void VariableTable::append(Entry variable) {
    variables_.push_back(std::move(variable));
    bytes_ += bytes_of(variables_.back()->Name);
    add_to_index(variables_.size() - 1);
}

void VariableTable::add_to_index(std::size_t place) {
    if (place >= plain_search_length) index_.emplace(to_upper(variables_[place]->Name), place);
}

void VariableTable::remove(std::int32_t position) {
    item(position);
    variables_.erase(variables_.begin() + (position - 1));
    index_.clear();
    bytes_ = 0;
    for (std::size_t place = 0; place < variables_.size(); ++place) {
        bytes_ += bytes_of(variables_[place]->Name);
        add_to_index(place);
    }
}

void VariableTable::clear() {
    variables_.clear();
    index_.clear();
    bytes_ = 0;
}

} // namespace qv::expression
