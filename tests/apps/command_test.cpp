// Runs the program as a person does.
#include "printed_sheet.h"
#include "temporary_folder.h"

#include <doctest/doctest.h>

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <iterator>

using qv::test::TemporaryFolder;

namespace {

struct Outcome {
    int status = 0;
    std::string errors; // what it wrote on standard error
    std::string output; // on standard output
};

// In the folder, without a display unless a platform for windows is named.
Outcome run(TemporaryFolder const& folder, std::string const& arguments, std::string const& platform = "",
            std::string const& before = "") {
    const TemporaryFolder output;
    auto const errors = output.path() / "errors";
    const std::string command = "cd '" + folder.path().string() + "' && " + before
                                + " env -u DISPLAY -u WAYLAND_DISPLAY QT_QPA_PLATFORM='" + platform
                                + "' '" QV_PLOT_PROGRAM "' " + arguments + " >'"
                                + (output.path() / "output").string() + "' 2>'" + errors.string() + "'";
    int const result = std::system(command.c_str());
    return {WIFEXITED(result) ? WEXITSTATUS(result) : -1, qv::test::content_of(errors),
            qv::test::content_of(output.path() / "output")};
}

std::size_t files_in(TemporaryFolder const& folder) {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder.path()),
                                                  std::filesystem::directory_iterator()));
}

} // namespace

TEST_CASE("what is wrong is one line and status 2, and leaves no file") {
    const TemporaryFolder folder;
    folder.file("a.csv", "date,n,m\n2020-01-01,1,\n2020-01-02,x2,\n");
    folder.file("b.csv", "x,n\n-1,-2\n0,-3\n");
    folder.file("days.csv", "date,n\n2020-01-01,1\nyesterday,2\n");
    folder.file("words.csv", "a,b\nx,y\n");
    folder.file("open.csv", "when,n\n05/01/24,1\n06/02/24,2\n");
    std::filesystem::create_directory(folder.path() / "folder.png");
    struct {
        char const* arguments;
        char const* line;
    } const table[]{
        {"--out p.png", "no data file is named; qvplot --help shows how"},
        {"none.csv --out p.png", "none.csv: cannot be opened; check the name and its permissions"},
        {"a.csv --x day --out p.png", "a.csv: has no column \"day\"; its columns are \"date\", \"n\", \"m\""},
        {"a.csv --y N --out p.png", "a.csv: has no column \"N\"; its columns are \"date\", \"n\", \"m\""},
        {"a.csv b.csv --x n --y z --out p.png",
         "a.csv: has no column \"z\"; its columns are \"date\", \"n\", \"m\""},
        {"a.csv --y m --out p.png", "a.csv: column \"m\" holds no number beside an x"},
        {"words.csv --out p.png",
         "words.csv: has no column of numbers beside x; name one with --y, or see --explain"},
        {"open.csv --out p.png", "open.csv: column \"when\": \"05/01/24\" can be read in two ways; say "
                                 "--date-order dmy or --date-order mdy"},
        {"a.csv - - --out p.png", "-: standard input can be read once"},
        {"a.csv b.csv --x n --y m --follow --out p.png",
         "--follow: one file or - can be followed, without functions"},
        {"b.csv --style n:wavy --out p.png",
         "--style: \"wavy\" is no style; there are \"lines\", \"symbols\", \"bars\", \"steps\", \"area\", "
         "\"hist\", \"heat\", \"box\", \"solid\", \"dashed\", \"dotted\", \"dashdot\", \"thin\", \"thick\", "
         "\"circles\", \"squares\", \"diamonds\", \"triangles\", \"plus\", \"crosses\", \"left\", \"right\", "
         "\"width=3\" and colours"},
        {"b.csv --colors blue,#12345 --out p.png",
         "--colors: \"#12345\" is no colour; give one such as blue or #0B6BCB"},
        {"b.csv --style m:steps --out p.png", "--style: no column \"m\" is drawn"},
        {"b.csv --look neon --out p.png", "--look: \"neon\" is none of light, dark, print, classic"},
        {"b.csv --hline high --out p.png", "--hline: \"high\" is not VALUE or VALUE=TEXT, such as 5=limit"},
        {"b.csv --separator ,, --out p.png",
         "--separator: \",,\" is not one character; give , or ; or tab, blank"},
        {"--help nonsense", "--help: there is no topic \"nonsense\"; qvplot --help lists them"},
        {"b.csv --options none.ini --out p.png",
         "none.ini was not readable (missing?); qvplot --help shows the options"},
        {"days.csv --x date --log-x --y n --out p.png", "--log-x: column \"date\" holds dates"},
        {"b.csv --log-y --out p.png", "column \"n\" has no positive value for a logarithmic axis"},
        {"b.csv --size 10x10 --out p.png",
         "--size: \"10x10\" is not a width and a height of 64 to 8192 pixels, such as 1200x800 or 16x10cm"},
        {"b.csv --size 800 --out p.png",
         "--size: \"800\" is not a width and a height of 64 to 8192 pixels, such as 1200x800 or 16x10cm"},
        {"b.csv --x-range 1:0 --out p.png", "--x-range: \"1:0\" is not FROM:TO, the smaller number or date "
                                            "first, such as 0:10 or 2010-01-01:2010-12-31"},
        {"b.csv --x-range 3:4 --out p.png", "column \"n\" has no point within --x-range"},
        {"b.csv --bars --lines --out p.png", "--lines excludes --bars; qvplot --help shows the options"},
        {"b.csv --colour red --out p.png",
         "The following argument was not expected: --colour; qvplot --help shows the options"},
        {"b.csv --out p.gif",
         "p.gif: no such format; give it a name ending in .png, .svg, .pdf or .bmp, or a --format"},
        {"b.csv --out none/p.png", "Cannot write none/p.png: No such file or directory"},
        {"b.csv --out folder.png", "Cannot write folder.png: Is a directory"},
        {"b.csv", "there is no display for a window; write a file with --out FILE.png"},
    };
    const std::size_t before = files_in(folder);
    for (auto const& row : table) {
        CAPTURE(row.arguments);
        const Outcome outcome = run(folder, row.arguments);
        CHECK(outcome.status == 2);
        CHECK(outcome.errors == std::string("qvplot: ") + row.line + "\n");
        CHECK(files_in(folder) == before);
    }
}

