// A folder for one test's files, removed with it.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

namespace qv::test {

/// All bytes of a file.
inline std::string content_of(std::filesystem::path const& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        do {
            path_ = std::filesystem::temp_directory_path() / ("qvtest-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
    }
    ~TemporaryFolder() {
        std::error_code none;
        std::filesystem::remove_all(path_, none);
    }
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;

    std::filesystem::path const& path() const { return path_; }
    /// Writes a file of this content and returns its path.
    std::filesystem::path file(std::string const& name, std::string const& content) const {
        std::ofstream(path_ / name, std::ios::binary) << content;
        return path_ / name;
    }

private:
    std::filesystem::path path_;
};

} // namespace qv::test
