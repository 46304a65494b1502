#pragma once

#include "globals/globals.h"

#include <QList>
#include <QString>

namespace TEKLUVA {

/// One row of the path registry, for people: where a path type leads, and why.
struct PathDescription
{
    E_PathType type = E_PathType(0);
    /// What the folder is for, "model cache".
    QString role;
    /// The rule in words, "type 8, then \"model\"".
    QString rule;
    /// The key in the group "User_Pathes" that may override the rule; empty when nothing may.
    QString overrideKey;
    /// True when the user has set that key and it decides.
    bool overridden = false;
    /// Where the type leads, ending in "/"; empty for a type that leads nowhere.
    QString path;
    bool exists = false;
};

/// Describes all path types from 1 to 38, in order. Makes no folder and no file, and does not need (or
/// create) the configuration manager: it reads "settings.ini" where the manager would look for it. Reentrant.
GLOBALS_EXPORT QList<PathDescription> describePaths();

} // namespace TEKLUVA
