// Where the bytes of a table come from: files, standard input, memory, and what is packed in them.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace qv::table {

/// Bytes in their order. A source that grows may give some again after it gave none.
class ByteSource {
public:
    virtual ~ByteSource() = default;
    /// Fills the front of `target` and returns how many bytes that were; 0 where there are none (now).
    virtual std::size_t read(std::span<char> target) = 0;
    /// Part of all bytes read so far, 0 to 1; 0 where nobody knows.
    virtual double progress() const { return 0; }
    /// Whether the bytes have begun anew since this was asked last, because the file was cut.
    virtual bool begun_anew() { return false; }
};

/// A file, or standard input for "-". A TableError says why it cannot be opened or read.
std::unique_ptr<ByteSource> open_bytes(std::string const& file);

/// A text in memory, which must live longer.
std::unique_ptr<ByteSource> bytes_of(std::string_view text);

/// A source whose first bytes can be looked at before they are read.
class PeekedBytes : public ByteSource {
public:
    explicit PeekedBytes(std::unique_ptr<ByteSource> source) : source_(std::move(source)) {}
    /// The next `count` bytes, fewer at the end.
    std::string_view peek(std::size_t count);
    std::size_t read(std::span<char> target) override;
    double progress() const override { return source_->progress(); }
    bool begun_anew() override { return source_->begun_anew(); }

private:
    std::unique_ptr<ByteSource> source_;
    std::string ahead_;
};

/// The source itself or, where its first bytes say so, what gzip or zstd have packed in it. `name` is for
/// errors.
std::unique_ptr<ByteSource> unpacked(std::unique_ptr<ByteSource> source, std::string const& name);

} // namespace qv::table
