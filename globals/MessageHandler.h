#pragma once

#include "globals/globals_export.h"

#include <QAbstractMessageHandler>

namespace TEKLUVA {

/// Brings the diagnostics of XML queries and schema validations into the active log, as plain text without
/// markup:
///
///     MessageHandler handler(nullptr);
///     query.setMessageHandler(&handler);
///
/// Debug messages, warnings and errors keep their level, a fatal one is an error and ends nothing. Without an
/// active log a message is dropped. May be called from any thread.
class GLOBALS_EXPORT MessageHandler : public QAbstractMessageHandler
{
    Q_OBJECT
    Q_DISABLE_COPY(MessageHandler)

public:
    explicit MessageHandler(QObject* parent);
    ~MessageHandler() override;

protected:
    void handleMessage(QtMsgType type, const QString& description, const QUrl& identifier,
                       const QSourceLocation& sourceLocation) override;
};

} // namespace TEKLUVA
