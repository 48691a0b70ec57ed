// Values of members called by name, as Qt's variants.
#pragma once

#include "base/variant.h"

#include <QtCore/QVariant>

namespace qv::qt {

/// Whole numbers become int, texts QString, lists QStringList.
QVariant to_qvariant(Variant const& value);
/// A QColor becomes the colour's number; a value without a counterpart is fault 13.
Variant from_qvariant(QVariant const& value);

} // namespace qv::qt
