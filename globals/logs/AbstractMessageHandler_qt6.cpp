#include "globals/AbstractMessageHandler.h"

#include <QMutexLocker>

namespace TEKLUVA {

AbstractMessageHandler::AbstractMessageHandler(QObject* parent)
    : QObject(parent)
{
}

AbstractMessageHandler::~AbstractMessageHandler() = default;

void AbstractMessageHandler::message(QtMsgType type, const QString& description, const QUrl& identifier,
                                     const SourceLocation& sourceLocation)
{
    const QMutexLocker locked(&m_lock);
    handleMessage(type, description, identifier, sourceLocation);
}

} // namespace TEKLUVA
