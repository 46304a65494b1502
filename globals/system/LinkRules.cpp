#include "globals/system/LinkRules_p.h"

#include "globals/Containment.h"
#include "globals/system/System_p.h"

#include <QFileInfo>

#include <algorithm>

namespace TEKLUVA::LinkRules {

namespace fs = std::filesystem;
using System::nativePath;

namespace {

QString canonical(const QString& path)
{
    return QFileInfo(path).canonicalFilePath();
}

/// Whether one of \p folders is on the way to the existing \p path, at whichever of its links: without that
/// folder nothing would be found there.
bool resolvesThrough(const fs::path& path, const QStringList& folders)
{
    std::error_code error;
    fs::path here; // has no links in it
    for (const fs::path& name : path) {
        const fs::path step = here / name;
        const fs::path text = fs::read_symlink(step, error);
        if (!text.empty() && resolvesThrough(here / text, folders))
            return true;
        here = fs::canonical(step, error);
        const auto isThere = [&here](const QString& folder) { return isWithin(here, nativePath(folder)); };
        if (std::any_of(folders.begin(), folders.end(), isThere))
            return true;
    }
    return false;
}

} // namespace

bool copyText(const QString& source, const QString& target, bool& isNew)
{
    std::error_code error;
    const fs::path text = fs::read_symlink(nativePath(source), error);
    const fs::path present = fs::read_symlink(nativePath(target), error);
    isNew = text.empty() || present.native() != text.native();
    if (!isNew)
        return true;
    fs::create_symlink(text, nativePath(target), error);
    return !error;
}

bool stillResolves(const CopiedLink& link, const CopiedTree& tree)
{
    const QString place = canonical(link.source);
    if (place.isEmpty())
        return true; // dangled before
    const QString reached = canonical(link.target);
    if (reached.isEmpty())
        return false;
    const QString copy =
        isWithin(place, tree.source) ? canonical(tree.target + place.mid(tree.source.size())) : place;
    if (reached != place && reached != copy)
        return false;
    return !resolvesThrough(nativePath(link.target), tree.deletedLater);
}

} // namespace TEKLUVA::LinkRules
