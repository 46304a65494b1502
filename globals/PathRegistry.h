#pragma once

#include "globals/globals.h"

#include <QList>
#include <QString>

namespace TEKLUVA {

/// One path type, for people: its folder, and why it is that one.
struct PathDescription
{
    E_PathType type = E_PathType(0);
    /// What the folder is for, "model cache".
    QString role;
    /// The rule in words, "type 8, then \"model\"".
    QString rule;
    /// The settings key in the group "User_Pathes" that may override the rule; empty for none.
    QString overrideKey;
    /// True when the user has set that key and it takes the place of the rule.
    bool overridden = false;
    /// The folder, ending in "/"; empty for a type that has none.
    QString path;
    /// Whether the folder exists.
    bool exists = false;
};

/// Describes all path types, in the order of their numbers from 1 on. Creates no folder and no file. Does not
/// need the configuration manager and does not create it: it reads "settings.ini" where the manager would
/// look for it. Reentrant.
GLOBALS_EXPORT QList<PathDescription> describePaths();

} // namespace TEKLUVA
