#include "platform/headless/HeadlessHost.h"
#include "platform/output/page_file.h"
#include "printed_sheet.h"

#include <doctest/doctest.h>

#include <cmath>
#include <fstream>
#include <random>

using namespace qv;
using namespace qv::test;
using headless::HeadlessHost;

namespace {

enum class Data { Line, Circles, Triangles, EdgedSquares };

void fill(qvGraph& page, Data data, std::size_t count) {
    page.NewGraph("Many points");
    page.NewDataSet("data");
    std::mt19937 random(3);
    std::normal_distribution<double> step;
    std::vector<double> x(count), y(count);
    for (std::size_t i = 0; i < count; ++i) {
        bool const walks = data == Data::Line;
        x[i] = walks ? static_cast<double>(i) : step(random);
        y[i] = walks && i > 0 ? y[i - 1] + step(random) : step(random);
    }
    page.AddDataPoints(x, y);
    if (data == Data::Line) {
        page.DataSymbol(0);
        page.DataLineStyle(1);
    } else {
        page.DataSymbol(data == Data::Circles ? 1 : data == Data::Triangles ? 4 : 2);
        if (data == Data::EdgedSquares) page.SymbolStyle({.Color2 = 255, .EdgeThickness = 1});
    }
    page.Refresh();
}

std::string content_of(std::filesystem::path const& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace

TEST_CASE("files of shapes stay small, whatever the number of points") {
    struct Row {
        Data data;
        std::size_t count;
    };
    for (Row const& row : {Row{Data::Line, 10000000}, Row{Data::Circles, 10000000},
                           Row{Data::Triangles, 300000}, Row{Data::EdgedSquares, 300000}}) {
        CAPTURE(static_cast<int>(row.data));
        const TemporaryFolder folder;
        HeadlessHost host({1200, 800});
        fill(host.control(), row.data, row.count);
        for (char const* name : {"page.svg", "page.pdf"}) {
            host.save(folder.path() / name);
            CHECK(std::filesystem::file_size(folder.path() / name) < 1000000);
        }
    }
}

TEST_CASE("a page in shapes has its size on paper and text that can be found") {
    for (double const dots_per_inch : {96.0, 192.0, 110.0}) {
        const TemporaryFolder folder;
        HeadlessHost host({600, 400}, dots_per_inch);
        qvGraph& page = host.control();
        page.NewGraph("\u00dcber 5 \u00b5m");
        page.AxisTitle("Abscissa");
        page.Refresh();
        host.save(folder.path() / "page.pdf");
        host.save(folder.path() / "page.svg");
        const std::string base = (folder.path() / "page").string();
        run("pdftotext '" + base + ".pdf' '" + base + ".txt'");
        const std::string text = content_of(base + ".txt");
        CHECK(text.find("\u00dcber 5 \u00b5m") != std::string::npos);
        CHECK(text.find("Abscissa") != std::string::npos);
        CHECK(content_of(base + ".svg").find(">\u00dcber 5 \u00b5m</text>") != std::string::npos);
        run("pdffonts '" + base + ".pdf' | grep -q 'yes yes yes'"); // embedded, with its characters
        const PrintedSheet sheet = measure_sheet(base + ".pdf");
        CHECK(sheet.width_mm == doctest::Approx(600 / dots_per_inch * 25.4).epsilon(0.002));
        CHECK(sheet.height_mm == doctest::Approx(400 / dots_per_inch * 25.4).epsilon(0.002));
        run("rsvg-convert -d 96 -p 96 '" + base + ".svg' -o '" + base + ".png'");
        CHECK(raster::read_png(base + ".png").buffer.width
              == doctest::Approx(600 * 96 / dots_per_inch).epsilon(0.01));
    }
}

TEST_CASE("an empty page and one of more shapes than a file should hold are written all the same") {
    const TemporaryFolder folder;
    HeadlessHost empty({60, 40});
    empty.control().Refresh();
    empty.save(folder.path() / "empty.svg");
    empty.save(folder.path() / "empty.pdf");
    CHECK(content_of(folder.path() / "empty.svg").find("fill=\"#ffffff\"") != std::string::npos);
    HeadlessHost full({600, 400});
    fill(full.control(), Data::EdgedSquares, 120000);
    full.save(folder.path() / "full.svg");
    const std::string svg = content_of(folder.path() / "full.svg");
    CHECK(svg.find("<image") != std::string::npos);
    CHECK(svg.size() < 500000);
}

TEST_CASE("a PDF page tells nothing of when it was written") {
    const TemporaryFolder folder;
    HeadlessHost host({60, 40});
    host.save(folder.path() / "page.pdf");
    const std::string pdf = content_of(folder.path() / "page.pdf");
    CHECK(pdf.find("/Producer") != std::string::npos); // what is told stands in plain text
    CHECK(pdf.find("Date") == std::string::npos);
}
