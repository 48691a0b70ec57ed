#include "document/CategoryList.h"

#include <algorithm>
#include <utility>

namespace qv::document {
namespace {

bool is_escaped(char c) {
    return c == ',' || c == '\\';
}

std::vector<std::string> separated(std::string_view joined) {
    if (joined.empty()) return {};
    std::vector<std::string> texts(1);
    for (std::size_t i = 0; i < joined.size(); ++i) {
        if (joined[i] == ',')
            texts.emplace_back();
        else if (joined[i] == '\\' && i + 1 < joined.size() && is_escaped(joined[i + 1]))
            texts.back() += joined[++i];
        else
            texts.back() += joined[i];
    }
    return texts;
}

// Only where it would be read as something else, so that what a host has given comes back as it was.
std::string escaped(std::string const& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        bool const ends_run = i + 1 == text.size() || is_escaped(text[i + 1]);
        if (text[i] == ',' || (text[i] == '\\' && ends_run)) result += '\\';
        result += text[i];
    }
    return result;
}

} // namespace

CategoryList::CategoryList(std::string_view joined) : CategoryList(separated(joined)) {}

CategoryList::CategoryList(std::vector<std::string> texts) {
    for (std::string& text : texts) add_text(std::move(text));
}

CategoryList::CategoryList(std::span<double const> times) {
    for (double const time : times) add_time(time);
}

CategoryList::operator std::string() const {
    std::string joined;
    for (std::string const& text : texts_) joined += (&text == texts_.data() ? "" : ",") + escaped(text);
    return joined;
}

void CategoryList::add_text(std::string text) {
    numbers_.emplace(text, texts_.size()); // of equal ones the first is found
    texts_.push_back(std::move(text));
}

std::size_t CategoryList::number_of(std::string_view text) {
    if (auto const found = numbers_.find(text); found != numbers_.end()) return found->second;
    if (are_times()) *this = {};
    add_text(std::string(text));
    return texts_.size() - 1;
}

std::size_t CategoryList::add_time(double time) {
    bool const rises = times_.empty() || times_.back() <= time;
    if (times_rise_ && !rises) {
        for (std::size_t i = 0; i < times_.size(); ++i) times_out_of_order_.emplace(times_[i], i);
        times_rise_ = false;
    }
    if (!times_rise_) times_out_of_order_.emplace(time, times_.size());
    times_.push_back(time);
    return times_.size() - 1;
}

std::size_t CategoryList::number_of(double time) {
    if (!texts_.empty()) *this = {};
    if (!times_rise_) {
        auto const found = times_out_of_order_.find(time);
        return found != times_out_of_order_.end() ? found->second : add_time(time);
    }
    if (times_.empty() || times_.back() < time) return add_time(time);
    auto const found = std::ranges::lower_bound(times_, time);
    return found != times_.end() && *found == time ? static_cast<std::size_t>(found - times_.begin())
                                                   : add_time(time);
}

} // namespace qv::document
