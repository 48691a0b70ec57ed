// When a widget may have to draw at another density.
#pragma once

#include <QtCore/QEvent>

namespace qv::qt {

/// Whether a widget may be on a screen of another density from this event on.
inline bool may_change_density(QEvent const& event) {
    switch (event.type()) {
    case QEvent::Show:
    case QEvent::ScreenChangeInternal:
#if QT_VERSION >= QT_VERSION_CHECK(6, 6, 0)
    case QEvent::DevicePixelRatioChange:
#endif
        return true;
    default: return false;
    }
}

} // namespace qv::qt
