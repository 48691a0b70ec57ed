// Lines of JSON.
#include "table/layout.h"
#include "table/text.h"
#include "table/text_table.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <map>

namespace qv::table {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t looked_at = 1 << 16;
constexpr std::size_t most_sample_rows = 1000;
constexpr std::size_t longest_document = 1 << 30; // bytes of an array that is no line by line
constexpr int most_levels = 64;

Json parsed(std::string_view text) {
    return Json::parse(text.begin(), text.end(), nullptr, false);
}

std::string text_of(Json const& value) {
    if (value.is_null()) return {};
    return value.is_string() ? value.get<std::string>()
                             : value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

bool is_rows(Json const& document) {
    return document.is_array() && !document.empty()
           && (document.front().is_object() || document.front().is_array());
}

// {"x": [1, 2], "y": [3, 4]} as rows.
std::optional<Json> rows_of_columns(Json const& document) {
    if (!document.is_object() || document.empty()) return std::nullopt;
    std::size_t size = 0;
    for (Json const& column : document) {
        if (!column.is_array()) return std::nullopt;
        size = std::max(size, column.size());
    }
    Json rows = Json::array();
    for (std::size_t i = 0; i < size; ++i) {
        Json row = Json::object();
        for (auto const& [name, column] : document.items())
            row[name] = i < column.size() ? column[i] : Json();
        rows.push_back(std::move(row));
    }
    return rows;
}

// The whole document as lines; empty where the text is lines already.
std::string lines_of(Json const& document) {
    std::string lines;
    auto const columns = rows_of_columns(document);
    if (!columns && !document.is_array()) return {};
    for (Json const& row : columns ? *columns : document)
        lines += row.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
    return lines;
}

class OwnBytes : public ByteSource {
public:
    explicit OwnBytes(std::string text) : text_(std::move(text)), rest_(bytes_of(text_)) {}
    std::size_t read(std::span<char> target) override { return rest_->read(target); }

private:
    std::string text_;
    std::unique_ptr<ByteSource> rest_;
};

// One document over several lines becomes lines of rows.
std::unique_ptr<ByteSource> as_lines(std::unique_ptr<PeekedBytes> text, std::string const& name) {
    const std::string_view start = text->peek(looked_at);
    const std::string_view first = start.substr(0, start.find('\n'));
    Json const line = parsed(first);
    bool const is_line = !line.is_discarded() && !is_rows(line) && !rows_of_columns(line);
    if (is_line) return text;
    std::string whole;
    std::string block(looked_at, '\0');
    while (const std::size_t count = text->read(block)) {
        whole.append(block, 0, count);
        if (whole.size() > longest_document)
            throw TableError(name + ": is one JSON document of more than 1 GB; write one object a line");
    }
    Json const document = parsed(whole);
    // Lines of which the first is damaged are told of by their line.
    if (document.is_discarded()) return std::make_unique<OwnBytes>(std::move(whole));
    std::string lines = lines_of(document);
    if (lines.empty())
        throw TableError(
            name + ": is a JSON document without rows; an array of objects, or an object a line is expected");
    return std::make_unique<OwnBytes>(std::move(lines));
}

class JsonTable : public TextTable {
public:
    JsonTable(std::unique_ptr<ByteSource> lines, std::string const& name, ReadOptions const& options)
        : TextTable(std::move(lines), name, options) {
        dialect_.comment.clear();
        look();
    }

private:
    void look() {
        bool const more = options_.early ? read_line() : read_ahead(looked_at);
        std::vector<Cells> rows;
        std::string_view text = waiting();
        while (!text.empty() && rows.size() < most_sample_rows) {
            const std::size_t end = text.find('\n');
            if (end == std::string_view::npos && more) break;
            if (is_row(text.substr(0, end), true)) rows.push_back(std::move(cells_));
            ++line_;
            text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        }
        line_ = 1;
        if (rows.empty()) throw TableError(name_ + ": holds no row of JSON; an object a line is expected");
        for (std::size_t i = 0; i < found_.size(); ++i) {
            std::vector<std::string_view> column;
            column.reserve(rows.size());
            for (Cells const& row : rows) column.push_back(row[i]);
            find_kind(found_[i], column, dialect_, options_);
        }
        join_times(found_);
        name_columns();
        description_ = "JSON, a row a line";
    }

    bool read_line() {
        while (waiting().find('\n') == std::string_view::npos)
            if (!read_ahead(waiting().size() + 1)) return false;
        return true;
    }

    // Takes a line apart into cells; new keys are columns while the file is looked at.
    bool is_row(std::string_view line, bool looking) {
        cells_.clear();
        if (trimmed(line).empty()) return false;
        Json const row = parsed(line);
        if (row.is_discarded()) fail("is no line of JSON; an object a line is expected");
        texts_.assign(found_.size(), {});
        add(row, "", looking, 0);
        for (std::string& text : texts_) cells_.add_own(std::move(text));
        return true;
    }

    // Objects within objects have the names of all of them: "wind.speed".
    void add(Json const& value, std::string const& name, bool looking, int level) {
        bool const is_object = value.is_object();
        if ((is_object || value.is_array()) && level < most_levels) {
            std::size_t number = 0;
            for (auto const& [key, part] : value.items()) {
                std::string path = name;
                if (!path.empty()) path += '.';
                path += is_object ? key : std::to_string(++number);
                add(part, path, looking, level + 1);
            }
            return;
        }
        auto const [place, is_new] = places_.try_emplace(name, found_.size());
        if (is_new && !looking) {
            places_.erase(place);
            ++left_out_.unknown_keys;
            return;
        }
        if (is_new) {
            if (found_.size() == most_columns)
                fail("has more than " + std::to_string(most_columns) + " columns");
            found_.push_back({.title = name.empty() ? "value" : name});
            texts_.emplace_back();
        }
        texts_[place->second] = text_of(value);
    }

    std::size_t take_rows(std::string_view text, bool at_end) override {
        std::string_view rest = text;
        while (!rest.empty()) {
            const std::size_t end = rest.find('\n');
            if (end == std::string_view::npos && !at_end) break;
            if (is_row(rest.substr(0, end), false)) add_row(cells_, 0);
            ++line_;
            rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
        }
        return text.size() - rest.size();
    }

    std::map<std::string, std::size_t> places_;
    std::vector<std::string> texts_;
    Cells cells_;
};

} // namespace

std::unique_ptr<Table> open_json(std::unique_ptr<PeekedBytes> text, std::string const& name,
                                 ReadOptions const& options) {
    auto lines =
        options.early ? std::unique_ptr<ByteSource>(std::move(text)) : as_lines(std::move(text), name);
    return std::make_unique<JsonTable>(std::move(lines), name, options);
}

} // namespace qv::table
