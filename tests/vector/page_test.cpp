#include "qvgraph/HeadlessHost.h"
#include "qvgraph/page_file.h"
#include "rendered_page.h"

#include <doctest/doctest.h>

#include <cmath>
#include <fstream>
#include <random>

using namespace qv;
using namespace qv::test;
using headless::HeadlessHost;

namespace {

/// What stands for a point: `DataSymbol` codes.
enum Symbol : int { none = 0, dot = 2, circle = 3, square = 4, triangle = 6, plus = 10, letter = 65 };

struct Cloud {
    Symbol symbol;
    std::size_t points;
    bool edged = false;
};

/// A page of normally distributed points; without a symbol, of a random walk's line.
void draw(qvGraph& page, Cloud const& cloud) {
    page.NewGraph("Many points");
    page.NewDataSet("data");
    std::mt19937 random(3);
    std::normal_distribution<double> step;
    std::vector<double> x(cloud.points), y(cloud.points);
    for (std::size_t i = 0; i < cloud.points; ++i) {
        bool const walks = cloud.symbol == none;
        x[i] = walks ? static_cast<double>(i) : step(random);
        y[i] = walks && i > 0 ? y[i - 1] + step(random) : step(random);
    }
    page.AddDataPoints(x, y);
    page.DataSymbol(int{cloud.symbol});
    if (cloud.symbol == none) page.DataLineStyle(1);
    if (cloud.edged) page.SymbolStyle({.Color2 = rgb(255, 0, 0), .EdgeThickness = 1});
    page.Refresh();
}

} // namespace

TEST_CASE("files of shapes stay small and look like the page, whatever the number of points") {
    for (Cloud const& cloud : {Cloud{none, 10000000}, Cloud{circle, 10000000}, Cloud{dot, 300000},
                               Cloud{circle, 300000}, Cloud{triangle, 300000}, Cloud{plus, 300000},
                               Cloud{letter, 3000}, Cloud{circle, 5000, true}, Cloud{square, 300000, true}}) {
        CAPTURE(int{cloud.symbol});
        CAPTURE(cloud.points);
        const TemporaryFolder folder;
        HeadlessHost host({1200, 800});
        draw(host.control(), cloud);
        host.save(folder.path() / "page.png");
        auto const page = read_png((folder.path() / "page.png").string());
        for (std::string const name : {"page.svg", "page.pdf"}) {
            CAPTURE(name);
            const std::filesystem::path file = folder.path() / name;
            host.save(file);
            CHECK(std::filesystem::file_size(file) < 1000000);
            CHECK(mean_difference(rendered(file), page) < 0.02);
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
        CHECK(read_png(base + ".png").width == doctest::Approx(600 * 96 / dots_per_inch).epsilon(0.01));
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
    draw(full.control(), {square, 120000, true});
    full.save(folder.path() / "full.png");
    full.save(folder.path() / "full.svg");
    full.save(folder.path() / "full.pdf");
    CHECK(content_of(folder.path() / "full.svg").find("<image") != std::string::npos);
    // The picture comes out to the pixel.
    auto const picture = read_png((folder.path() / "full.png").string());
    for (char const* name : {"full.svg", "full.pdf"})
        CHECK(mean_difference(rendered(folder.path() / name), picture) == 0);
}

TEST_CASE("a PDF page tells nothing of when it was written") {
    const TemporaryFolder folder;
    HeadlessHost host({60, 40});
    host.save(folder.path() / "page.pdf");
    const std::string pdf = content_of(folder.path() / "page.pdf");
    CHECK(pdf.find("/Producer") != std::string::npos); // what is told stands in plain text
    CHECK(pdf.find("Date") == std::string::npos);
}
