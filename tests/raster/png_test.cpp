#include "fault_of.h"
#include "pictures.h"
#include "png_file.h"
#include "raster/file_replacement.h"
#include "raster/png.h"

#include <doctest/doctest.h>

using namespace qv;
using namespace qv::raster;
using namespace qv::raster::test;
namespace files = std::filesystem;

namespace {

long entries_of(files::path const& folder) {
    return std::distance(files::directory_iterator(folder), files::directory_iterator());
}

} // namespace

TEST_CASE("a picture written as PNG is read by others as it is, with its density") {
    const qv::test::TemporaryFolder folder;
    RasterSurface surface = surface_of(37, 21, 15, 7.5);
    for (int i = 0; i < 37; ++i) surface.LineTo({double(i), 0}, {double(36 - i), 20}, rgb(i * 7, 255 - i, i));
    const files::path file = folder.file("picture.png", "what was there before");
    replace_file(file.string(), encode_png(surface));
    CHECK(qv::test::read_png(file).width == 37);
    CHECK(qv::test::read_png(file).pixels == picture_of(surface));
    CHECK(qv::test::png_density(file, 0) == 3780); // 96 an inch
    CHECK(qv::test::png_density(file, 1) == 7559);
    CHECK(entries_of(folder.path()) == 1);
}

TEST_CASE("failures to write are faults that name the file and leave nothing behind") {
    const qv::test::TemporaryFolder folder;
    files::create_directory(folder.path() / "folder");
    folder.file("text", "no folder");
    struct Row {
        char const* name;
        std::int32_t number;
    };
    for (Row const& row : {Row{"none/x.png", 76}, Row{"text/x.png", 76}, Row{"folder", 75}}) {
        CAPTURE(row.name);
        const std::string file = (folder.path() / row.name).string();
        const Fault fault = qv::test::fault_of([&] { replace_file(file, encode_png(surface_of(4, 4))); });
        CHECK(fault.number == row.number);
        CHECK(fault.description.find(file) != std::string::npos);
    }
    CHECK(entries_of(folder.path()) == 2);
}
