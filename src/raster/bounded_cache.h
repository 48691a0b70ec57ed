// BoundedCache: keeps what was used lately within a bound, in two generations.
#pragma once

#include <cstddef>
#include <unordered_map>
#include <utility>

namespace qv::raster {

/// Values by key. When the young generation's weights exceed half the bound it becomes the old one, and what
/// was old and not used since is dropped.
template <class Key, class Value, class Hash = std::hash<Key>>
class BoundedCache {
public:
    explicit BoundedCache(std::size_t bound) : half_(bound / 2) {}

    /// The value, or null. It stays in place until the next `add`.
    Value* find(Key const& key) {
        if (auto const found = young_.find(key); found != young_.end()) return &found->second.value;
        auto const found = old_.find(key);
        if (found == old_.end()) return nullptr;
        young_weight_ += found->second.weight;
        return &young_.insert(old_.extract(found)).position->second.value;
    }

    Value& add(Key key, Value value, std::size_t weight) {
        if (young_weight_ > half_) {
            old_ = std::exchange(young_, {});
            young_weight_ = 0;
        }
        young_weight_ += weight;
        return young_.insert_or_assign(std::move(key), Entry{std::move(value), weight}).first->second.value;
    }

private:
    struct Entry {
        Value value;
        std::size_t weight;
    };
    std::size_t half_;
    std::size_t young_weight_ = 0;
    std::unordered_map<Key, Entry, Hash> young_;
    std::unordered_map<Key, Entry, Hash> old_;
};

/// For hashing several values into one.
template <class... Values>
std::size_t combined_hash(Values const&... values) {
    std::size_t hash = 0;
    ((hash = hash * 0x9E3779B97F4A7C15ULL + std::hash<Values>{}(values) + (hash >> 29)), ...);
    return hash;
}

} // namespace qv::raster
