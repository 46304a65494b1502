#pragma once

#include <QString>
#include <QStringList>

/// What becomes of a symbolic link when the folder that it lies in is copied.
///
/// 1. A link is copied as the text it has, and never followed. What it leads to belongs to somebody else.
///    "a/here@b" in a copied folder leads to the copy of b.
/// 2. The copy must resolve to what the link resolves to, or to the copy of that. "up@../x", copied to a
///    folder elsewhere, would resolve to another x, or to none: a failure. A dangling link may stay one.
/// 3. The copy must still resolve when the folders that are going to be deleted are gone. "old@/data/old/x",
///    copied out of /data/old before that is deleted, would dangle: a failure. So would one that goes through
///    another link in there.
namespace TEKLUVA::LinkRules {

/// A link and its copy.
struct CopiedLink
{
    QString source;
    QString target;
    bool isNew; ///< was not there before
};

/// Between which folders it was copied, and what is deleted later.
struct CopiedTree
{
    QString source; ///< canonical
    QString target;
    QStringList deletedLater; ///< existing folders
};

/// Copies the link \p source, unless \p target is that link already. False on failure.
bool copyText(const QString& source, const QString& target, bool& isNew);

/// Rules 2 and 3, once all of the tree is there.
bool stillResolves(const CopiedLink& link, const CopiedTree& tree);

} // namespace TEKLUVA::LinkRules
