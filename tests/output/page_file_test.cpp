#include "pages.h"
#include "png_file.h"
#include "temporary_folder.h"

#include <doctest/doctest.h>

#include <csignal>

#include <sys/resource.h>
#include <unistd.h>

using namespace qv;
using namespace qv::test;
using headless::HeadlessHost;
namespace files = std::filesystem;

namespace {

/// No file can grow beyond this size, as on a disk without room.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit limit = before_;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    FullDisk(FullDisk const&) = delete;
    FullDisk& operator=(FullDisk const&) = delete;

private:
    void (*handler_)(int);
    rlimit before_{};
};

/// Nobody may write into the folder or file, not even the administrator, who writes as somebody else
/// meanwhile.
class ReadOnly {
public:
    explicit ReadOnly(files::path const& place) : place_(place) {
        files::permissions(place, files::perms(0555));
        if (geteuid() == 0) REQUIRE(seteuid(65534) == 0);
    }
    ~ReadOnly() {
        if (getuid() == 0) CHECK(seteuid(0) == 0);
        files::permissions(place_, files::perms(0755));
    }
    ReadOnly(ReadOnly const&) = delete;
    ReadOnly& operator=(ReadOnly const&) = delete;

private:
    files::path place_;
};

} // namespace

TEST_CASE("a name's ending chooses the format, whatever the case of its letters") {
    const TemporaryFolder folder;
    HeadlessHost host({101, 67});
    draw_dark_page(host.control());
    struct Row {
        char const* name;
        std::string_view begins_with;
    };
    for (Row const& row : {Row{"page.png", "\x89PNG"}, Row{"PAGE.PNG", "\x89PNG"}, Row{"page.bmp", "BM"},
                           Row{"page", "BM"}, Row{"page.jpg", "BM"}, Row{"png", "BM"}}) {
        CAPTURE(row.name);
        const files::path file = folder.path() / row.name;
        host.control().SaveImage(file.string());
        CHECK(content_of(file).starts_with(row.begins_with));
    }
    CHECK(png_density(folder.path() / "page.png", 0) == 3780);
}

TEST_CASE("a page that cannot be written is reported, and the old file stays as it was") {
    const TemporaryFolder folder;
    HeadlessHost host({200, 150});
    Errors errors;
    draw_dark_page(host.control());
    host.control().set_events(&errors);
    for (char const* name : {"old", "old.png"}) {
        const files::path old = folder.file(name, "what was there before");
        errors.heard.clear();
        {
            const FullDisk full(100);
            host.control().SaveImage(old.string());
        }
        {
            const ReadOnly read_only(folder.path());
            host.control().SaveImage(old.string());
        }
        host.control().SaveImage((folder.path() / "none" / name).string());
        host.control().SaveImage("");
        REQUIRE(errors.heard.size() == 4);
        for (std::size_t i = 0; char const* number : {"61", "70", "76"}) {
            CAPTURE(errors.heard[i]);
            CHECK(errors.heard[i].starts_with("Error " + std::string(number)
                                              + " has occured in qvGraph.ocx, SaveImage: Cannot write "));
            CHECK(errors.heard[i++].find(name) != std::string::npos);
        }
        CHECK(content_of(old) == "what was there before");
    }
    CHECK(std::distance(files::directory_iterator(folder.path()), files::directory_iterator()) == 2);
}

TEST_CASE("a file that may not be written is reported; another keeps its permissions and its long name") {
    const TemporaryFolder folder;
    files::permissions(folder.path(), files::perms::all);
    HeadlessHost host({20, 10});
    Errors errors;
    host.control().set_events(&errors);
    const files::path file = folder.file(std::string(251, 'n') + ".bmp", "old");
    {
        const ReadOnly read_only(file);
        host.control().SaveImage(file.string());
    }
    REQUIRE(errors.heard.size() == 1);
    CHECK(errors.heard[0].starts_with("Error 70 has occured in qvGraph.ocx, SaveImage: Cannot write "));
    CHECK(content_of(file) == "old");
    files::permissions(file, files::perms(0640));
    host.control().SaveImage(file.string());
    CHECK(content_of(file).starts_with("BM"));
    CHECK(files::status(file).permissions() == files::perms(0640));
    CHECK(std::distance(files::directory_iterator(folder.path()), files::directory_iterator()) == 1);
}

