#include "table/encoding.h"

#include "table/text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

namespace qv::table {
namespace {

constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";
constexpr std::size_t looked_at = 4096; // bytes, for line ends

struct EncodingName {
    std::string_view name;
    Encoding encoding;
};
constexpr std::array names{EncodingName{"utf-8", Encoding::Utf8},
                           EncodingName{"latin-1", Encoding::Latin1},
                           EncodingName{"utf-16le", Encoding::Utf16Little},
                           EncodingName{"utf-16be", Encoding::Utf16Big},
                           EncodingName{"utf8", Encoding::Utf8},
                           EncodingName{"latin1", Encoding::Latin1},
                           EncodingName{"iso-8859-1", Encoding::Latin1},
                           EncodingName{"windows-1252", Encoding::Latin1},
                           EncodingName{"cp1252", Encoding::Latin1},
                           EncodingName{"utf-16", Encoding::Utf16Little},
                           EncodingName{"utf16", Encoding::Utf16Little},
                           EncodingName{"ascii", Encoding::Utf8}};

// Bytes 80 to 9F, where Windows has letters and Latin-1 has nothing that is shown.
constexpr std::array<std::uint16_t, 32> windows_letters{
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};

void append_utf8(std::string& text, std::uint32_t letter) {
    auto const put = [&](std::uint32_t bits) { text += static_cast<char>(bits); };
    if (letter < 0x80) return put(letter);
    if (letter < 0x800) {
        put(0xC0 | letter >> 6);
    } else if (letter < 0x10000) {
        put(0xE0 | letter >> 12);
        put(0x80 | (letter >> 6 & 0x3F));
    } else {
        put(0xF0 | letter >> 18);
        put(0x80 | (letter >> 12 & 0x3F));
        put(0x80 | (letter >> 6 & 0x3F));
    }
    put(0x80 | (letter & 0x3F));
}

// Length of the letter of UTF-8 at the front of the text: 0 where there is none, more than the text has
// where it may be cut.
std::size_t letter_length(std::string_view text) {
    auto const at = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    unsigned char const first = at(0);
    if (first < 0x80) return 1;
    const std::size_t length = first >= 0xC2 && first < 0xE0   ? 2
                               : first >= 0xE0 && first < 0xF0 ? 3
                               : first >= 0xF0 && first < 0xF5 ? 4
                                                               : 0;
    for (std::size_t i = 1; i < std::min(length, text.size()); ++i)
        if ((at(i) & 0xC0) != 0x80) return 0;
    if (length > 2 && text.size() > 1) {
        bool const overlong = (first == 0xE0 && at(1) < 0xA0) || (first == 0xF0 && at(1) < 0x90);
        bool const no_letter = (first == 0xED && at(1) > 0x9F) || (first == 0xF4 && at(1) > 0x8F);
        if (overlong || no_letter) return 0;
    }
    return length;
}

enum class Utf8 { Whole, Cut, No };

Utf8 check_utf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = letter_length(text);
        if (length == 0) return Utf8::No;
        if (length > text.size()) return Utf8::Cut;
        text.remove_prefix(length);
    }
    return Utf8::Whole;
}

// A source that changes what another one gives, block by block.
class ChangedBytes : public ByteSource {
public:
    explicit ChangedBytes(std::unique_ptr<ByteSource> source) : source_(std::move(source)), block_(1 << 16) {}
    std::size_t read(std::span<char> target) override {
        while (position_ == text_.size()) {
            const std::size_t count = source_->read(std::span(block_).subspan(kept_));
            if (count == 0) return 0;
            text_.clear();
            position_ = 0;
            const std::string_view bytes(block_.data(), kept_ + count);
            kept_ = bytes.size() - change(bytes, text_);
            std::memmove(block_.data(), bytes.data() + bytes.size() - kept_, kept_);
        }
        const std::size_t count = std::min(target.size(), text_.size() - position_);
        std::memcpy(target.data(), text_.data() + position_, count);
        position_ += count;
        return count;
    }
    double progress() const override { return source_->progress(); }
    bool begun_anew() override { return source_->begun_anew(); }

private:
    /// Appends what becomes of the bytes and returns how many are used up; at most a few may be left.
    virtual std::size_t change(std::string_view bytes, std::string& text) = 0;

    std::unique_ptr<ByteSource> source_;
    std::vector<char> block_;
    std::size_t kept_ = 0; // bytes at the front of the block that wait for others
    std::string text_;
    std::size_t position_ = 0;
};

