// Font files: which file stands for a font name, and which files have the characters it lacks.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace qv::raster {

/// A face of a font: family name and the two styles.
struct FaceName {
    std::string family;
    bool bold = false;
    bool italic = false;
    bool operator==(FaceName const&) const = default;
};

/// A face in a file, and what of the wish it does not have itself.
struct FontFile {
    std::string path;
    int index = 0;
    bool embolden = false;
    bool slant = false;
    bool operator==(FontFile const&) const = default;
};

/// The fonts that fontconfig knows; its configuration is read once, on construction.
class FontFiles {
public:
    FontFiles();
    ~FontFiles();
    FontFiles(FontFiles const&) = delete;
    FontFiles& operator=(FontFiles const&) = delete;

    /// Scalable fonts, the best match first, each of the others adding characters that those before it lack.
    /// Empty when no font is installed.
    std::vector<FontFile> candidates(FaceName const& name) const;

private:
    struct Configuration;
    std::unique_ptr<Configuration> configuration_;
};

} // namespace qv::raster
