#include "hosts/qt/page_settings.h"

#include <cstdint>
#include <string>

namespace qv::qt {
namespace {

/// The first graph is the current one for a while, and nobody hears of it.
class FirstGraphScope {
public:
    explicit FirstGraphScope(qvGraph& page)
        : page_(page), selected_(page.GetSelectedGraph()), was_silent_(page.SuppressRaisingEvents()) {
        select(0);
    }
    ~FirstGraphScope() { select(selected_); }
    FirstGraphScope(FirstGraphScope const&) = delete;
    FirstGraphScope& operator=(FirstGraphScope const&) = delete;

private:
    void select(std::int16_t graph) {
        if (selected_ == 0) return;
        page_.SuppressRaisingEvents(true);
        page_.SetSelectedGraph(graph);
        page_.SuppressRaisingEvents(was_silent_);
    }
    qvGraph& page_;
    std::int16_t selected_;
    bool was_silent_;
};

} // namespace

bool is_dark(QPalette const& palette) {
    return palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
}

void show_look(qvGraph& page, QString const& name) {
    page.UseLook(name.isEmpty() ? "classic" : name.toStdString());
    page.Refresh();
}

void title_first_graph(qvGraph& page, QString const& title) {
    if (page.NumGraphs() == 0) {
        if (title.isEmpty()) return;
        page.NewGraph(title.toStdString());
    } else {
        const FirstGraphScope first(page);
        // The style method would set these to whole millimetres.
        float const across = page.GraphTitleHShift(), up = page.GraphTitleVShift();
        page.GraphTitleStyle({.Title = title.toStdString(), .Show = !title.isEmpty()});
        page.GraphTitleHShift(across);
        page.GraphTitleVShift(up);
    }
    page.Refresh();
}

} // namespace qv::qt
