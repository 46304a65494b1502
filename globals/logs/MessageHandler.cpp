#include "globals/MessageHandler.h"

#include "globals/logs/ActiveLog_p.h"

#include <QUrl>
#include <QXmlStreamReader>

#include <algorithm>
#include <limits>

namespace TEKLUVA {

namespace {

struct LevelRow
{
    QtMsgType type;
    E_LogLevel level;
};

constexpr LevelRow LEVELS[] = {
    {QtDebugMsg, E_LL_DEBUG},
    {QtWarningMsg, E_LL_WARNING},
    {QtCriticalMsg, E_LL_ERROR},
    {QtFatalMsg, E_LL_ERROR},
};

/// The character data of \p markup in order. The text after a place that is not well-formed is lost.
QString plainText(const QString& markup)
{
    QString text;
    QXmlStreamReader reader(markup);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::Characters)
            text += reader.text();
    }
    return text;
}

} // namespace

MessageHandler::MessageHandler(QObject* parent)
    : AbstractMessageHandler(parent)
{
}

MessageHandler::~MessageHandler() = default;

void MessageHandler::handleMessage(QtMsgType type, const QString& description, const QUrl& /*identifier*/,
                                   const SourceLocation& sourceLocation)
{
    std::string location;
    unsigned int line = 0;
    if (!sourceLocation.isNull()) {
        location = sourceLocation.uri().toString().toStdString();
        line = static_cast<unsigned int>(
            std::clamp<qint64>(sourceLocation.line(), 0, std::numeric_limits<unsigned int>::max()));
    }
    for (const LevelRow& row : LEVELS) {
        if (row.type == type)
            logToActive(row.level, plainText(description).toStdString(), location, line);
    }
}

} // namespace TEKLUVA