TEST_CASE("a formula may begin with a minus sign") {
    const TemporaryFolder folder;
    for (char const* formula : {"-x^2 --x 0:3", "'-(x+1)' --x 1", "--x 2 -x", "-5", "--5", "'- 2*3'",
                                "--x=1:2 '-f(x)' --define 'f(a)=-a'", "--x 1 -- -x^2", "--x -3:-1 -X"}) {
        CAPTURE(formula);
        const Outcome outcome = run(folder, std::string("eval ") + formula);
        CHECK(outcome.errors == "");
        CHECK(outcome.status == 0);
    }
    CHECK(run(folder, "--function -x^2 --out p.png").status == 0);
    CHECK(run(folder, "eval --defin 'f(a)=a' 1").errors.find("--defin") != std::string::npos);
    CHECK(run(folder, "eval -h").status == 0);
    CHECK(run(folder, "eval -x+ --x 1").errors.find("Unexpected end of expression") != std::string::npos);
}

#ifdef QV_PLOT_WINDOW
TEST_CASE("the window's module is found beside the program and reports as the program does") {
    const TemporaryFolder folder;
    const Outcome missing = run(folder, "none.csv", "offscreen");
    CHECK(missing.status == 2);
    CHECK(missing.errors == "qvplot: none.csv: cannot be opened; check the name and its permissions\n");
    const Outcome no_display = run(folder, "none.csv --show", "nonsense");
    CHECK(no_display.status == 2);
    CHECK(no_display.errors == "qvplot: the display cannot be used; write a file with --out FILE.png\n");
}

