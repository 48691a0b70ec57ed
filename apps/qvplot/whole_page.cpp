#include "qvplot/whole_page.h"

#include "qvplot/formula.h"
#include "qvplot/page_writer.h"
#include "qvplot/progress_line.h"
#include "qvplot/report.h"

#include <iostream>

namespace qv::plot {

PlotData read_data(PlotOptions const& options) {
    PlotData data = read_series(options, ProgressLine());
    add_functions(data, options);
    leave_out_points(data, options);
    for (std::string const& note : notes_of_what_is_left_out(data)) tell(note);
    return data;
}

void draw_whole_page(qvGraph& page, PlotData data, PlotOptions const& options, AfterDrawing after) {
    FirstError errors;
    page.set_events(&errors);
    PlotPage(page, std::move(data), options, after).draw();
    page.set_events(nullptr);
    errors.raise();
}

void write_page(PlotData data, PlotOptions const& options, AfterDrawing after) {
    PageWriter writer(options);
    draw_whole_page(writer.control(), std::move(data), options, after);
    writer.write();
}

void tell_explanation(PlotData const& data, PlotOptions const& options) {
    for (std::string const& line : data.explanation)
        (options.out == "-" ? std::cerr : std::cout) << line << "\n";
}

} // namespace qv::plot
