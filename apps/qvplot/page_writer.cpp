#include "qvplot/page_writer.h"

#include "qvplot/plot_error.h"
#include "table/text.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <span>

namespace qv::plot {
namespace {

constexpr char const* standard_output = "-";

struct Format {
    std::string_view name;
    std::string_view media_type;
};
constexpr std::array formats{Format{"png", "image/png"}, Format{"svg", "image/svg+xml"},
                             Format{"pdf", "application/pdf"}, Format{"bmp", "image/bmp"}};

[[noreturn]] void fail(std::string const& file) {
    int const reason = errno;
    throw PlotError("Cannot write " + file + ": " + std::strerror(reason));
}

bool write_all(int number, std::span<std::uint8_t const> bytes) {
    while (!bytes.empty()) {
        ssize_t const count = write(number, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return true;
}

// What the name leads to, so that a link stays one. Links of the system lead to what is open, which has no
// place of its own to be put in.
std::string place_of(std::string const& file) {
    std::error_code none;
    auto const place = std::filesystem::weakly_canonical(file, none);
    return none ? file : place.string();
}

bool is_of_the_system(std::string const& file) {
    const std::string whole = std::filesystem::absolute(file).lexically_normal().string();
    return whole.starts_with("/dev/") || whole.starts_with("/proc/");
}

// Beside the file, then in its place.
void replace_file(std::string const& file, output::Bytes const& bytes) {
    const std::string place = place_of(file);
    std::string beside = place + ".XXXXXX";
    int const number = mkstemp(beside.data());
    if (number < 0) fail(file);
    bool done = write_all(number, bytes);
    // What a new file may be read by, and what the old one could.
    struct stat about {};
    mode_t const mask = umask(0);
    umask(mask);
    constexpr mode_t for_all = 0666;
    fchmod(number, stat(file.c_str(), &about) == 0 ? about.st_mode & 07777 : for_all & ~mask);
    done = close(number) == 0 && done;
    if (done && rename(beside.c_str(), place.c_str()) == 0) return;
    int const reason = errno;
    unlink(beside.c_str());
    errno = reason;
    fail(file);
}

// A pipe or a device takes what comes.
void write_through(std::string const& file, output::Bytes const& bytes) {
    int const number = open(file.c_str(), O_WRONLY | O_CLOEXEC);
    bool const done = number >= 0 && write_all(number, bytes);
    int const reason = errno;
    if (number >= 0) close(number);
    errno = reason;
    if (!done) fail(file);
}

} // namespace

std::string media_type_of(PlotOptions const& options) {
    std::string name = options.format;
    if (name.empty() && options.out == standard_output) name = "png";
    if (name.empty()) {
        name = table::lowered(options.out.extension().string());
        if (name.starts_with('.')) name.erase(0, 1);
    }
    auto const format = std::ranges::find(formats, name, &Format::name);
    if (format == formats.end())
        throw PlotError(
            options.out.string()
            + ": no such format; give it a name ending in .png, .svg, .pdf or .bmp, or a --format");
    return std::string(format->media_type);
}

PageWriter::PageWriter(PlotOptions const& options)
    : HeadlessHost(options.size, options.dpi), out_(options.out.string()),
      media_type_(media_type_of(options)) {}

void PageWriter::write() {
    save(out_);
}

void PageWriter::save_picture(std::string const& file, host::PagePicture const& picture) {
    if (!fonts_) fonts_ = raster::make_font_library();
    const output::Bytes bytes = output::encode_page(media_type_, picture, fonts_);
    struct stat about {};
    bool const is_there = file != standard_output && stat(file.c_str(), &about) == 0;
    if (file == standard_output) {
        if (!write_all(STDOUT_FILENO, bytes)) fail("standard output");
    } else if (is_there && S_ISDIR(about.st_mode)) {
        errno = EISDIR;
        fail(file);
    } else if (is_of_the_system(file) || (is_there && !S_ISREG(about.st_mode))) {
        write_through(file, bytes);
    } else {
        replace_file(file, bytes);
    }
}

} // namespace qv::plot
