// Memory that ends at any moment: the failure is told once, nothing else happens to the page.
#include "failing_allocation.h"
#include "pages.h"

#include "qvgraph/HeadlessHost.h"
#include "qvgraph/fault.h"
#include "qvgraph/qvGraph.h"
#include "raster/coverage_mask.h"
#include "temporary_folder.h"

#include <doctest/doctest.h>

#include <memory>
#include <new>
#include <string>
#include <vector>

using namespace qv;
using namespace qv::testing;
using headless::HeadlessHost;

namespace {

using Pixels = std::vector<std::uint32_t>;

constexpr PixelSize page_size{200, 150};

/// How often fault 7 was told, in whatever way. Takes no memory itself.
struct Told : host::EventSink {
    int times = 0;
    void ErrorMsg(std::string& Source, std::string& Description) override {
        if (Source.starts_with("Error 7 has occured in qvGraph.ocx, ") && !Description.empty()) ++times;
    }
    template <class Action>
    void listen(Action action) {
        try {
            action();
        } catch (std::bad_alloc const&) {
            ++times;
        } catch (Fault const& fault) {
            if (fault.number == static_cast<std::int32_t>(FaultNumber::OutOfMemory)) ++times;
        }
    }
};

struct Sheet {
    Told told;
    HeadlessHost host{page_size};
    qvGraph& page = host.control();

