#include "raster/file_replacement.h"

#include "qvgraph/fault.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <random>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qv::raster {
namespace {

struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;

struct ErrorRow {
    int error;
    FaultNumber number;
};

constexpr std::array error_rows{
    ErrorRow{EACCES, FaultNumber::PermissionDenied},
    ErrorRow{EPERM, FaultNumber::PermissionDenied},
    ErrorRow{EROFS, FaultNumber::PermissionDenied},
    ErrorRow{ENOSPC, FaultNumber::DiskFull},
    ErrorRow{EDQUOT, FaultNumber::DiskFull},
    ErrorRow{EFBIG, FaultNumber::DiskFull},
    ErrorRow{ENOENT, FaultNumber::PathNotFound},
    ErrorRow{ENOTDIR, FaultNumber::PathNotFound},
    ErrorRow{EISDIR, FaultNumber::PathFileAccess},
    ErrorRow{EEXIST, FaultNumber::PathFileAccess},
    ErrorRow{ENAMETOOLONG, FaultNumber::PathFileAccess},
    ErrorRow{ELOOP, FaultNumber::PathFileAccess},
};

FaultNumber number_of_error(int error) {
    for (ErrorRow const& row : error_rows)
        if (row.error == error) return row.number;
    return FaultNumber::DeviceError;
}

[[noreturn]] void raise_file_fault(std::string const& path, int error) {
    raise_fault(number_of_error(error), "Cannot write " + path + ": " + std::strerror(error));
}

// In the same folder, for only there a file can be moved onto another; short, for the other may be long.
std::string name_beside(std::string const& path) {
    std::random_device random;
    // By hand, as the library's way to do this does not survive the end of memory.
    const std::size_t name = path.rfind('/') + 1; // 0 where there is no folder
    return path.substr(0, name) + "qvgraph" + std::to_string(random()) + ".part";
}

// A new file; 0, or the error, and then there is none.
int write_new(std::string const& path, std::span<std::uint8_t const> bytes) {
    File file(std::fopen(path.c_str(), "wbx"));
    if (!file) return errno;
    errno = EIO;
    int error = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size() ? 0 : errno;
    if (std::fclose(file.release()) != 0 && error == 0) error = errno;
    if (error != 0) std::remove(path.c_str());
    return error;
}

// Moves a file onto another, whose permissions it takes over; 0, or the error, and then there is none to
// move.
int move_onto(std::string const& target, std::string const& part) {
    struct stat old;
    bool const replaces = ::stat(target.c_str(), &old) == 0;
    if ((!replaces || ::chmod(part.c_str(), old.st_mode & 07777) == 0)
        && std::rename(part.c_str(), target.c_str()) == 0)
        return 0;
    int const error = errno;
    std::remove(part.c_str());
    return error;
}

// Moving needs the folder's permission alone; a file that may not be written must not be replaced either.
bool is_protected(std::string const& path) {
    return ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0 && errno != ENOENT;
}

// Renaming onto a link or a device would take its place instead of writing through it. A link may lead to a
// file that is not there yet.
std::string ordinary_file(std::string const& path) {
    constexpr int most_links = 40; // one after the other, as the system allows
    std::filesystem::path target = path;
    std::error_code ignored;
    for (int links = 0; links <= most_links; ++links) {
        auto const status = std::filesystem::symlink_status(target, ignored);
        if (std::filesystem::is_other(status))
            raise_fault(FaultNumber::PathFileAccess, "Cannot write " + path + ": it is a device, not a file");
        if (!std::filesystem::is_symlink(status)) return target.string();
        target = target.parent_path() / std::filesystem::read_symlink(target, ignored);
    }
    raise_file_fault(path, ELOOP);
}

// The system would read the name up to the zero, and so touch another file.
void require_whole_name(std::string const& path) {
    auto const zero = path.find('\0');
    if (zero == std::string::npos) return;
    raise_fault(FaultNumber::PathFileAccess, "Cannot write a file whose name holds a zero character, after \""
                                                 + path.substr(0, zero) + "\"");
}

} // namespace

void replace_file(std::string const& path, std::span<std::uint8_t const> bytes) {
    require_whole_name(path);
    const std::string target = ordinary_file(path);
    const std::string part = name_beside(target);
    int error = is_protected(target) ? errno : write_new(part, bytes);
    if (error == 0) error = move_onto(target, part);
    if (error != 0) raise_file_fault(path, error);
}

} // namespace qv::raster
