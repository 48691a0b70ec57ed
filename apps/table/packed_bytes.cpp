// What gzip (through zlib) and zstd have packed.
#include "table/bytes.h"
#include "table/table_error.h"

#include <zlib.h>
#include <zstd.h>

#include <array>
#include <vector>

namespace qv::table {
namespace {

constexpr std::size_t packed_block = 1 << 17;

// The packed bytes at hand, filled up from their source.
class PackedBlock {
public:
    PackedBlock(std::unique_ptr<ByteSource> source) : source_(std::move(source)), bytes_(packed_block) {}
    /// False at the end.
    bool fill() {
        if (begin_ < end_) return true;
        begin_ = 0;
        end_ = source_->read(bytes_);
        return end_ > 0;
    }
    char* data() { return bytes_.data() + begin_; }
    std::size_t size() const { return end_ - begin_; }
    void take(std::size_t count) { begin_ += count; }
    double progress() const { return source_->progress(); }

private:
    std::unique_ptr<ByteSource> source_;
    std::vector<char> bytes_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
};

[[noreturn]] void raise_damaged(std::string const& name, std::string const& what) {
    throw TableError(name + ": is packed by " + what + " and damaged or cut off; pack it anew");
}

class GzipBytes : public ByteSource {
public:
    GzipBytes(std::unique_ptr<ByteSource> source, std::string name)
        : packed_(std::move(source)), name_(std::move(name)) {
        constexpr int with_gzip_header = 15 + 16; // the largest window, and 16 for the header
        if (inflateInit2(&stream_, with_gzip_header) != Z_OK) throw std::bad_alloc();
    }
    ~GzipBytes() override { inflateEnd(&stream_); }
    GzipBytes(GzipBytes const&) = delete;
    GzipBytes& operator=(GzipBytes const&) = delete;

    std::size_t read(std::span<char> target) override {
        stream_.next_out = reinterpret_cast<Bytef*>(target.data());
        stream_.avail_out = static_cast<uInt>(target.size());
        while (stream_.avail_out == target.size()) {
            if (!packed_.fill()) {
                if (!at_member_end_) raise_damaged(name_, "gzip");
                return 0;
            }
            if (at_member_end_) inflateReset(&stream_); // several files may be packed one after the other
            inflate_block();
        }
        return target.size() - stream_.avail_out;
    }
    double progress() const override { return packed_.progress(); }

private:
    void inflate_block() {
        stream_.next_in = reinterpret_cast<Bytef*>(packed_.data());
        stream_.avail_in = static_cast<uInt>(packed_.size());
        int const result = inflate(&stream_, Z_NO_FLUSH);
        packed_.take(packed_.size() - stream_.avail_in);
        if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR) raise_damaged(name_, "gzip");
        at_member_end_ = result == Z_STREAM_END;
    }

    PackedBlock packed_;
    std::string name_;
    z_stream stream_{};
    bool at_member_end_ = false;
};

class ZstdBytes : public ByteSource {
public:
    ZstdBytes(std::unique_ptr<ByteSource> source, std::string name)
        : packed_(std::move(source)), name_(std::move(name)),
          stream_(ZSTD_createDStream(), ZSTD_freeDStream) {
        if (!stream_) throw std::bad_alloc();
    }
    std::size_t read(std::span<char> target) override {
        ZSTD_outBuffer out{target.data(), target.size(), 0};
        while (out.pos == 0) {
            // What is left inside comes out without more bytes.
            bool const more = packed_.fill();
            ZSTD_inBuffer in{packed_.data(), packed_.size(), 0};
            const std::size_t result = ZSTD_decompressStream(stream_.get(), &out, &in);
            if (ZSTD_isError(result)) raise_damaged(name_, "zstd");
            packed_.take(in.pos);
            if (more || in.pos > 0) at_frame_end_ = result == 0;
            if (!more && out.pos == 0) {
                if (!at_frame_end_) raise_damaged(name_, "zstd");
                return 0;
            }
        }
        return out.pos;
    }
    double progress() const override { return packed_.progress(); }

private:
    PackedBlock packed_;
    std::string name_;
    std::unique_ptr<ZSTD_DStream, std::size_t (*)(ZSTD_DStream*)> stream_;
    bool at_frame_end_ = false;
};

} // namespace

std::unique_ptr<ByteSource> unpacked(std::unique_ptr<ByteSource> source, std::string const& name) {
    constexpr std::size_t longest_mark = 4;
    auto peeked = std::make_unique<PeekedBytes>(std::move(source));
    const std::string_view mark = peeked->peek(longest_mark);
    if (mark.starts_with("\x1F\x8B\x08")) return std::make_unique<GzipBytes>(std::move(peeked), name);
    if (mark.starts_with("\x28\xB5\x2F\xFD")) return std::make_unique<ZstdBytes>(std::move(peeked), name);
    return peeked;
}

} // namespace qv::table
