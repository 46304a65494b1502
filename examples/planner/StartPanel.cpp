#include "StartPanel.h"

#include "Panel.h"

#include "globals/ConfigManager.h"
#include "globals/Translations.h"

#include <QtWidgets>

using namespace TEKLUVA;

namespace {

/// What is said of each verdict but a crash.
constexpr std::pair<E_RunVerdict, const char*> VERDICTS[] = {
    {E_RV_NO_RUN, QT_TRANSLATE_NOOP("Panel", "This is the first start.")},
    {E_RV_CLOSED, QT_TRANSLATE_NOOP("Panel", "The application was closed cleanly.")},
    {E_RV_RESTARTED, QT_TRANSLATE_NOOP("Panel", "The application was closed for a restart.")},
    {E_RV_UPDATING, QT_TRANSLATE_NOOP("Panel", "The update was interrupted.")},
    {E_RV_RUNNING, QT_TRANSLATE_NOOP("Panel", "The application is open in another window.")},
};

QString textOf(E_RunVerdict lastVerdict, const QDateTime& lifeTime)
{
    for (const auto& [verdict, text] : VERDICTS) {
        if (verdict == lastVerdict)
            return Panel::tr(text);
    }
    const QString time = QLocale().toString(lifeTime, QLocale::ShortFormat);
    return Panel::tr("The application crashed; it was last alive at %1.").arg(time);
}

/// Widgets get their QEvent::LanguageChange later, once for all of this.
void speak(const QString& language, QTranslator* texts)
{
    QLocale::setDefault(QLocale(language));
    QCoreApplication::removeTranslator(texts);
    if (texts->load(QStringLiteral(":/planner/planner_%1.qm").arg(language)))
        QCoreApplication::installTranslator(texts);
    showLanguage(language);
}

QComboBox* makeLanguages(ConfigManager* config)
{
    auto* box = new QComboBox;

    box->addItem(QStringLiteral("Deutsch"), QStringLiteral("de"));
    box->addItem(QStringLiteral("English"), QStringLiteral("en"));
    box->setCurrentIndex(box->findData(config->getPrefferedLang()));
    auto* texts = new QTranslator(box);
    speak(config->getPrefferedLang(), texts);
    QObject::connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), texts, [config, box, texts] {
        config->setPrefferedLang(box->currentData().toString());
        speak(config->getPrefferedLang(), texts);
    });
    return box;
}

} // namespace

QWidget* makeStartPanel()
{
    ConfigManager* config = ConfigManager::getInstance();
    auto* languages = makeLanguages(config);
    auto* panel = new Panel(QT_TRANSLATE_NOOP("Panel", "Last run"));
    auto* verdict = new QLabel;

    const E_RunVerdict last =
        config->isOtherRunning() ? E_RV_RUNNING : runVerdict(config->getLastRuntimeState());
    const auto show = [verdict, last, time = config->getLastLifeTime()] {
        verdict->setText(textOf(last, time));
    };
    show();
    QObject::connect(panel, &Panel::languageChanged, verdict, show);
    auto* layout = new QHBoxLayout(panel);
    layout->addWidget(verdict, 1);
    layout->addWidget(panel->makeLabel(QT_TRANSLATE_NOOP("Panel", "La&nguage"), languages));
    layout->addWidget(languages);
    return panel;
}
