// The pictures of docs/gallery.md are what the examples draw.
#include "rendered_page.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

using namespace qv;
namespace fs = std::filesystem;

namespace {

fs::path source_folder() {
    char const* const source = std::getenv("QV_SOURCE_DIR");
    return source ? source : ".";
}

std::set<std::string> names_in(fs::path const& folder, std::string const& extension) {
    std::set<std::string> names;
    for (auto const& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == extension) names.insert(entry.path().stem().string());
    return names;
}

/// Share of the pixels of which some channel differs by more than a little.
double difference(raster::PixelBuffer const& a, raster::PixelBuffer const& b) {
    if (a.width != b.width || a.height != b.height) return 1;
    std::size_t different = 0;
    for (std::size_t i = 0; i < a.pixels.size(); ++i) {
        bool same = true;
        for (int shift = 0; shift < 24; shift += 8) {
            int const level = static_cast<int>(a.pixels[i] >> shift & 0xFF);
            same &= std::abs(level - static_cast<int>(b.pixels[i] >> shift & 0xFF)) <= 24;
        }
        different += !same;
    }
    return static_cast<double>(different) / static_cast<double>(a.pixels.size());
}

/// What an example draws into a file of this ending.
fs::path drawn_by(std::string const& name, std::string const& ending) {
    fs::path const drawn = fs::absolute("gallery-" + name + ending);
    test::run("'" QV_PROGRAMS "/example_" + name + "' '" + drawn.string() + "'");
    return drawn;
}

fs::path kept_picture(std::string const& name) {
    return source_folder() / "docs" / "gallery" / (name + ".png");
}

} // namespace

TEST_CASE("every example has its picture in docs/gallery, and the page shows all of them") {
    auto const examples = names_in(source_folder() / "examples" / "gallery", ".cpp");
    CHECK(examples == names_in(source_folder() / "docs" / "gallery", ".png"));
    std::string const page = test::content_of(source_folder() / "docs" / "gallery.md");
    for (std::string const& name : examples) {
        CAPTURE(name);
        CHECK(page.find("(gallery/" + name + ".png)") != std::string::npos);
        CHECK(page.find("(../examples/gallery/" + name + ".cpp)") != std::string::npos);
    }
}

TEST_CASE("the examples are written with handles: nothing is selected") {
    fs::path const folder = source_folder() / "examples";
    for (char const* const part : {"", "gallery", "quickstart"})
        for (std::string const& name : names_in(folder / part, ".cpp")) {
            CAPTURE(name);
            std::string const program = test::content_of(folder / part / (name + ".cpp"));
            for (char const* const member :
                 {"NewGraph", "NewDataSet", "NewYAxis", "Select", "AddDataPoint", "AddMathFunc", "AddText",
                  ".Axis", ".Data", ".Legend", "SymbolStyle"})
                CHECK(program.find(member) == std::string::npos);
        }
}

TEST_CASE("the examples draw these pictures; ./run-demo --gallery docs/gallery makes them anew") {
    for (std::string const& name : names_in(source_folder() / "docs" / "gallery", ".png")) {
        CAPTURE(name);
        fs::path const drawn = drawn_by(name, ".png");
        double const share = difference(test::read_png(drawn), test::read_png(kept_picture(name)));
        CHECK(share < 0.002);
        if (share < 0.002) fs::remove(drawn);
    }
}

TEST_CASE("the picture at the head of the README is drawn by the program named there, in forty lines") {
    std::string const readme = test::content_of(source_folder() / "README.md");
    CHECK(readme.find("(docs/pictures/warming.png)") < readme.find("(examples/warming.cpp)"));
    std::string const program = test::content_of(source_folder() / "examples" / "warming.cpp");
    CHECK(std::ranges::count(program, '\n') <= 40);
    fs::path const drawn = fs::absolute("warming.png");
    test::run("'" QV_PROGRAMS "/warming' '" + drawn.string() + "' '"
              + (source_folder() / "examples" / "data").string() + "'");
    fs::path const kept = source_folder() / "docs" / "pictures" / "warming.png";
    double const share = difference(test::read_png(drawn), test::read_png(kept));
    CHECK(share < 0.002);
    if (share < 0.002) fs::remove(drawn);
}

TEST_CASE("pages in shapes look like their pictures") {
    for (std::string const& name : names_in(source_folder() / "docs" / "gallery", ".png")) {
        auto const picture = test::read_png(kept_picture(name));
        for (char const* ending : {".svg", ".pdf"}) {
            CAPTURE(name);
            CAPTURE(ending);
            fs::path const drawn = drawn_by(name, ending);
            double const mean = test::mean_difference(test::rendered(drawn), picture);
            // Other programs mix what is translucent in stored values, not in light.
            double const most = name == "area_kinds" ? 0.015 : 0.01;
            CHECK(mean < most);
            if (mean < most) fs::remove(drawn);
        }
    }
}
