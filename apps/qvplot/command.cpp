#include "qvplot/command.h"

#include "qvplot/command_line.h"
#include "qvplot/desktop.h"
#include "qvplot/follow.h"
#include "qvplot/page_writer.h"
#include "qvplot/report.h"
#include "qvplot/whole_page.h"

#include <iostream>

namespace qv::plot {
namespace {

int plot(PlotOptions const& options, Arguments const& arguments) {
    if (!options.out.empty()) media_type_of(options); // before anything is read
    if (options.print || options.shows_window()) return use_desktop(arguments, options.shows_window());
    if (options.follow) return follow_into_file(options);
    if (options.watch) return watch_into_file(options);
    PlotData data = read_data(options);
    tell_explanation(data, options);
    if (!options.out.empty()) write_page(std::move(data), options, AfterDrawing::GiveUp);
    return success;
}

} // namespace

int run(int argc, char const* const* argv) {
    Command const command = read_command(argc, argv);
    if (command.status) return *command.status;
    return reported([&] {
        return command.is_eval ? evaluate(command.eval, std::cout) : plot(command.plot, {argc, argv});
    });
}

} // namespace qv::plot
