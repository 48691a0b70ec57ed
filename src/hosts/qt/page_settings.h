// What a form keeps of a page: its look and the title of its first graph.
#pragma once

#include "qvgraph/qvGraph.h"

#include <QtCore/QString>
#include <QtGui/QPalette>

namespace qv::qt {

/// Whether texts are brighter than what they stand on.
bool is_dark(QPalette const& palette);

/// Shows the page in a look by its name; an empty one is the classic look.
void show_look(qvGraph& page, QString const& name);

/// Titles the first graph and shows it. On an empty page a title makes one, with an x and a y axis; an empty
/// title is not shown. The graph that was selected is so afterwards, in front of the first.
void title_first_graph(qvGraph& page, QString const& title);

} // namespace qv::qt
