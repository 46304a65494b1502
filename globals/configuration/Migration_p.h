#pragma once

#include "globals/MigrationReport.h"

#include <QString>

/// The move of the user's data from the folders of older installations, at the first start of this one.
namespace TEKLUVA::Migration {

/// Moves into the folder \p base, that of the settings file, what older installations have left, unless a
/// settings file is there already. Silent.
///
/// Caches and logs are dropped, all else is copied, and an old folder is deleted when all of it is there.
/// What cannot be copied keeps its old folder, with all that is in it. The settings come last, because with a
/// settings file nothing is moved any more: a start that is killed before goes on with the next one.
MigrationReport moveOlderInstallations(const QString& base);

} // namespace TEKLUVA::Migration
