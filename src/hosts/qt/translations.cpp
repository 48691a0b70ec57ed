#include "qvgraph/QvGraphWidget.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>
#include <QtCore/QTranslator>

#include <memory>

// Must stand outside of any namespace; a static library's resources are not there without it.
static void bring_translations() {
#ifdef QV_TRANSLATIONS
    Q_INIT_RESOURCE(qvgraph_translations);
#endif
}

namespace qv::qt {

bool QvGraphWidget::translate(QLocale const& locale) {
    bring_translations();
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(locale, QStringLiteral("qvgraph"), QStringLiteral("_"),
                          QStringLiteral(":/qvgraph")))
        return false;
    translator->setParent(QCoreApplication::instance());
    return QCoreApplication::installTranslator(translator.release());
}

} // namespace qv::qt