// Runs where there is a print server whose printer writes to this file.
TEST_CASE("the page is printed on the sheet held sideways") {
    char const* const printed = std::getenv("QV_PRINTED_FILE");
    if (!printed) return;
    const TemporaryFolder folder;
    folder.file("b.csv", "x,n\n1,2\n2,3\n");
    const Outcome outcome = run(folder, "b.csv --print --landscape --printer page --size 800x400");
    CHECK(outcome.errors.empty());
    REQUIRE(outcome.status == 0);
    // The queue's filters run in processes of their own; they are done when no job is left.
    qv::test::run("for i in $(seq 300); do test -z \"$(lpstat -o)\" && test -s '" + std::string(printed)
                  + "' && exit 0; sleep 0.2; done; exit 1");
    const qv::test::PrintedSheet sheet = qv::test::measure_sheet(printed);
    // The printer turns the sheet back: what ran across it now runs along its longer side, inside margins.
    CHECK(sheet.ink_mm.height / sheet.ink_mm.width == doctest::Approx(2).epsilon(0.15));
    CHECK(sheet.ink_mm.height > 180);
    CHECK(sheet.ink_mm.height <= sheet.height_mm - 50);
}

TEST_CASE("printing without a printer says so, display or not") {
    if (std::getenv("QV_PRINTED_FILE")) return;
    const TemporaryFolder folder;
    folder.file("b.csv", "x,n\n1,2\n2,3\n");
    const Outcome none = run(folder, "b.csv --print");
    CHECK(none.status == 2);
    CHECK(none.errors == "qvplot: no printer is the default one; name one with --printer (there is none)\n");
    const Outcome unknown = run(folder, "b.csv --print --printer 'Upstairs' --landscape");
    CHECK(unknown.errors == "qvplot: --printer: no printer is called \"Upstairs\" (there is none)\n");
    CHECK(run(folder, "b.csv --landscape --out p.png").errors
          == "qvplot: --landscape requires --print; qvplot --help shows the options\n");
}
#endif

TEST_CASE("a file that cannot be replaced stays as it was") {
    const TemporaryFolder folder;
    folder.file("b.csv", "x,n\n1,2\n\"2,x\n");
    folder.file("p.png", "an earlier page");
    CHECK(run(folder, "b.csv --out p.png").status == 2);
    CHECK(qv::test::content_of(folder.path() / "p.png") == "an earlier page");
}

TEST_CASE("a page is a PNG file of the size asked for") {
    const TemporaryFolder folder;
    folder.file("b.csv", "x,n\n1,2\n2,-3\n3,5\n");
    const Outcome outcome = run(folder, "--y n b.csv --log-y --title 'T \u00e9' --size 640x360 --out p.png");
    CHECK(outcome.status == 0);
    CHECK(outcome.errors
          == "qvplot: left out of \"n\": 1 point without a positive value for a logarithmic axis\n");
    const std::string png = qv::test::content_of(folder.path() / "p.png");
    CHECK(png.substr(12, 12) == std::string("IHDR\0\0\2\x80\0\0\1\x68", 12));
    CHECK(run(folder, "--help").status == 0);
}

TEST_CASE("pages come from pipes and go into pipes, in the format asked for") {
    const TemporaryFolder folder;
    folder.file("b.csv", "x,n\n1,2\n2,3\n3,5\n");
    struct {
        char const *format, *start;
    } const formats[]{
        {"", "\x89PNG"}, {"--format svg", "<svg"}, {"--format pdf", "%PDF-"}, {"--format bmp", "BM"}};
    for (auto const& row : formats) {
        CAPTURE(row.format);
        const Outcome outcome = run(folder, std::string("- --out - ") + row.format, "", "cat b.csv |");
        CHECK(outcome.status == 0);
        CHECK(outcome.errors.empty());
        CHECK(outcome.output.starts_with(row.start));
    }
    // The same page, however it is read and written.
    const std::string page = run(folder, "b.csv --out -").output;
    REQUIRE(run(folder, "b.csv --out page --format png").status == 0);
    CHECK(qv::test::content_of(folder.path() / "page") == page);
    // A link stays one, and a pipe gets the page.
    folder.file("target.png", "an earlier page");
    std::filesystem::create_symlink("target.png", folder.path() / "link.png");
    REQUIRE(run(folder, "b.csv --out link.png").status == 0);
    CHECK(std::filesystem::is_symlink(folder.path() / "link.png"));
    CHECK(qv::test::content_of(folder.path() / "target.png") == page);
    REQUIRE(
        run(folder, "b.csv --out pipe.png", "", "mkfifo pipe.png && (cat pipe.png > read.png &) &&").status
        == 0);
    CHECK(std::filesystem::is_fifo(folder.path() / "pipe.png"));
    CHECK(run(folder, "- --out - --follow", "", "cat b.csv |").status == 2);
    // What it took the columns for goes where the page does not.
    CHECK(run(folder, "b.csv --explain").output.starts_with("b.csv: utf-8, separated by"));
    CHECK(run(folder, "b.csv --explain --out -").errors.starts_with("b.csv: utf-8, separated by"));
}

