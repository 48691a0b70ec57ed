// Looks: how pages look that nobody has styled. A look is a table of values for the properties of the page,
// its graphs, axes and data sets; qvGraph::UseLook gives them to what is there and what will come, wherever
// the host has not set the property itself.
#pragma once

#include "qvgraph/export.h"
#include "qvgraph/geometry.h"
#include "qvgraph/variant.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace qv {

/// Values by the name of their property, spelled as in the reference.
using LookValues = std::map<std::string, Variant, std::less<>>;

/// A look. To make one of your own, start from `look("light")` and set what shall differ:
/// `mine.values["AxisColor"] = rgb(0, 0, 0)`.
struct Look {
    std::string name; ///< what LookName tells

    /// Of the page, all graphs, axes and data sets. The ranges of axes are no matter of a look.
    LookValues values;
    /// On top, for an axis whose title the host has not given.
    LookValues unnamed_axes;
    /// On top, for the axes behind the first x axis and the first y axis of a graph.
    LookValues further_axes;
    /// On top, for data sets shown as bars or areas.
    LookValues filled;

    /// Properties of the page that the look switches on.
    std::vector<std::string> switches;

    /// Data sets take these in the order in which they are made in their graph, and begin anew behind the
    /// last. Without any, they keep what they have.
    std::vector<Color>
        palette; ///< of lines, symbols, their edges and error bars, and of bars and areas without `fills`
    std::vector<Color> fills; ///< of bars and areas
    std::vector<int> dashes;  ///< DataLineDash
    /// DataSymbol. Those of data sets whose lines the host has switched off, where this has none, go round
    /// the shapes.
    std::vector<int> symbols;
};

/// The names of the looks there are.
QV_EXPORT std::vector<std::string_view> look_names();

/// A look by its name, whatever its case; fault 5 for an unknown one.
QV_EXPORT Look look(std::string_view name);

} // namespace qv
