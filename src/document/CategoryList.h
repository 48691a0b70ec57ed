// The categories of an axis: texts or moments, each known by its number.
#pragma once

#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace qv::document {

/// Texts in order of arrival or as the host gave them, or moments (seconds since 1970), from 0 on. Giving the
/// other kind replaces what there was.
class CategoryList {
public:
    CategoryList() = default;
    /// Texts separated by ",". "\," is a comma within one, "\\" a backslash before a comma or an end.
    explicit CategoryList(std::string_view joined);
    explicit CategoryList(std::vector<std::string> texts);
    explicit CategoryList(std::span<double const> times);
    /// The texts in that form; empty where there are none, or moments.
    explicit operator std::string() const;

    std::size_t size() const { return texts_.size() + times_.size(); }
    bool empty() const { return size() == 0; }
    bool are_times() const { return !times_.empty(); }
    std::vector<std::string> const& texts() const { return texts_; }
    std::span<double const> times() const { return times_; }
    /// No moment is before the one that came earlier.
    bool times_rise() const { return times_rise_; }

    /// The number of a category, which is added where it is not there yet.
    std::size_t number_of(std::string_view text);
    std::size_t number_of(double time);

private:
    void add_text(std::string text);
    std::size_t add_time(double time);

    std::vector<std::string> texts_;
    std::map<std::string, std::size_t, std::less<>> numbers_;
    std::vector<double> times_;
    std::unordered_map<double, std::size_t> times_out_of_order_; // all, once they do not rise
    bool times_rise_ = true;
};

} // namespace qv::document
