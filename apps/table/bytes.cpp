#include "table/bytes.h"

#include "table/table_error.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace qv::table {
namespace {

class FileBytes : public ByteSource {
public:
    explicit FileBytes(std::string const& name) : name_(name), number_(open_file(name)) {
        struct stat about {};
        if (fstat(number_, &about) == 0 && S_ISREG(about.st_mode)) size_ = about.st_size;
    }
    ~FileBytes() override {
        if (number_ != STDIN_FILENO) close(number_);
    }
    FileBytes(FileBytes const&) = delete;
    FileBytes& operator=(FileBytes const&) = delete;

    std::size_t read(std::span<char> target) override {
        ssize_t count = -1;
        do count = ::read(number_, target.data(), target.size());
        while (count < 0 && errno == EINTR);
        if (count < 0) throw TableError(shown_name() + ": cannot be read: " + reason());
        position_ += count;
        if (count == 0) look_for_cut();
        return static_cast<std::size_t>(count);
    }
    double progress() const override {
        return size_ > 0 ? std::min(1.0, static_cast<double>(position_) / static_cast<double>(size_)) : 0;
    }
    bool begun_anew() override { return std::exchange(cut_, false); }

private:
    static int open_file(std::string const& name) {
        if (name.find('\0') != std::string::npos)
            throw TableError("\"" + name.substr(0, name.find('\0'))
                             + "...\": a file's name cannot hold a zero character");
        int const number = name == "-" ? STDIN_FILENO : open(name.c_str(), O_RDONLY | O_CLOEXEC);
        if (number < 0) throw TableError(name + ": cannot be opened; check the name and its permissions");
        return number;
    }
    std::string shown_name() const { return name_ == "-" ? "standard input" : name_; }
    static std::string reason() {
        return errno == EISDIR ? "it is a folder; name a file in it" : std::strerror(errno);
    }
    // A file shorter than what was read of it has been emptied by whoever writes it.
    void look_for_cut() {
        struct stat about {};
        if (size_ < 0 || fstat(number_, &about) != 0 || about.st_size >= position_) return;
        lseek(number_, 0, SEEK_SET);
        position_ = 0;
        cut_ = true;
    }

    std::string name_;
    int number_;
    off_t size_ = -1;
    off_t position_ = 0;
    bool cut_ = false;
};

class MemoryBytes : public ByteSource {
public:
    explicit MemoryBytes(std::string_view text) : rest_(text) {}
    std::size_t read(std::span<char> target) override {
        const std::size_t count = std::min(target.size(), rest_.size());
        std::memcpy(target.data(), rest_.data(), count);
        rest_.remove_prefix(count);
        return count;
    }

private:
    std::string_view rest_;
};

} // namespace

std::unique_ptr<ByteSource> open_bytes(std::string const& file) {
    return std::make_unique<FileBytes>(file);
}

std::unique_ptr<ByteSource> bytes_of(std::string_view text) {
    return std::make_unique<MemoryBytes>(text);
}

std::string_view PeekedBytes::peek(std::size_t count) {
    while (ahead_.size() < count) {
        const std::size_t before = ahead_.size();
        ahead_.resize(count);
        const std::size_t got = source_->read(std::span(ahead_).subspan(before));
        ahead_.resize(before + got);
        if (got == 0) break;
    }
    return std::string_view(ahead_).substr(0, count);
}

std::size_t PeekedBytes::read(std::span<char> target) {
    if (ahead_.empty()) return source_->read(target);
    const std::size_t count = std::min(target.size(), ahead_.size());
    std::memcpy(target.data(), ahead_.data(), count);
    ahead_.erase(0, count);
    return count;
}

} // namespace qv::table
