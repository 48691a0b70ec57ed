#include "table/cells.h"

#include "table/text.h"

#include <algorithm>

namespace qv::table {
namespace {

bool is_blank(char c) {
    return c == ' ' || c == '\t';
}

// Goes through one row, cell by cell.
class RowScanner {
public:
    RowScanner(std::string_view text, bool at_end, char separator, Cells& cells)
        : text_(text), at_end_(at_end), separator_(separator), cells_(cells) {}

    TakenRow take() {
        if (separator_ == ' ') skip_blanks();
        while (true) {
            const RowKind kind = take_cell();
            if (kind != RowKind::Row) return {kind};
            if (at_line_end()) return {RowKind::Row, position_, lines_};
        }
    }

private:
    bool ended() const { return position_ == text_.size(); }
    char next() const { return text_[position_]; }
    bool separates(char c) const { return separator_ == ' ' ? is_blank(c) : c == separator_ && separator_; }
    void skip_blanks() {
        while (!ended() && is_blank(next()) && !(separator_ == '\t' && next() == '\t')) ++position_;
    }

    // Behind a cell: at the row's end, which is passed, or before the next cell.
    bool at_line_end() {
        if (separator_ == ' ') skip_blanks();
        if (ended()) return true;
        if (next() == '\r' && position_ + 1 < text_.size() && text_[position_ + 1] == '\n') ++position_;
        if (next() == '\n') {
            ++position_;
            ++lines_;
            return true;
        }
        if (separator_ != ' ') ++position_;
        return false;
    }

    RowKind take_cell() {
        const std::size_t begin = position_;
        skip_blanks();
        if (!ended() && next() == '"') return take_quoted();
        position_ = begin;
        return take_plain();
    }

    RowKind take_plain() {
        const std::size_t begin = position_;
        while (!ended() && next() != '\n' && !separates(next())) ++position_;
        if (ended() && !at_end_) return RowKind::Incomplete;
        cells_.add(trimmed(text_.substr(begin, position_ - begin)));
        return RowKind::Row;
    }

    // What stands behind the closing quote belongs to the cell too, as others have it.
    RowKind take_quoted() {
        const std::size_t begin = ++position_;
        std::string own;
        bool is_own = false;
        std::size_t part = begin;
        while (true) {
            const std::size_t quote = text_.find('"', position_);
            if (quote == std::string_view::npos) return RowKind::OpenQuote;
            lines_ += static_cast<std::size_t>(
                std::ranges::count(text_.substr(position_, quote - position_), '\n'));
            position_ = quote + 1;
            if (ended() && !at_end_) return RowKind::Incomplete;
            if (ended() || next() != '"') break;
            own += text_.substr(part, position_ - part);
            is_own = true;
            part = ++position_;
        }
        const std::string_view last = text_.substr(part, position_ - 1 - part);
        const std::size_t behind = position_;
        while (!ended() && next() != '\n' && !separates(next())) ++position_;
        if (ended() && !at_end_) return RowKind::Incomplete;
        const std::string_view rest = trimmed(text_.substr(behind, position_ - behind));
        if (is_own || !rest.empty())
            cells_.add_own(own + std::string(last) + std::string(rest));
        else
            cells_.add(last);
        return RowKind::Row;
    }

    std::string_view text_;
    bool at_end_;
    char separator_;
    Cells& cells_;
    std::size_t position_ = 0;
    std::size_t lines_ = 0;
};

} // namespace

TakenRow take_row(std::string_view text, bool at_end, Dialect const& dialect, Cells& cells) {
    cells.clear();
    const std::size_t line_end = text.find('\n');
    if (line_end == std::string_view::npos && !at_end) return {RowKind::Incomplete};
    const std::string_view line = trimmed(text.substr(0, line_end));
    bool const is_comment = !dialect.comment.empty() && line.starts_with(dialect.comment);
    if (line.empty() || is_comment)
        return line_end == std::string_view::npos ? TakenRow{RowKind::Nothing, text.size(), 0}
                                                  : TakenRow{RowKind::Nothing, line_end + 1, 1};
    TakenRow taken = RowScanner(text, at_end, dialect.separator, cells).take();
    if (taken.kind == RowKind::OpenQuote && !at_end) taken.kind = RowKind::Incomplete;
    return taken;
}

} // namespace qv::table
