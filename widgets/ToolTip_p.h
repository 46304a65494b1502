#pragma once

#include <QTextDocument>

namespace TEKLUVA {

/// The first \p count characters: the layout of a text of a million takes seconds, each time it is painted.
inline QString beginningOf(const QString& text, int count)
{
    return text.size() <= count ? text : text.left(count) + QChar(0x2026);
}

/// \p text for a tool tip, which would take markup in it for its own. Cut after what a screen has room for.
inline QString toolTipOf(const QString& text)
{
    constexpr int LONGEST = 4000;
    const QString shown = beginningOf(text, LONGEST);
    return Qt::mightBeRichText(shown) ? Qt::convertFromPlainText(shown) : shown;
}

} // namespace TEKLUVA
