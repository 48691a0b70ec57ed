// Values of members called by name, as Qt's variants.
#pragma once

#include "qvgraph/geometry.h"
#include "qvgraph/variant.h"

#include <QtCore/QVariant>
#include <QtGui/QColor>

namespace qv::qt {

/// Whole numbers become int, texts QString, lists QStringList.
QVariant to_qvariant(Variant const& value);
/// A QColor becomes the colour's number; a value without a counterpart is fault 13.
Variant from_qvariant(QVariant const& value);

/// A system colour becomes the colour it stands for.
QColor to_qcolor(Color color);
Color from_qcolor(QColor const& color);

} // namespace qv::qt