    explicit Sheet(PageKind const& kind) {
        page.set_events(&told);
        kind.fill(page);
    }
    Pixels refreshed() {
        page.Refresh();
        auto const shown = host.picture().pixels();
        return {shown.begin(), shown.end()};
    }
    Pixels filled_anew(PageKind const& kind) {
        page.Reset();
        page.SetCrossHair(0);
        kind.fill(page);
        return refreshed();
    }
};

/// Which of the allocations of a stretch fail, one at a time.
enum class Which { Sample, Every };

/// Calls `run(n)` for allocations n of a stretch, of which `counted` says how many it has.
template <class Counted, class Run>
void for_each_allocation(Which which, Counted counted, Run run) {
    constexpr std::size_t sample_size = 12;
    std::size_t count = 0;
    {
        const FailingAllocation none(0);
        counted();
        count = FailingAllocation::count();
    }
    MESSAGE(count << " allocations");
    const std::size_t step = which == Which::Every ? 1 : std::max<std::size_t>(1, count / sample_size);
    for (std::size_t n = 1; n <= count; n += step) {
        CAPTURE(n);
        run(n);
    }
}

/// Runs a stretch on a page with its n-th allocation failing; the failure must be told once.
template <class Stretch>
void with_failure(std::size_t n, Told& told, Stretch stretch) {
    told.times = 0;
    bool has_failed = false;
    {
        const FailingAllocation failing(n);
        told.listen(stretch);
        has_failed = FailingAllocation::has_failed();
    }
    CHECK(told.times == (has_failed ? 1 : 0));
}

void make_and_discard(PageKind const& kind) {
    HeadlessHost host(page_size);
    kind.fill(host.control());
}

void check_making(PageKind const& kind, Which which) {
    const Pixels expected = Sheet(kind).refreshed();
    for_each_allocation(
        which, [&] { make_and_discard(kind); },
        [&](std::size_t n) {
            Told told;
            with_failure(n, told, [&] {
                HeadlessHost host(page_size);
                host.control().set_events(&told);
                kind.fill(host.control());
            });
        });
    for_each_allocation(
        which, [&] { Sheet(kind).filled_anew(kind); },
        [&](std::size_t n) {
            Sheet sheet(kind);
            with_failure(n, sheet.told, [&] {
                sheet.page.Reset();
                kind.fill(sheet.page);
            });
            CHECK(sheet.filled_anew(kind) == expected);
        });
}

void check_first_refresh(PageKind const& kind, Which which) {
    const Pixels expected = Sheet(kind).refreshed();
    Sheet counted(kind);
    for_each_allocation(
        which, [&] { counted.page.Refresh(); },
        [&](std::size_t n) {
            Sheet sheet(kind);
            with_failure(n, sheet.told, [&] { sheet.page.Refresh(); });
            CHECK(sheet.refreshed() == expected);
        });
}

void check_further_refreshes(PageKind const& kind, Which which) {
    Sheet sheet(kind);
    const Pixels expected = sheet.refreshed();
    auto const resize = [&] {
        sheet.host.resize_picture({page_size.width + 40, page_size.height + 30});
        sheet.host.resize_picture(page_size);
    };
    for_each_allocation(which, resize, [&](std::size_t n) {
        sheet.told.times = 0;
        with_failure(n, sheet.told, resize);
        sheet.host.resize_picture(page_size);
        CHECK(sheet.refreshed() == expected);
    });
}

void mouse(HeadlessHost& host, host::MouseKind kind, Point place, std::uint8_t button = host::left_button) {
    host.input(host::MouseInput{kind, button, 0, place});
}

void drag(HeadlessHost& host, Point from, Point to, std::uint8_t button = host::left_button) {
    mouse(host, host::MouseKind::Move, from, 0);
    mouse(host, host::MouseKind::Press, from, button);
    mouse(host, host::MouseKind::Move, {(from.x + to.x) / 2, (from.y + to.y) / 2}, button);
    mouse(host, host::MouseKind::Move, to, button);
    mouse(host, host::MouseKind::Release, to, button);
}

/// What a person can do with mouse, wheel and keys; one gesture after the other whatever happens to the
/// first.
void do_gestures(HeadlessHost& host, Told& told) {
    Point const in_plot{1300, 1000}, beside{1700, 1400}, border{100, 1000};
    auto const each = [&](auto... gestures) { (told.listen(gestures), ...); };
    each([&] { drag(host, in_plot, beside); }, [&] { drag(host, in_plot, beside, host::middle_button); },
         [&] {
             drag(host, border, {400, 1100});
         },
         [&] {
             drag(host, {2500, 500}, {2000, 900});
         },
         [&] { drag(host, in_plot, beside, host::right_button); },
         [&] {
             host.input(host::WheelInput{2, 0, 0, in_plot});
         },
         [&] {
             host.input(host::PinchInput{1.5, in_plot});
         },
         [&] {
             host.input(host::ScrollInput{host::Bar::HScroll1, 300, false});
         },
         [&] { mouse(host, host::MouseKind::DoubleClick, in_plot); }, [&] { host.control().SetCrossHair(2); },
         [&] { mouse(host, host::MouseKind::Move, beside, 0); });
    for (host::Key const key : {host::Key::Left, host::Key::Plus, host::Key::Tab, host::Key::Home})
        told.listen([&] { host.input(host::KeyInput{0, 0, key}); });
    for (std::uint8_t const shift : {host::ctrl_key, host::alt_key})
        told.listen([&] { host.input(host::KeyInput{0, shift, host::Key::Left}); });
}

void check_gestures(PageKind const& kind, Which which) {
    Sheet sheet(kind);
    const Pixels expected = sheet.filled_anew(kind);
    for_each_allocation(
        which, [&] { do_gestures(sheet.host, sheet.told); },
        [&](std::size_t n) {
            CHECK(sheet.filled_anew(kind) == expected);
            with_failure(n, sheet.told, [&] { do_gestures(sheet.host, sheet.told); });
        });
    CHECK(sheet.filled_anew(kind) == expected);
}

void check_saving(PageKind const& kind, Which which) {
    const test::TemporaryFolder folder;
    Sheet sheet(kind);
    const Pixels expected = sheet.refreshed();
    std::size_t files = 0;
    for (char const* const name : {"page.png", "page.bmp", "page.svg", "page.pdf"}) {
        CAPTURE(std::string(name));
        const std::string file = (folder.path() / name).string();
        ++files;
        sheet.page.SaveImage(file);
        auto const size = std::filesystem::file_size(file);
        auto const save = [&] { sheet.page.SaveImage(file); };
        for_each_allocation(which, save, [&](std::size_t n) {
            with_failure(n, sheet.told, save);
            CHECK(std::filesystem::file_size(file) == size);
            auto const there = std::filesystem::directory_iterator(folder.path());
            CHECK(static_cast<std::size_t>(std::distance(begin(there), end(there))) == files);
        });
        CHECK(sheet.refreshed() == expected);
    }
    sheet.host.print_to(folder.path() / "sheet.pdf");
    auto const give_away = [&] {
        sheet.page.CopyToClipboard();
        sheet.page.PrintImage();
    };
    for_each_allocation(which, give_away, [&](std::size_t n) { with_failure(n, sheet.told, give_away); });
    CHECK(sheet.refreshed() == expected);
}

void check_all(Which which) {
    for (PageKind const& kind : page_kinds) {
        CAPTURE(std::string(kind.name));
        SUBCASE("made") {
            check_making(kind, which);
        }
        SUBCASE("drawn first") {
            check_first_refresh(kind, which);
        }
        SUBCASE("drawn again") {
            check_further_refreshes(kind, which);
        }
        SUBCASE("dragged") {
            check_gestures(kind, which);
        }
        SUBCASE("saved") {
            check_saving(kind, which);
        }
    }
}

} // namespace

TEST_CASE("a coverage mask without memory has no size, and gets it when there is some") {
    for (std::size_t n : {1, 2}) {
        raster::CoverageMask mask;
        const FailingAllocation failing(n);
        CHECK_THROWS_AS(mask.resize(300, 200), std::bad_alloc);
        CHECK(mask.width() == 0);
        CHECK(mask.height() == 0);
        mask.resize(300, 200);
        mask.fill({0, 0, 300, 200});
        CHECK(mask.row(199)[299] == 255);
    }
}

TEST_CASE("memory that ends here and there is told once, and the next refresh shows the page") {
    check_all(Which::Sample);
}

TEST_CASE("memory that ends at any allocation" * doctest::skip()) {
    check_all(Which::Every);
}
