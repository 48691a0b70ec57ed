#include "pictures.h"
#include "qvgraph/fault.h"
#include "raster/png.h"

#include <doctest/doctest.h>

#include <filesystem>
#include <fstream>

using namespace qv;
using namespace qv::raster;
using namespace qv::raster::test;
namespace files = std::filesystem;

namespace {

// An empty folder that vanishes.
struct Folder {
    files::path path = files::temp_directory_path() / "qvgraph_png_test";
    Folder() {
        files::remove_all(path);
        files::create_directories(path);
    }
    ~Folder() { files::remove_all(path); }
    Folder(Folder const&) = delete;
    Folder& operator=(Folder const&) = delete;

    std::string file(char const* name) const { return (path / name).string(); }
    long entries() const {
        return std::distance(files::directory_iterator(path), files::directory_iterator());
    }
};

Fault fault_of(auto&& action) {
    try {
        action();
    } catch (Fault const& fault) {
        return fault;
    }
    return {FaultNumber::InternalError, "no fault"};
}

} // namespace

TEST_CASE("a picture written as PNG is read back with its density") {
    const Folder folder;
    RasterSurface surface = surface_of(37, 21, 15, 7.5);
    for (int i = 0; i < 37; ++i) surface.LineTo({double(i), 0}, {double(36 - i), 20}, rgb(i * 7, 255 - i, i));
    const std::string file = folder.file("picture.png");
    std::ofstream(file) << "what was there before";
    write_png(file, surface);
    const PngPicture read = read_png(file);
    CHECK(read.buffer.width == 37);
    CHECK(read.buffer.pixels == picture_of(surface));
    CHECK(read.pixels_per_metre_x == 3780); // 96 an inch
    CHECK(read.pixels_per_metre_y == 7559);
    CHECK(folder.entries() == 1);
}

TEST_CASE("failures to write and read are faults that name the file and leave nothing behind") {
    const Folder folder;
    const RasterSurface surface = surface_of(4, 4);
    files::create_directory(folder.file("folder"));
    std::ofstream(folder.file("text")) << "no picture";
    std::ofstream(folder.file("cut.png"), std::ios::binary) << [&] {
        const auto bytes = encode_png(surface);
        return std::string(bytes.begin(), bytes.end() - 20);
    }();
    struct Row {
        std::string file;
        std::int32_t writing, reading; // 0: works
    };
    for (Row const& row :
         {Row{folder.file("none/x.png"), 76, 53}, Row{folder.file("text/x.png"), 76, 76},
          Row{folder.file("folder"), 75, 75}, Row{folder.file(""), 0, 75}, Row{folder.file("text"), 0, 57},
          Row{folder.file("cut.png"), 0, 57}, Row{folder.file("none.png"), 0, 53}}) {
        CAPTURE(row.file);
        const Fault reading = fault_of([&] { read_png(row.file); });
        CHECK(reading.number == row.reading);
        CHECK(reading.description.find(row.file) != std::string::npos);
        if (row.writing == 0) continue;
        const Fault writing = fault_of([&] { write_png(row.file, surface); });
        CHECK(writing.number == row.writing);
        CHECK(writing.description.find(row.file) != std::string::npos);
    }
    CHECK(folder.entries() == 3);
}
