// The 140 colours that the picker offers by name.
#pragma once

#include "qvgraph/ChildControls.h"

#include <span>

namespace qv::gradient_picker {

/// In the order of the lists. Spellings are part of the interface.
std::span<host::ColorItem const> color_names();

} // namespace qv::gradient_picker
