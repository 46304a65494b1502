#pragma once

#include "globals/AbstractMessageHandler.h"
#include "globals/globals_export.h"

namespace TEKLUVA {

/// Writes the diagnostics of XML queries and schema validations to the active log, as plain text without
/// markup:
///
///     MessageHandler handler(nullptr);
///     query.setMessageHandler(&handler);                                             // Qt 5's QXmlQuery
///     handler.message(QtWarningMsg, text, QUrl(), SourceLocation(document, line));  // any other validator
///
/// Debug messages, warnings and errors keep their level. A fatal message is logged as an error and does not
/// end the process. Without an active log a message is dropped. May be called from any thread.
class GLOBALS_EXPORT MessageHandler : public AbstractMessageHandler
{
    Q_OBJECT
    Q_DISABLE_COPY(MessageHandler)

public:
    explicit MessageHandler(QObject* parent);
    ~MessageHandler() override;

protected:
    void handleMessage(QtMsgType type, const QString& description, const QUrl& identifier,
                       const SourceLocation& sourceLocation) override;
};

} // namespace TEKLUVA
