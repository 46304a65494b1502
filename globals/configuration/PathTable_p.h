#pragma once

#include "globals/foundation/Rows_p.h"
#include "globals/globals.h"

#include <QString>

#include <array>

namespace TEKLUVA {

/// A folder that the desktop, the program or the process defines.
struct BaseFolder
{
    QString (*path)();
    const char* name; ///< for people
};

/// Where a path starts: in a base folder, or in the folder of another type. Neither for a type without a
/// path.
struct PathStart
{
    const BaseFolder* base = nullptr;
    const char* cannotCreate = nullptr; ///< logged; null for a base that is not created
    E_PathType type = E_PathType(0);

    constexpr bool isNone() const { return base == nullptr && type == E_PathType(0); }
};

/// One step down. A folder without messages belongs to the installed program: it is named, but not created.
struct PathStep
{
    const char* name = nullptr; ///< null for no step; empty for the name that the application has set
    const char* cannotCreate = nullptr;
    const char* cannotEnter = nullptr;
    bool unlessNamedBefore = false; ///< left out when the path contains the name already, in any case

    constexpr bool isApplicationName() const { return name != nullptr && *name == '\0'; }
};

/// When a folder that the user has set takes the place of the rule.
enum class Precedence {
    AlwaysCreated, ///< always; it is created when it is missing
    IfExisting,    ///< only while it exists
    Always,        ///< always, whether it exists or not
};

struct PathOverride
{
    const char* key = nullptr; ///< in the settings; null for a type that users cannot override
    Precedence precedence = Precedence::Always;
};

/// What ConfigManager::getDirName() returns for a type.
enum class DirName {
    None,
    LastStep, ///< the name of the last step
};

struct PathRow
{
    E_PathType type = E_PathType(0);
    const char* role = nullptr; ///< for people
    PathStart start;
    std::array<PathStep, 3> steps;
    DirName dirName = DirName::None;
    PathOverride overriddenBy = {};
};

/// All path types, in the order of their numbers.
Rows<PathRow> pathRows();

/// Null for a number that is no path type.
const PathRow* pathRow(E_PathType type);

} // namespace TEKLUVA
