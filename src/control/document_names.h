// The procedures of this folder are about the document's records, and name them without their folder.
#pragma once

#include "document/ControlState.h"

namespace qv::control {
using namespace document;
} // namespace qv::control
