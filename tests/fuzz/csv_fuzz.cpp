// Hostile files for the program that draws columns: the first line is the command line, the rest
// the file. The file is read into series, drawn on a page, zoomed and laid out anew in another size. What
// must hold is checked here; crashes, leaks and undefined behaviour are the sanitizers' to find.
#include "control/state_of.h"
#include "document/selection.h"
#include "qvgraph/HeadlessHost.h"
#include "qvplot/formula.h"
#include "qvplot/options.h"
#include "qvplot/page.h"
#include "qvplot/plot_error.h"
#include "qvplot/report.h"
#include "qvplot/series.h"
#include "table/table.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include <sys/mman.h>
#include <unistd.h>

namespace {

using namespace qv;
using namespace qv::plot;

void require(bool holds) {
    if (!holds) std::abort();
}

// A file in memory, under a name that can be opened.
class MemoryFile {
public:
    explicit MemoryFile(std::string_view content) : number_(memfd_create("table", 0)) {
        require(number_ >= 0);
        require(write(number_, content.data(), content.size()) == static_cast<ssize_t>(content.size()));
    }
    ~MemoryFile() { close(number_); }
    MemoryFile(MemoryFile const&) = delete;
    MemoryFile& operator=(MemoryFile const&) = delete;
    std::string path() const { return "/proc/self/fd/" + std::to_string(number_); }

private:
    int number_;
};

// As the command line has them, but with these files alone, on a page that is quickly drawn.
std::optional<PlotOptions> parsed(std::string const& line, std::string const& file) {
    PlotOptions options;
    CLI::App app("", "qvplot");
    add_plot_options(app, options);
    try {
        app.parse(line, false);
    } catch (CLI::ParseError const&) {
        return std::nullopt;
    } catch (PlotError const&) {
        return std::nullopt;
    } catch (table::TableError const&) {
        return std::nullopt;
    }
    options.files.assign(std::clamp<std::size_t>(options.files.size(), 1, 3), file);
    options.follow = options.watch = false;
    options.size = {options.size.width % 400 + 20, options.size.height % 300 + 20};
    // Formulas have a target of their own.
    options.definitions.clear();
    std::erase_if(options.functions, [](std::string const& formula) { return formula.size() > 12; });
    if (options.functions.size() > 1) options.functions.resize(1);
    return options;
}

std::size_t rows_of(std::string const& file, PlotOptions const& options) {
    auto const table = table::open_table(file, options.reading);
    table::read_whole(*table);
    return table->rows();
}

void check_series(PlotData const& data, std::size_t rows) {
    for (Series const& series : data.series) {
        require(series.x.size() == series.y.size());
        if (!series.function.empty()) continue;
        require(series.number_of_points() + series.left_out.without_value <= rows);
        for (std::size_t i = 0; i < series.x.size(); ++i)
            require(!std::isinf(series.x[i]) && !std::isinf(series.y[i]));
    }
}

void check_axes(qvGraph const& page) {
    for (document::Axis const& axis : document::current_graph(control::state_of(page)).Axes) {
        require(std::isfinite(axis.AxisValue2 - axis.AxisValue1));
        require(axis.AxisValue1 < axis.AxisValue2);
    }
}

// Every point lies on its axes, but for those that were asked away.
void check_points(qvGraph const& page, PlotData const& data, PlotOptions const& options) {
    auto const& axes = document::current_graph(control::state_of(page)).Axes;
    auto const holds = [](document::Axis const& axis, double value) {
        double const tolerance = 1e-8 * (axis.ScaleMax - axis.ScaleMin);
        return value >= axis.ScaleMin - tolerance && value <= axis.ScaleMax + tolerance;
    };
    bool const has_own_axes = options.page_kind() == Kind::Histogram || options.page_kind() == Kind::Heat
                              || options.page_kind() == Kind::Box || !options.styles.empty()
                              || options.stacked;
    if (options.x_range || options.y_range || options.y2_range || options.panels || has_own_axes
        || !options.functions.empty())
        return;
    for (Series const& series : data.series)
        for (std::size_t i = 0; i < series.x.size(); ++i)
            if (series.has_point(i))
                require(holds(axes[0], series.x[i])
                        && holds(axes[axes.size() > 2 && series.on_second_axis ? 2 : 1], series.y[i]));
}

struct Errors : host::EventSink {
    void ErrorMsg(std::string& Source, std::string& Description) override {
        std::fprintf(stderr, "%s: %s\n", Source.c_str(), Description.c_str());
        std::abort();
    }
};

void draw(PlotData const& data, PlotOptions const& options) {
    headless::HeadlessHost host(options.size);
    Errors errors;
    host.control().set_events(&errors);
    PlotPage page(host.control(), data, options);
    page.draw();
    check_axes(host.control());
    check_points(host.control(), data, options);
    const Point middle{options.size.width * 7.5, options.size.height * 7.5};
    for (double const notches : {5.0, 50.0, -3.0}) {
        host.input(host::WheelInput{.steps = notches, .place = middle});
        page.follow();
        check_axes(host.control());
    }
    host.resize_picture({options.size.height + 30, options.size.width + 30});
    page.follow();
    check_axes(host.control());
    host.control().set_events(nullptr);
}

void run(std::string const& line, std::string_view content) {
    const MemoryFile file(content);
    auto const options = parsed(line, file.path());
    if (!options) return;
    try {
        PlotData data = read_series(*options);
        add_functions(data, *options);
        leave_out_points(data, *options);
        notes_of_what_is_left_out(data);
        check_series(data, rows_of(file.path(), *options));
        draw(data, *options);
    } catch (PlotError const&) {
    } catch (table::TableError const&) {
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string_view const text(reinterpret_cast<char const*>(data), size);
    auto const end = text.find('\n');
    if (end != std::string_view::npos) run(std::string(text.substr(0, end)), text.substr(end + 1));
    return 0;
}