TEST_CASE("a pipe that is followed ends as the page of all its rows, or of the latest") {
    const TemporaryFolder folder;
    std::string all = "x,n\n", latest = "x,n\n";
    for (int i = 0; i < 200000; ++i) {
        const std::string row = std::to_string(i) + "," + std::to_string(i * 37 % 1001) + "\n";
        all += row;
        if (i >= 199000) latest += row;
    }
    folder.file("all.csv", all);
    folder.file("latest.csv", latest);
    auto const page_of = [&](std::string const& arguments) {
        CHECK(run(folder, arguments + " --out p.png", "", "cat all.csv |").errors == "");
        return qv::test::content_of(folder.path() / "p.png");
    };
    CHECK(page_of("- --follow") == page_of("all.csv"));
    CHECK(run(folder, "- --follow --out p.png <all.csv").status == 0);
    CHECK(page_of("- --follow --latest 1000") == page_of("latest.csv"));
    CHECK(page_of("- --follow --steps --y 2") == page_of("all.csv --steps"));
}

TEST_CASE("a file of options says what the command line would") {
    const TemporaryFolder folder;
    folder.file("b.csv", "x,n,m\n1,2,7\n2,3,8\n3,5,4\n");
    folder.file("page.ini", "# how it looks\ntitle = \"A title\"\nlook = dark\ny = n\ny2 = m\nstyle = "
                            "[\"n:steps,dotted\", \"m:red\"]\n"
                            "size = 640x400\nlog-y2 = true\nhline = \"3=limit\"\n");
    const Outcome by_line =
        run(folder, "b.csv --title 'A title' --look dark --y n --y2 m --style n:steps,dotted --style m:red "
                    "--size 640x400 --log-y2 --hline 3=limit --out -");
    CHECK(by_line.errors == "");
    const Outcome by_file = run(folder, "b.csv --options page.ini --out -");
    CHECK(by_file.errors == "");
    CHECK(by_file.output == by_line.output);
    // The command line has the last word.
    CHECK(run(folder, "b.csv --options page.ini --look print --out -").output != by_file.output);
}

TEST_CASE("help by topic, version, and completion as it is installed") {
    const TemporaryFolder folder;
    CHECK(run(folder, "--version").output.starts_with("qvplot "));
    CHECK(run(folder, "--help").output.find("looks") != std::string::npos);
    CHECK(run(folder, "--help looks").output.find("--style COLUMN:WORDS") != std::string::npos);
    CHECK(run(folder, "--help looks").output.find("--separator") == std::string::npos);
    const std::string all = run(folder, "--help all").output;
    for (char const* option : {"--separator", "--y2", "--colors", "--hband", "--dpi", "--latest", "--define"})
        CHECK(all.find(option) != std::string::npos);
    const std::filesystem::path scripts =
        std::filesystem::path(std::getenv("QV_SOURCE_DIR")) / "packaging/completions";
    struct {
        char const *shell, *file;
    } const shells[]{{"bash", "qvplot.bash"}, {"zsh", "_qvplot"}, {"fish", "qvplot.fish"}};
    for (auto const& row : shells) {
        CAPTURE(row.shell);
        CHECK(run(folder, std::string("--completion ") + row.shell).output
              == qv::test::content_of(scripts / row.file));
    }
    CHECK(run(folder, "--completion cmd").status == 2);
    // Every option is in the manual page.
    const std::string manual =
        qv::test::content_of(std::filesystem::path(std::getenv("QV_SOURCE_DIR")) / "packaging/qvplot.1");
    for (auto at = all.find("\n  --"); at != std::string::npos; at = all.find("\n  --", at + 1)) {
        std::string option = all.substr(at + 3, all.find_first_of(" \n", at + 4) - at - 3);
        CAPTURE(option);
        for (auto dash = option.find('-'); dash != std::string::npos; dash = option.find('-', dash + 2))
            option.insert(dash, 1, '\\');
        CHECK(manual.find(option) != std::string::npos);
    }
}
