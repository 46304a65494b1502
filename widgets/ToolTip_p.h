#pragma once

#include <QTextDocument>

namespace TEKLUVA {

/// \p text for a tool tip, which would take markup in it for its own.
inline QString toolTipOf(const QString& text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

} // namespace TEKLUVA
