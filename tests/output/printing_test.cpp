#include "interact/page_output.h"
#include "pages.h"
#include "printed_sheet.h"

#include <doctest/doctest.h>

using namespace qv;
using namespace qv::test;
using headless::HeadlessHost;

TEST_CASE("the printed page lies where it belongs on the sheet, and keeps its pixels") {
    struct Row {
        PixelSize page;
        bool landscape;
    };
    for (Row const& row : {Row{{900, 450}, false}, Row{{900, 450}, true}, Row{{300, 700}, false},
                           Row{{300, 700}, true}, Row{{640, 480}, false}}) {
        CAPTURE(row.page.width);
        CAPTURE(row.landscape);
        const TemporaryFolder folder;
        HeadlessHost host(row.page);
        host.print_to(folder.path() / "sheet.pdf");
        draw_dark_page(host.control());
        host.control().PrintImage(row.landscape);
        const PrintedSheet sheet = measure_sheet(folder.path() / "sheet.pdf");
        CHECK(sheet.width_mm == doctest::Approx(row.landscape ? 297 : 210).epsilon(0.001));
        CHECK(sheet.height_mm == doctest::Approx(row.landscape ? 210 : 297).epsilon(0.001));
        const Box inches =
            interact::place_on_paper({210 / 25.4 * twips_per_inch, 297 / 25.4 * twips_per_inch},
                                     static_cast<double>(row.page.height) / row.page.width, row.landscape);
        check_box(sheet.ink_mm,
                  {inches.left * 25.4, inches.top * 25.4, inches.width * 25.4, inches.height * 25.4}, 0.5);
        CHECK(picture_in(folder.path() / "sheet.pdf").pixels == pixels_of(host));
    }
}

TEST_CASE(
    "no printer, an impossible sheet and a file that cannot be written are printer errors or file errors") {
    HeadlessHost host({100, 80});
    Errors errors;
    host.control().set_events(&errors);
    host.control().PrintImage();
    host.print_to("sheet.pdf", {0, 100});
    host.control().PrintImage();
    host.print_to("no such folder/sheet.pdf");
    host.control().PrintImage(true);
    REQUIRE(errors.heard.size() == 3);
    CHECK(errors.heard[0].starts_with("Error 482 has occured in qvGraph.ocx, PrintImage: "));
    CHECK(errors.heard[1].starts_with("Error 482 has occured in qvGraph.ocx, PrintImage: "));
    CHECK(
        errors.heard[2].starts_with("Error 76 has occured in qvGraph.ocx, PrintImage: Cannot write no such"));
}
