#include "globals/ConfigManager.h"
#include "globals/Log.h"
#include "globals/LogManager.h"
#include "globals/SettingsKeys.h"
#include "globals/foundation/Languages_p.h"
#include "globals/logs/ActiveLog_p.h"

#include <QLocale>

#include <limits>

namespace TEKLUVA {

namespace {

/// From this many seconds on a correction of the clock is worth a log of its own.
constexpr qint64 NOTABLE_CORRECTION = 121;

int secondsToServer(const QDateTime& serverTime)
{
    const qint64 seconds = QDateTime::currentDateTime().secsTo(serverTime);
    return static_cast<int>(
        qBound<qint64>(std::numeric_limits<int>::min(), seconds, std::numeric_limits<int>::max()));
}

bool isGerman(QLocale::Language language)
{
    return language == QLocale::German || language == QLocale::SwissGerman || language == QLocale::LowGerman;
}

} // namespace

QDateTime ConfigManager::getCurrentServerTime() const
{
    return QDateTime::fromMSecsSinceEpoch(getCurrentServerMSecs());
}

qint64 ConfigManager::getCurrentServerMSecs() const
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    return m_data.getServerTimeState() ? now + qint64(1000) * m_data.getServerTimeDiff() : now;
}

QDateTime ConfigManager::syncToServerTime(const QDateTime& time) const
{
    return time.addSecs(m_data.getServerTimeDiff());
}

void ConfigManager::setCurrentServerTime(const QDateTime& serverTime)
{
    if (!serverTime.isValid()) {
        logError("The server time is not valid.");
        return;
    }
    const qint64 before = m_data.getServerTimeDiff();
    const qint64 now = secondsToServer(serverTime);
    m_data.setServerTimeDiff(static_cast<int>(now));
    m_data.setServerTimeState(true);
    if (qAbs(now - before) >= NOTABLE_CORRECTION)
        startLogOfServerTime();
    updateLifeTime();
}

void ConfigManager::startLogOfServerTime() const
{
    Log* log = LogManager::getInstance()->getActiveLog();
    if (!log)
        return;
    const QString stamp = getCurrentServerTime().toString(QStringLiteral("yyyyMMddhhmmss"));
    log->setLogName("tekluva-3D_" + stamp.toStdString(), false);
    log->logStatusMessage("Synchronized to server time.", std::string(), 0);
}

void ConfigManager::setRuntimeState(const E_RuntimeState& state)
{
    const QString word = runtimeStateWord(state);
    if (word.isEmpty())
        return;
    // One write for all, so that a process killed on the way leaves the old record or the new one.
    QVariantMap record = errorRecord(potentialErrorOf(state));
    record.insert(SettingsKeys::STATE, state == E_RS_FIRST_START ? QVariant() : word);
    m_settings.setSettings(SettingsKeys::APPLICATION, record);
}

E_RuntimeState ConfigManager::getLastRuntimeState() const
{
    return lastRun().state;
}

void ConfigManager::setPotentialError(const unsigned int& code)
{
    m_settings.setSettings(SettingsKeys::APPLICATION, errorRecord(code));
}

unsigned int ConfigManager::getLastPotentialError() const
{
    return lastRun().potentialError;
}

void ConfigManager::updateLifeTime()
{
    m_settings.setSettings(SettingsKeys::APPLICATION, lifeTimeRecord());
}

QDateTime ConfigManager::getLastLifeTime() const
{
    const LastRun run = lastRun();
    const bool correct = !run.isServerTime && m_data.getServerTimeState();
    return correct ? syncToServerTime(run.lifeTime) : run.lifeTime;
}

LastRun ConfigManager::lastRun() const
{
    return lastRunFrom(m_settings.getSettings(SettingsKeys::APPLICATION));
}

QVariantMap ConfigManager::lifeTimeRecord() const
{
    return {{SettingsKeys::LIFE_TIME, getCurrentServerTime()},
            {SettingsKeys::TIME_SYNC, m_data.getServerTimeState()}};
}

QVariantMap ConfigManager::errorRecord(unsigned int code) const
{
    QVariantMap record = lifeTimeRecord();
    record.insert(SettingsKeys::ERROR_CODE, code);
    return record;
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
    return lastRun().isAutoSaveSession;
}

void ConfigManager::setAutosaveSessionState(const bool& active)
{
    setSetting(SettingsKeys::APPLICATION, SettingsKeys::AUTO_SAVE, active);
}

} // namespace TEKLUVA