class Utf16Bytes : public ChangedBytes {
public:
    Utf16Bytes(std::unique_ptr<ByteSource> source, bool big) : ChangedBytes(std::move(source)), big_(big) {}

private:
    std::uint32_t unit(std::string_view bytes, std::size_t i) const {
        auto const byte = [&](std::size_t k) {
            return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[k]));
        };
        return big_ ? byte(i) << 8 | byte(i + 1) : byte(i + 1) << 8 | byte(i);
    }
    std::size_t change(std::string_view bytes, std::string& text) override {
        std::size_t i = 0;
        while (i + 1 < bytes.size()) {
            std::uint32_t letter = unit(bytes, i);
            if (letter >= 0xD800 && letter < 0xDC00) { // the first half of a pair
                if (i + 3 >= bytes.size()) break;
                std::uint32_t const second = unit(bytes, i + 2);
                bool const is_pair = second >= 0xDC00 && second < 0xE000;
                letter = is_pair ? 0x10000 + ((letter - 0xD800) << 10 | (second - 0xDC00)) : 0xFFFD;
                if (is_pair) i += 2;
            } else if (letter >= 0xDC00 && letter < 0xE000) {
                letter = 0xFFFD;
            }
            if (letter != 0xFEFF) append_utf8(text, letter);
            i += 2;
        }
        return i;
    }
    bool big_;
};

class Latin1Bytes : public ChangedBytes {
    using ChangedBytes::ChangedBytes;
    std::size_t change(std::string_view bytes, std::string& text) override {
        text += utf8_of_latin1(bytes);
        return bytes.size();
    }
};

// Lines that end with carriage returns alone.
class ReturnsAsLineEnds : public ChangedBytes {
    using ChangedBytes::ChangedBytes;
    std::size_t change(std::string_view bytes, std::string& text) override {
        text = bytes;
        std::ranges::replace(text, '\r', '\n');
        return bytes.size();
    }
};

std::unique_ptr<ByteSource> with_line_feeds(std::unique_ptr<PeekedBytes> source) {
    const std::string_view start = source->peek(looked_at);
    bool const returns_alone = start.find('\r') != std::string_view::npos
                               && start.find('\n') == std::string_view::npos && start.size() > 1
                               && start.find('\r') + 1 < start.size();
    if (!returns_alone) return source;
    return std::make_unique<ReturnsAsLineEnds>(std::move(source));
}

} // namespace

std::optional<Encoding> encoding_named(std::string_view name) {
    auto const found =
        std::ranges::find_if(names, [&](auto const& row) { return equal_letters(row.name, name); });
    return found == names.end() ? std::nullopt : std::optional(found->encoding);
}

std::string_view name_of(Encoding encoding) {
    return std::ranges::find(names, encoding, &EncodingName::encoding)->name;
}

bool is_utf8(std::string_view text) {
    return check_utf8(text) == Utf8::Whole;
}

Encoding find_encoding(std::string_view start) {
    if (start.starts_with("\xFF\xFE")) return Encoding::Utf16Little;
    if (start.starts_with("\xFE\xFF")) return Encoding::Utf16Big;
    // Without a mark, digits and separators have every other byte zero.
    if (start.size() >= 4) {
        std::array<std::size_t, 2> zeros{};
        for (std::size_t i = 0; i < start.size(); ++i) zeros[i % 2] += start[i] == '\0';
        if (zeros[1] > start.size() / 4 && zeros[0] == 0) return Encoding::Utf16Little;
        if (zeros[0] > start.size() / 4 && zeros[1] == 0) return Encoding::Utf16Big;
    }
    return check_utf8(start) == Utf8::No ? Encoding::Latin1 : Encoding::Utf8;
}

std::string utf8_of_latin1(std::string_view text) {
    std::string result;
    for (char const c : text) {
        auto const byte = static_cast<unsigned char>(c);
        append_utf8(result, byte >= 0x80 && byte < 0xA0 ? windows_letters[byte - 0x80] : byte);
    }
    return result;
}

std::unique_ptr<ByteSource> decoded(std::unique_ptr<PeekedBytes> source, Encoding encoding) {
    switch (encoding) {
    case Encoding::Utf8:
        if (source->peek(utf8_mark.size()) == utf8_mark) {
            std::array<char, utf8_mark.size()> mark{};
            source->read(mark);
        }
        return with_line_feeds(std::move(source));
    case Encoding::Latin1:
        return with_line_feeds(
            std::make_unique<PeekedBytes>(std::make_unique<Latin1Bytes>(std::move(source))));
    default: break;
    }
    bool const big = encoding == Encoding::Utf16Big;
    return with_line_feeds(
        std::make_unique<PeekedBytes>(std::make_unique<Utf16Bytes>(std::move(source), big)));
}

} // namespace qv::table
