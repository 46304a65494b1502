#include "StatusBar.h"

#include "Texts.h"

#include "globals/ConfigManager.h"
#include "globals/Log.h"
#include "globals/LogManager.h"
#include "globals/MeasurementManager.h"

#include <QtWidgets>

using namespace TEKLUVA;

namespace {

constexpr int SHOWN_FOR = 8000; ///< milliseconds
constexpr int GAP = 8;          ///< on both sides of a part, in pixels

/// By E_RunVerdict, from 1 on.
constexpr const char* VERDICTS[] = {
    QT_TRANSLATE_NOOP("Texts", "This is the first start."),
    QT_TRANSLATE_NOOP("Texts", "Last run: closed cleanly"),
    QT_TRANSLATE_NOOP("Texts", "Last run: closed for a restart"),
    QT_TRANSLATE_NOOP("Texts", "Last run: the update was interrupted"),
    QT_TRANSLATE_NOOP("Texts", "Last run: crashed, last alive at %1"),
    QT_TRANSLATE_NOOP("Texts", "Open in another window, too"),
};
static_assert(std::size(VERDICTS) == E_RV_RUNNING);

void showLastRun(QLabel* label)
{
    const ConfigManager* config = ConfigManager::getInstance();
    Texts::getInstance()->keep(
        label, [label, verdict = config->getLastRunVerdict(), time = config->getLastLifeTime()] {
            const QString lastAlive = QLocale().toString(time, QLocale::ShortFormat);
            label->setText(Texts::tr(VERDICTS[verdict - 1]).replace(QLatin1String("%1"), lastAlive));
        });
}

void showUnits(QLabel* label)
{
    const auto* units = MeasurementManager::getInstance();
    const auto show = [units, label] {
        label->setText(
            Texts::tr("Units: %1, %2")
                .arg(units->getLinearMeasurementUnitAbbrevation(units->getPrefferedConstructionUnit()),
                     units->getLinearMeasurementUnitAbbrevation(units->getPrefferedArrangementUnit())));
    };
    Texts::getInstance()->keep(label, show);
    QObject::connect(units, &MeasurementManager::constructionMeasurementUnitChanged, label, show);
    QObject::connect(units, &MeasurementManager::arrangementMeasurementUnitChanged, label, show);
}

void showStorage(QLabel* label)
{
    const ConfigManager* config = ConfigManager::getInstance();
    translated(label, QT_TRANSLATE_NOOP("Texts", "The settings are not saved."));
    label->setVisible(config->hasPendingSettings());
    QObject::connect(config, &ConfigManager::pendingSettingsChanged, label, &QLabel::setVisible);
}

void showProgress(QProgressBar* bar)
{
    bar->hide();
    QObject::connect(StateHandler::getInstance(), &StateHandler::progressChanged, bar,
                     [bar](const ProgressSnapshot& snapshot) {
                         bar->setVisible(snapshot.isRunning);
                         bar->setValue(static_cast<int>(snapshot.totalPercent));
                     });
}

} // namespace

void fillStatusBar(QStatusBar* bar)
{
    auto* message = new QLabel; // of its own: the state handler and not the status bar clears the message
    message->setSizePolicy(QSizePolicy::Ignored,
                           QSizePolicy::Preferred); // a long one leaves room for the others
    auto* storage = new QLabel;
    auto* units = new QLabel;
    auto* lastRun = new QLabel;
    auto* progress = new QProgressBar;
    bar->addWidget(message, 1);
    for (QWidget* part : std::initializer_list<QWidget*>{progress, storage, units, lastRun}) {
        part->setContentsMargins(GAP, 0, GAP, 0);
        bar->addPermanentWidget(part);
    }
    QObject::connect(StateHandler::getInstance(), &StateHandler::statusMessage, message, &QLabel::setText);
    showStorage(storage);
    showLastRun(lastRun);
    showUnits(units);
    showProgress(progress);
    const QString problem = ConfigManager::getInstance()->storageProblem();
    if (!problem.isEmpty())
        report(problem, E_ST_WARNING);
}

void report(const QString& message, E_StateType type)
{
    constexpr E_LogLevel LEVELS[] = {E_LL_INFO, E_LL_INFO, E_LL_WARNING, E_LL_ERROR}; // by E_StateType
    StateHandler::getInstance()->newStatusMessage(message, type, SHOWN_FOR);
    LogManager::getInstance()->getActiveLog()->logMessage(LEVELS[type], message);
}
