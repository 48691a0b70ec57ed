// StableList: a growing list whose elements never move in memory, so that references to them stay valid while
// a host adds more from inside an event. Finding an element by index is two loads.
#pragma once

#include <cstddef>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

namespace qv::document {

template <class T>
class StableList {
    using Slots = std::vector<std::unique_ptr<T>>;

    template <class Element>
    class Iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = T;
        using difference_type = std::ptrdiff_t;
        using pointer = Element*;
        using reference = Element&;

        Iterator() = default;
        explicit Iterator(typename Slots::const_iterator slot) : slot_(slot) {}
        Element& operator*() const { return **slot_; }
        Element* operator->() const { return slot_->get(); }
        Iterator& operator++() {
            ++slot_;
            return *this;
        }
        Iterator operator++(int) { return Iterator(slot_++); }
        bool operator==(Iterator const&) const = default;

    private:
        typename Slots::const_iterator slot_;
    };

public:
    std::size_t size() const { return slots_.size(); }
    bool empty() const { return slots_.empty(); }
    T& operator[](std::size_t index) { return *slots_[index]; }
    T const& operator[](std::size_t index) const { return *slots_[index]; }
    T& front() { return *slots_.front(); }
    T& back() { return *slots_.back(); }
    T const& back() const { return *slots_.back(); }
    auto begin() { return Iterator<T>(slots_.begin()); }
    auto end() { return Iterator<T>(slots_.end()); }
    auto begin() const { return Iterator<T const>(slots_.begin()); }
    auto end() const { return Iterator<T const>(slots_.end()); }

    template <class... Arguments>
    T& emplace_back(Arguments&&... arguments) {
        return *slots_.emplace_back(std::make_unique<T>(std::forward<Arguments>(arguments)...));
    }
    void push_back(T element) { emplace_back(std::move(element)); }
    void pop_front() { slots_.erase(slots_.begin()); }
    void pop_back() { slots_.pop_back(); }
    void clear() { slots_.clear(); }

private:
    Slots slots_;
};

} // namespace qv::document
