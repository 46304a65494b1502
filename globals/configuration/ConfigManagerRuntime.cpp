#include "globals/Log.h"
#include "globals/LogManager.h"
#include "globals/SettingsKeys.h"
#include "globals/configuration/ConfigManager_p.h"
#include "globals/configuration/LastRun_p.h"
#include "globals/foundation/Languages_p.h"
#include "globals/logs/ActiveLog_p.h"

#include <QLocale>

#include <limits>

namespace TEKLUVA {

namespace {

/// A correction of the clock by this many seconds or more renames the active log.
constexpr qint64 NOTABLE_CORRECTION = 121;

int secondsToServer(const QDateTime& serverTime)
{
    const qint64 seconds = QDateTime::currentDateTime().secsTo(serverTime);
    return static_cast<int>(
        std::clamp<qint64>(seconds, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

bool isGerman(QLocale::Language language)
{
    return language == QLocale::German || language == QLocale::SwissGerman || language == QLocale::LowGerman;
}

void renameActiveLog(const QDateTime& serverTime)
{
    if (!LogManager::hasInstance())
        return;
    const QString stamp = QLocale::c().toString(serverTime, QStringLiteral("yyyyMMddhhmmss"));
    LogManager::getInstance()->withActiveLog([&stamp](Log& log) {
        log.setLogName("tekluva-3D_" + stamp.toStdString(), false);
        log.logStatusMessage("Synchronized to server time.", std::string(), 0);
    });
}

} // namespace

qint64 ConfigManager::Private::currentMSecs() const
{
    constexpr qint64 MSECS_PER_SECOND = 1000;
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    return data.getServerTimeState() ? now + MSECS_PER_SECOND * data.getServerTimeDiff() : now;
}

QVariantMap ConfigManager::Private::runRecord() const
{
    return settings.getSettings(SettingsKeys::APPLICATION);
}

LastRun ConfigManager::Private::lastRun() const
{
    return lastRunFrom(runRecord());
}

void ConfigManager::Private::record(const QVariantMap& values)
{
    if (startOptions().recordsRun)
        settings.setSettings(SettingsKeys::APPLICATION, values);
}

QVariantMap ConfigManager::Private::lifeTimeRecord() const
{
    return {{SettingsKeys::LIFE_TIME, QDateTime::fromMSecsSinceEpoch(currentMSecs())},
            {SettingsKeys::TIME_SYNC, data.getServerTimeState()}};
}

QVariantMap ConfigManager::Private::errorRecord(unsigned int code) const
{
    QVariantMap record = lifeTimeRecord();
    record.insert(SettingsKeys::ERROR_CODE, code);
    return record;
}

QDateTime ConfigManager::getCurrentServerTime() const
{
    return QDateTime::fromMSecsSinceEpoch(getCurrentServerMSecs());
}

qint64 ConfigManager::getCurrentServerMSecs() const
{
    return d->currentMSecs();
}

QDateTime ConfigManager::syncToServerTime(const QDateTime& time) const
{
    return time.addSecs(d->data.getServerTimeDiff());
}

void ConfigManager::setCurrentServerTime(const QDateTime& serverTime)
{
    if (!serverTime.isValid()) {
        logError("The server time is not valid.");
        return;
    }
    const qint64 before = d->data.getServerTimeDiff();
    const qint64 now = secondsToServer(serverTime);
    d->data.setServerTimeDiff(static_cast<int>(now));
    d->data.setServerTimeState(true);
    if (qAbs(now - before) >= NOTABLE_CORRECTION)
        renameActiveLog(getCurrentServerTime());
    updateLifeTime();
}

void ConfigManager::setRuntimeState(const E_RuntimeState& state)
{
    const QString word = runtimeStateWord(state);
    if (word.isEmpty())
        return;
    // One write for all: a process that is killed meanwhile leaves the old record or the new one.
    QVariantMap record = d->errorRecord(potentialErrorOf(state));
    record.insert(SettingsKeys::STATE, state == E_RS_FIRST_START ? QVariant() : word);
    record.insert(processRecord(state));
    d->record(record);
}

E_RuntimeState ConfigManager::getLastRuntimeState() const
{
    return d->lastRun().state;
}

E_RunVerdict ConfigManager::getLastRunVerdict() const
{
    return runVerdict(d->runRecord());
}

bool ConfigManager::isOtherRunning() const
{
    return isRunOfOther(d->runRecord());
}

void ConfigManager::setPotentialError(const unsigned int& code)
{
    d->record(d->errorRecord(code));
}

unsigned int ConfigManager::getLastPotentialError() const
{
    return d->lastRun().potentialError;
}

void ConfigManager::updateLifeTime()
{
    d->record(d->lifeTimeRecord());
}

QDateTime ConfigManager::getLastLifeTime() const
{
    const LastRun run = d->lastRun();
    const bool mustCorrect = !run.isServerTime && d->data.getServerTimeState();
    return mustCorrect ? syncToServerTime(run.lifeTime) : run.lifeTime;
}

QString ConfigManager::getPrefferedLang() const
{
    QString stored = getSetting(SettingsKeys::LOCALE, SettingsKeys::LANGUAGE).toString();
    if (isOffered(stored))
        return stored;
    return isGerman(QLocale::system().language()) ? QStringLiteral("de") : QStringLiteral("en");
}

void ConfigManager::setPrefferedLang(const QString& language)
{
    setSetting(SettingsKeys::LOCALE, SettingsKeys::LANGUAGE, language);
}

bool ConfigManager::getAutosaveSessionState() const
{
    return d->lastRun().isAutoSaveSession;
}

void ConfigManager::setAutosaveSessionState(const bool& active)
{
    d->record({{SettingsKeys::AUTO_SAVE, active}});
}

} // namespace TEKLUVA
