// What the examples share: colours of the light look by name, and a main function that writes a page in it as
// a PNG file.
#pragma once

#include "qvgraph/HeadlessHost.h"
#include "qvgraph/looks.h"

#include <string>

namespace qv::example {

inline const Look light = look("light");
inline const Color blue = light.palette[0], orange = light.palette[1], green = light.palette[2],
                   red = light.palette[3], purple = light.palette[4];

inline Color color_of(std::string const& property) {
    return number_of<Color>(light.values.at(property));
}
inline const Color white = color_of("PageColor1"), ink = color_of("GraphTitleColor"),
                   gray = color_of("AxisColor"), pale = color_of("AxisMajGridColor");

/// Draws a page of 640 x 420 pixels into NAME.png, or into the file named on the command line.
inline int run(int argc, char** argv, std::string const& name, void (*draw)(qvGraph&)) {
    headless::HeadlessHost host({640, 420});
    host.control().UseLook("light");
    draw(host.control());
    host.control().Refresh();
    host.save(argc > 1 ? argv[1] : name + ".png");
    return 0;
}

} // namespace qv::example
