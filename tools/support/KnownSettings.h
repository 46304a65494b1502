#pragma once

#include <QString>
#include <QStringList>

class QVariant;

namespace globalsctl {

/// What is wrong with the setting \p path, "Group/key", that has \p value: a key that the library does not
/// know in a group of its own, or a value that it takes for another one. Empty for nothing, and for every
/// setting of groups that belong to the application.
QString faultOfSetting(const QString& path, const QVariant& value);

/// Whether \p text, such as "Group/key", has a word for what nobody else should see.
bool namesSecret(const QString& text);
/// These words; upper and lower case are alike.
QStringList wordsForSecrets();

} // namespace globalsctl
