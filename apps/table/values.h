// Values: a column of numbers that grows cheaply, is shared without copying, and can be given up piece by
// piece while it is handed on.
#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <span>
#include <vector>

namespace qv::table {

/// Copies share the numbers until one of them is changed. Numbers lie in blocks, so that a long column is
/// never moved as it grows.
class Values {
public:
    static constexpr std::size_t block_size = 8192;

    Values() = default;
    Values(std::initializer_list<double> values) {
        for (double const value : values) push_back(value);
    }

    std::size_t size() const { return data_ ? data_->size : 0; }
    bool empty() const { return size() == 0; }
    double operator[](std::size_t i) const { return data_->blocks[i / block_size][i % block_size]; }
    double back() const { return (*this)[size() - 1]; }

    void push_back(double value) {
        if (!data_ || data_.use_count() > 1) own();
        if (data_->size % block_size == 0) data_->start_block();
        data_->blocks.back().push_back(value);
        ++data_->size;
    }
    void append(std::span<double const> values) {
        if (!data_ || data_.use_count() > 1) own();
        while (!values.empty()) {
            const std::size_t place = data_->size % block_size;
            if (place == 0) data_->start_block();
            auto const part = values.first(std::min(values.size(), block_size - place));
            std::vector<double>& block = data_->blocks.back();
            block.insert(block.end(), part.begin(), part.end());
            data_->size += part.size();
            values = values.subspan(part.size());
        }
    }
    void set(std::size_t i, double value) {
        if (data_.use_count() > 1) own();
        data_->blocks[i / block_size][i % block_size] = value;
    }
    void clear() { data_.reset(); }

    /// Whether both are the same numbers, not only equal ones.
    bool is_shared_with(Values const& other) const { return data_ == other.data_; }

    std::size_t blocks() const { return (size() + block_size - 1) / block_size; }
    std::span<double const> block(std::size_t number) const { return data_->blocks[number]; }
    /// Frees a block, for all that share it; nobody may read it afterwards.
    void give_up(std::size_t number) { std::vector<double>().swap(data_->blocks[number]); }

    class Iterator {
    public:
        using value_type = double;
        using difference_type = std::ptrdiff_t;
        using iterator_category = std::forward_iterator_tag;
        using pointer = double const*;
        using reference = double;
        Iterator() = default;
        Iterator(Values const& values, std::size_t place) : values_(&values), place_(place) {}
        double operator*() const { return (*values_)[place_]; }
        Iterator& operator++() {
            ++place_;
            return *this;
        }
        Iterator operator++(int) {
            Iterator before = *this;
            ++place_;
            return before;
        }
        bool operator==(Iterator const& other) const { return place_ == other.place_; }

    private:
        Values const* values_ = nullptr;
        std::size_t place_ = 0;
    };
    Iterator begin() const { return {*this, 0}; }
    Iterator end() const { return {*this, size()}; }
    bool operator==(Values const& other) const {
        return size() == other.size() && std::equal(begin(), end(), other.begin());
    }

private:
    struct Data {
        std::vector<std::vector<double>> blocks;
        std::size_t size = 0;
        // The first grows, because most columns are short.
        void start_block() {
            blocks.emplace_back();
            if (blocks.size() > 1) blocks.back().reserve(block_size);
        }
    };
    void own() { data_ = data_ ? std::make_shared<Data>(*data_) : std::make_shared<Data>(); }
    std::shared_ptr<Data> data_;
};

} // namespace qv::table
