#include "globals/logs/QtMessages_p.h"

#include "globals/LogManager.h"
#include "globals/logs/ActiveLog_p.h"
#include "globals/logs/LogLock_p.h"

#include <QString>

#include <atomic>

namespace TEKLUVA {

namespace {

thread_local int t_pauses = 0;

/// The handler that was installed before ours; null while ours is not.
std::atomic<QtMessageHandler> s_before{nullptr};

struct QtLevelRow
{
    QtMsgType type;
    E_LogLevel level;
};

constexpr QtLevelRow QT_LEVELS[] = {
    {QtDebugMsg, E_LL_DEBUG},    {QtInfoMsg, E_LL_INFO},   {QtWarningMsg, E_LL_WARNING},
    {QtCriticalMsg, E_LL_ERROR}, {QtFatalMsg, E_LL_ERROR},
};

E_LogLevel levelOf(QtMsgType type)
{
    for (const QtLevelRow& row : QT_LEVELS) {
        if (row.type == type)
            return row.level;
    }
    return E_LL_ERROR;
}

std::string textOf(const QMessageLogContext& context, const QString& message)
{
    const bool hasCategory = context.category && qstrcmp(context.category, "default") != 0;
    return (hasCategory ? context.category + std::string(": ") : std::string()) + message.toStdString();
}

void logQtMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    // What is said meanwhile does not come here: Qt calls no handler inside of a handler.
    if (!QtMessagePause::isActive() && !LogLock::isAnyHeldHere())
        logToActive(levelOf(type), textOf(context, message));
    if (const QtMessageHandler before = s_before)
        before(type, context, message);
}

} // namespace

QtMessagePause::QtMessagePause()
{
    ++t_pauses;
}

QtMessagePause::~QtMessagePause()
{
    --t_pauses;
}

bool QtMessagePause::isActive()
{
    return t_pauses > 0;
}

void LogManager::installQtMessageHandler()
{
    static std::atomic<bool> isInstalled{false};
    const bool wasInstalled = isInstalled.exchange(true);
    if (!wasInstalled)
        s_before = qInstallMessageHandler(logQtMessage);
}

} // namespace TEKLUVA
