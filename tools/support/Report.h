#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

class QCommandLineParser;

namespace globalsctl {

/// The contents of a report for support, by their names in the archive. Nothing in them is a secret, as far
/// as names tell: values of settings with a word such as "password" in their group or key, and what follows
/// such words in a text, are left out.
using ReportParts = QMap<QString, QByteArray>;

/// What --exclude may name: all logs, and each other part.
QStringList reportPartNames();

/// Of the application that \p line names, without the parts that --exclude names. Throws UsageError for names
/// that no part can have. A part that cannot be had says why.
ReportParts reportParts(const QCommandLineParser& line);

/// \p text without what follows words such as "password=", a word or a text in quotes, and without passwords
/// in addresses.
QString withoutSecrets(QString text);

} // namespace globalsctl
