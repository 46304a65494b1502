#include "globals/Translations.h"

#include "globals/foundation/Languages_p.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTranslator>

#include <memory>

static void initGlobalsResources()
{
    Q_INIT_RESOURCE(translations); // must stand outside of namespaces
}

namespace TEKLUVA {

bool showLanguage(const QString& language)
{
    static QPointer<QTranslator> shown; // belongs to the application object
    if (!isOffered(language))
        return false; // QTranslator accepts any name that begins with that of one of its files
    initGlobalsResources();
    auto next = std::make_unique<QTranslator>();
    if (!next->load(QStringLiteral(":/globals/translations/globals_%1.qm").arg(language)))
        return false;
    // Removes itself, and last: each step is an event, whose receivers may show another language.
    const std::unique_ptr<QTranslator> replaced(shown);
    shown = next.release();
    shown->setParent(QCoreApplication::instance());
    return QCoreApplication::installTranslator(shown);
}

} // namespace TEKLUVA