TEST_CASE("a link stays a link and its file is replaced; a device is left alone") {
    const TemporaryFolder folder;
    HeadlessHost host({20, 10});
    Errors errors;
    host.control().set_events(&errors);
    const files::path file = folder.file("file", "old");
    const files::path link = folder.path() / "link";
    files::create_symlink(file, link);
    host.control().SaveImage(link.string());
    CHECK(files::is_symlink(link));
    CHECK(content_of(file).starts_with("BM"));
    host.control().SaveImage("/dev/null");
    REQUIRE(errors.heard.size() == 1);
    CHECK(errors.heard[0].starts_with(
        "Error 75 has occured in qvGraph.ocx, SaveImage: Cannot write /dev/null"));
}

TEST_CASE("a link to a file that is not there yet leads to it; links in a circle lead nowhere") {
    const TemporaryFolder folder;
    HeadlessHost host({20, 10});
    Errors errors;
    host.control().set_events(&errors);
    files::create_directory(folder.path() / "other");
    const files::path link = folder.path() / "link", second = folder.path() / "other" / "second";
    files::create_symlink("other/second", link);
    files::create_symlink("new.bmp", second);
    host.control().SaveImage(link.string());
    CHECK(files::is_symlink(link));
    CHECK(files::is_symlink(second));
    CHECK(content_of(folder.path() / "other" / "new.bmp").starts_with("BM"));
    CHECK(errors.heard.empty());
    files::create_symlink("circle", folder.path() / "circle");
    host.control().SaveImage((folder.path() / "circle").string());
    files::create_symlink("none/file", folder.path() / "astray");
    host.control().SaveImage((folder.path() / "astray").string());
    REQUIRE(errors.heard.size() == 2);
    CHECK(errors.heard[0].starts_with("Error 75 has occured in qvGraph.ocx, SaveImage: Cannot write "));
    CHECK(errors.heard[1].starts_with("Error 76 has occured in qvGraph.ocx, SaveImage: Cannot write "));
    CHECK(files::is_symlink(folder.path() / "astray"));
}

TEST_CASE("a name with a zero character touches no file") {
    const TemporaryFolder folder;
    HeadlessHost host({20, 10});
    Errors errors;
    host.control().set_events(&errors);
    const files::path file = folder.file("page.png", "old");
    host.control().SaveImage(file.string() + std::string("\0.bmp", 5));
    CHECK(content_of(file) == "old");
    REQUIRE(errors.heard.size() == 1);
    CHECK(errors.heard[0]
          == "Error 75 has occured in qvGraph.ocx, SaveImage: Cannot write a file whose name holds a zero "
             "character, after \""
                 + file.string() + "\"");
}

TEST_CASE(
    "raised and lowered text in a file of shapes: pieces of text in two sizes, each where it was drawn") {
    const TemporaryFolder folder;
    HeadlessHost host({400, 300});
    draw_dark_page(host.control());
    auto const saved = [&](bool rich) {
        host.control().RichText(rich);
        host.control().GraphTitleStyle({.Title = "CO_{2}"});
        host.control().Refresh();
        const files::path file = folder.path() / "page.svg";
        host.save(file.string());
        return content_of(file);
    };
    CHECK(saved(false).find(">CO_{2}<") != std::string::npos);
    const std::string svg = saved(true);
    auto const base = svg.find(">CO<"), index = svg.find(">2<", base);
    REQUIRE(base != std::string::npos);
    REQUIRE(index != std::string::npos);
    auto const number_before = [&](std::size_t end, std::string_view name) {
        return std::stod(svg.substr(svg.rfind(name, end) + name.size()));
    };
    CHECK(number_before(index, "font-size=\"") == doctest::Approx(0.7 * number_before(base, "font-size=\"")));
    CHECK(number_before(index, " y=\"") > number_before(base, " y=\""));
    CHECK(number_before(index, " x=\"")
          == doctest::Approx(number_before(base, " x=\"") + number_before(base, "textLength=\""))
                 .epsilon(0.01));
}
