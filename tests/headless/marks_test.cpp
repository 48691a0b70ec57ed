// What lies over the page for a person's eyes only: cross-hair, rubber band and reading mark. Whatever was
// done, they go without a trace, and nothing that leaves the page holds them.
#include "Person.h"
#include "printed_sheet.h"

#include <doctest/doctest.h>

#include <array>
#include <fstream>
#include <iterator>
#include <random>

using namespace qv;
using namespace qv::testing;
using host::alt_key;
using host::ctrl_key;
using host::Key;
using host::left_button;
using host::right_button;

namespace {

using Pixels = std::vector<std::uint32_t>;

struct MarkingPerson : PersonAtGraph {
    bool key(Key key, std::uint8_t shift = 0) { return host.input(host::KeyInput{0, shift, key}); }
    std::vector<std::uint8_t> copied() {
        page.CopyToClipboard();
        return host.clipboard().at("image/png");
    }
};

/// How many columns and rows of the page hold inverted pixels, and whether every changed pixel is inverted.
struct Lines {
    int columns = 0, rows = 0;
    bool only_inverted = true;
    bool operator==(Lines const&) const = default;
};
Lines inverted_lines(raster::RasterSurface const& page, Pixels const& before, Pixels const& after) {
    constexpr int many = 50; // pixels; a crossing line has one in each
    std::vector<int> columns(static_cast<std::size_t>(page.width())),
        rows(static_cast<std::size_t>(page.height()));
    Lines lines;
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (before[i] == after[i]) continue;
        lines.only_inverted = lines.only_inverted && (before[i] ^ after[i]) == 0xFFFFFF;
        ++columns[i % columns.size()];
        ++rows[i / columns.size()];
    }
    auto const is_line = [&](int count) { return count > many; };
    lines.columns = static_cast<int>(std::ranges::count_if(columns, is_line));
    lines.rows = static_cast<int>(std::ranges::count_if(rows, is_line));
    return lines;
}

/// Two graphs that overlap, and a person who does anything to them that needs no redraw by the host.
class RestlessPerson : public Person {
public:
    explicit RestlessPerson(unsigned seed) : random_(seed) {
        host.resize_picture({320, 240});
        for (float const place : {5.0F, 40.0F}) {
            page.NewGraph("graph", 0, 10, 0, 10);
            page.GraphPosition({.Left = place, .Top = place, .Width = 55, .Height = 55});
            page.NewDataSet("data");
            for (int i = 0; i <= 10; ++i) page.AddDataPoint(i, i * i / 10.0);
        }
        page.Refresh();
    }

    void act() {
        switch (below(16)) {
        case 0: return page.SetCrossHair(below(6));
        case 1: return page.SetSelectedGraph(below(3) - 1);
        case 2: return press_at(place_, left_button, alt_key);
        case 3: return press_at(place_, right_button, alt_key);
        case 4: return press_at(some_place(), any_button(), static_cast<std::uint8_t>(below(8)));
        case 5: return press_at(some_place(), left_button, 0);
        case 6:
        case 7: return release(place_ = some_place(), any_button(), some_shift());
        case 8: return type();
        case 9: return static_cast<void>(host.input(host::WheelInput{below(5) - 2.0, 0, 0, some_place()}));
        case 10: return page.RefreshGraphs(-1, below(2) == 0);
        case 11: return page.CopyToClipboard();
        case 12: return host.resize_picture({300 + below(3), 240});
        default: return move(place_ = some_place(), below(2) ? std::uint8_t{0} : held_, some_shift());
        }
    }

