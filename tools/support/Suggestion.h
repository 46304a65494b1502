#pragma once

#include <QString>
#include <QStringList>

namespace globalsctl {

/// The one of \p known that \p word was probably meant to be; empty when none is similar.
QString closestTo(const QString& word, const QStringList& known);

/// " (did you mean "CLOSEST"?)"; empty when none of \p known is similar to \p word.
QString suggestion(const QString& word, const QStringList& known);

} // namespace globalsctl
