#include "qvplot/whole_page.h"

#include "qvplot/formula.h"
#include "qvplot/page.h"
#include "qvplot/progress_line.h"
#include "qvplot/report.h"

namespace qv::plot {

PlotData read_data(PlotOptions const& options) {
    PlotData data = read_series(options, ProgressLine());
    add_functions(data, options);
    leave_out_points(data, options);
    for (std::string const& note : notes_of_what_is_left_out(data)) tell(note);
    return data;
}

void draw_whole_page(qvGraph& page, PlotOptions const& options) {
    const PlotData data = read_data(options);
    FirstError errors;
    page.set_events(&errors);
    draw_page(page, data, options);
    page.set_events(nullptr);
    errors.raise();
}

} // namespace qv::plot