    /// Ends what is going on; a cross-hair and a reading mark may stay.
    void let_go() {
        release(place_, left_button);
        release(place_, host::middle_button);
    }
    /// Takes the marks away as a person does, without a redraw.
    void erase() {
        page.SetCrossHair(0);
        host.input(host::KeyInput{0, 0, Key::Escape});
    }
    std::vector<std::uint8_t> copied() {
        page.CopyToClipboard();
        return host.clipboard().at("image/png");
    }

private:
    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    Point some_place() { return {below(4800) - 0.0, below(3600) - 0.0}; }
    std::uint8_t some_shift() { return below(4) ? std::uint8_t{0} : static_cast<std::uint8_t>(below(8)); }
    std::uint8_t any_button() {
        return std::array{left_button, right_button, host::middle_button}[static_cast<std::size_t>(below(3))];
    }
    void press_at(Point place, std::uint8_t button, std::uint8_t shift) {
        place_ = place;
        held_ = button;
        press(place, button, shift);
    }
    void type() {
        bool const reads = below(2) == 0;
        host.input(host::KeyInput{0, reads ? ctrl_key : std::uint8_t{0},
                                  reads ? static_cast<Key>(1 + below(4)) : static_cast<Key>(1 + below(9))});
    }

    std::mt19937 random_;
    Point place_;
    std::uint8_t held_ = 0;
};

} // namespace

TEST_CASE("a cross-hair appears on hovering before any press, in the lines of styles 0 to 2 only") {
    struct Row {
        int set; // the argument of SetCrossHair
        Lines lines;
    };
    for (Row const row : {Row{1, {1, 1}}, Row{2, {1, 0}}, Row{3, {0, 1}}, Row{4, {0, 0}}, Row{9, {0, 0}}}) {
        CAPTURE(row.set);
        MarkingPerson person;
        const Pixels before = person.pixels();
        person.page.SetCrossHair(static_cast<std::int16_t>(row.set));
        person.move(person.in_plot(0.5, 0.5));
        const Pixels with = person.pixels();
        CHECK(inverted_lines(person.host.picture(), before, with) == row.lines);
        person.move(person.in_plot(0.25, 0.75));
        CHECK(inverted_lines(person.host.picture(), before, person.pixels()) == row.lines);
        person.move(person.in_plot(0.5, 0.5));
        person.page.Refresh();
        CHECK(person.pixels() == with); // it stays through a redraw
        person.move({1, 1});
        CHECK(person.pixels() == before);
    }
}

TEST_CASE("at rest a cross-hair follows a change of style and goes with its switch") {
    MarkingPerson person;
    const Pixels before = person.pixels();
    person.page.SetCrossHair(1);
    person.move(person.in_plot(0.5, 0.5));
    person.page.SetCrossHair(3);
    CHECK(inverted_lines(person.host.picture(), before, person.pixels()) == Lines{0, 1});
    person.page.SetCrossHair(0);
    CHECK(person.pixels() == before);
    CHECK(person.state.CrossHairStyle == 2);
    person.press(person.in_plot(0.25, 0.5), left_button, alt_key);
    person.release(person.in_plot(0.25, 0.5), left_button, alt_key);
    CHECK(inverted_lines(person.host.picture(), before, person.pixels()) == Lines{0, 1});
    person.press(person.in_plot(0.25, 0.5), right_button, alt_key);
    CHECK(inverted_lines(person.host.picture(), before, person.pixels()) == Lines{1, 1});
    person.press(person.in_plot(0.75, 0.5), left_button, alt_key);
    CHECK(person.pixels() == before);
}

TEST_CASE("what follows the pointer leaves the page with it, and no mark of its own is left") {
    MarkingPerson person;
    const Pixels before = person.pixels();
    person.page.SetCrossHair(1);
    const Point place = person.in_plot(0.5, 0.5);
    person.move(place);
    CHECK(person.pixels() != before);
    CHECK(person.state.Label1.Visible);
    double const x = person.state.PointerX;
    for (int i = 0; i < 2; ++i) {
        CHECK(person.host.input(host::LeaveInput{}));
        CHECK(person.pixels() == before);
        CHECK_FALSE(person.state.Label1.Visible);
        CHECK(person.state.PointTooltip.empty());
        CHECK(person.state.PointerX == x);
        person.page.Refresh();
    }
    person.move(place);
    CHECK(inverted_lines(person.host.picture(), before, person.pixels()) == Lines{1, 1});
    CHECK(person.state.Label1.Visible);

    person.key(Key::Right, ctrl_key); // reading by keys goes on without a pointer
    std::string const point = person.state.Label1.Caption;
    person.host.input(host::LeaveInput{});
    CHECK(person.state.Label1.Visible);
    CHECK(person.state.Label1.Caption == point);
    person.page.Reset();
    person.host.input(host::LeaveInput{});
    CHECK(person.heard.errors.empty());
}

