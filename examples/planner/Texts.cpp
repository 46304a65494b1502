#include "Texts.h"

#include "globals/ConfigManager.h"
#include "globals/Translations.h"

#include <QtWidgets>

using namespace TEKLUVA;

Texts* Texts::getInstance()
{
    static const QPointer<Texts> texts = new Texts(qApp);
    return texts;
}

void Texts::speakPreferredLanguage()
{
    const QString language = ConfigManager::getInstance()->getPrefferedLang();
    QLocale::setDefault(QLocale(language));
    QCoreApplication::removeTranslator(&m_translator);
    if (m_translator.load(QStringLiteral(":/planner/planner_%1.qm").arg(language)))
        QCoreApplication::installTranslator(&m_translator);
    showLanguage(language);
    Q_EMIT languageChanged();
}

void Texts::keep(QObject* context, const std::function<void()>& set) const
{
    set();
    connect(this, &Texts::languageChanged, context, set);
}

QLabel* makeLabel(const char* source, QWidget* buddy)
{
    auto* label = translated(new QLabel, source);
    label->setBuddy(buddy);
    return label;
}
