// The page handed to the outside world: printed, saved, copied. Pixels are those last shown.
#pragma once

#include "document/ControlState.h"

#include <string>

namespace qv::interact {

/// Where the page lies on a sheet, in inches: inside margins of one inch, proportions kept. A wide page fills
/// the width, a quarter of the spare height above it, at least one inch; a tall one fills the height,
/// centred. `paper` is the sheet held upright, `height_to_width` the page's.
Box place_on_paper(host::PaperSize const& paper, double height_to_width, bool landscape);

/// The page for a service, without cross-hair, rubber band and reading mark, which are off the visible page
/// meanwhile; it must not outlive the control.
std::unique_ptr<host::PagePicture> shown_page(document::ControlState& state);

/// Prints the page on one sheet of the default printer. No printer is fault 482, reported.
void PrintImage(document::ControlState& state, bool landscape);
/// Writes the page to a file whose name tells the format.
void SaveImage(document::ControlState& state, std::string const& file);
/// Replaces what is on the clipboard. A clipboard that cannot be opened is fault 521, reported.
void CopyToClipboard(document::ControlState& state);

} // namespace qv::interact