TEST_CASE("a rubber band stays through redraws and leaves with the picture as it is then") {
    MarkingPerson person;
    person.press(person.in_plot(0.2, 0.2));
    person.move(person.in_plot(0.6, 0.6), left_button);
    person.page.AddDataPoint(5, 9);
    person.page.Refresh();
    const Pixels with = person.pixels();
    person.state.NoRedraw = true;
    person.key(Key::Escape); // takes it back although nothing is redrawn
    person.state.NoRedraw = false;
    const Pixels without = person.pixels();
    CHECK(inverted_lines(person.host.picture(), with, without) == Lines{2, 2});
    person.page.Refresh();
    CHECK(person.pixels() == without);
}

TEST_CASE("saved, printed and copied pictures hold no marks, and the page keeps them") {
    const test::TemporaryFolder folder;
    MarkingPerson person;
    person.host.print_to(folder.path() / "sheet.pdf");
    const Pixels bare = person.pixels();
    person.key(Key::Right, ctrl_key); // the first point is marked
    person.key(Key::Right, ctrl_key);
    person.page.SetCrossHair(1);
    const Point place = person.in_plot(0.4, 0.4);
    person.press(place);
    const Pixels with_two = person.pixels();
    person.move(person.in_plot(0.8, 0.7), left_button);
    const Pixels with_band = person.pixels();
    CHECK(with_two != with_band);
    CHECK(with_band != bare);

    for (std::string const name : {"page.png", "page.bmp", "page.svg", "page.pdf"}) {
        CAPTURE(name);
        PersonAtGraph other; // nothing was ever drawn over this page
        person.page.SaveImage((folder.path() / name).string());
        other.page.SaveImage((folder.path() / ("bare " + name)).string());
        CHECK(test::content_of(folder.path() / name) == test::content_of(folder.path() / ("bare " + name)));
    }
    PersonAtGraph other;
    other.page.CopyToClipboard();
    person.page.CopyToClipboard();
    CHECK(person.host.clipboard() == other.host.clipboard());
    person.page.PrintImage();
    CHECK(test::picture_in(folder.path() / "sheet.pdf").pixels == bare);
    person.host.save(folder.path() / "host.png");
    CHECK(test::content_of(folder.path() / "host.png") == test::content_of(folder.path() / "page.png"));
    CHECK(person.heard.errors.empty());

    CHECK(person.pixels() == with_band);
    person.release(place);
    person.key(Key::Escape);
    person.page.SetCrossHair(0);
    CHECK(person.pixels() == bare);
}

TEST_CASE("after any clicks, bands, styles, gestures and graphs the erased page is the fresh page") {
    constexpr int rounds = 150, acts = 25;
    RestlessPerson person(12);
    int marked = 0;
    for (int round = 0; round < rounds; ++round) {
        CAPTURE(round);
        for (int i = 0; i < acts; ++i) person.act();
        person.let_go();
        const Pixels with = person.pixels();
        auto const copied = person.copied();
        CHECK(person.pixels() == with);
        person.erase();
        const Pixels erased = person.pixels();
        marked += erased != with;
        CHECK(person.copied() == copied);
        person.page.Refresh();
        REQUIRE(person.pixels() == erased);
    }
    CHECK(marked > rounds / 4);
    CHECK(person.heard.errors.empty());
}
