#pragma once

#include <QString>
#include <QStringList>

class QVariant;

namespace globalsctl {

/// What is wrong with the setting \p path, "Group/key", that has \p value: a key that the library does not
/// know in a group of its own, or a value that it takes for another one. Empty for nothing, and for every
/// setting of groups that belong to the application.
QString faultOfSetting(const QString& path, const QVariant& value);

/// Whether the value of \p path may be a secret that nobody else should see.
bool isSecret(const QString& path);
/// What stands in the names of such settings, in whatever case.
QStringList wordsForSecrets();

} // namespace globalsctl
