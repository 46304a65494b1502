#pragma once

#include "globals/globals_export.h"

#include <QMutex>
#include <QObject>
#include <QString>
#include <QUrl>

#include <utility>

namespace TEKLUVA {

/// The place in a document that a message is about. With Qt 5 it is QSourceLocation, which Qt 6 has no more.
class SourceLocation
{
public:
    SourceLocation() = default;
    /// Lines and columns count from 1; -1 is none.
    explicit SourceLocation(QUrl uri, qint64 line = -1, qint64 column = -1)
        : m_uri(std::move(uri))
        , m_line(line)
        , m_column(column)
    {
    }

    /// Without an address it is no place.
    bool isNull() const { return m_uri.isEmpty(); }
    QUrl uri() const { return m_uri; }
    qint64 line() const { return m_line; }
    qint64 column() const { return m_column; }

private:
    QUrl m_uri;
    qint64 m_line = -1;
    qint64 m_column = -1;
};

/// Takes the messages of whatever checks documents. With Qt 5 it is QAbstractMessageHandler, to which Qt's
/// own engine of XML queries and schema validations reports. Qt 6 has none: the application hands on what its
/// validator says.
class GLOBALS_EXPORT AbstractMessageHandler : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(AbstractMessageHandler)

public:
    explicit AbstractMessageHandler(QObject* parent = nullptr);
    ~AbstractMessageHandler() override;

    /// Hands a message to handleMessage(), one at a time. \p description may have markup, \p identifier names
    /// the kind of the message. May be called from any thread, but not from within handleMessage().
    void message(QtMsgType type, const QString& description, const QUrl& identifier = QUrl(),
                 const SourceLocation& sourceLocation = SourceLocation());

protected:
    virtual void handleMessage(QtMsgType type, const QString& description, const QUrl& identifier,
                               const SourceLocation& sourceLocation) = 0;

private:
    QMutex m_lock;
};

} // namespace TEKLUVA
