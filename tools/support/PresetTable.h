#pragma once

#include "support/PresetFile.h"

#include <QJsonValue>

class QJsonArray;

namespace globalsctl {

/// A preset with its values in their normal form, to be compared and shown.
struct ShownPreset
{
    TEKLUVA::PresetDescription preset;
    QJsonValue builtIn;
    QJsonValue inForce;

    bool isChanged() const { return builtIn != inForce; }
};

enum class PresetChoice {
    All,
    Changed, ///< those whose value in force is not the built-in one
};

/// The presets as they are now, once \p file has been read.
QList<ShownPreset> presetsAfter(const PresetFile& file, PresetChoice choice);

/// A row for each of \p presets, below one with headings.
QList<QStringList> rowsOf(const QList<ShownPreset>& presets);
QJsonArray arrayOf(const QList<ShownPreset>& presets);

/// The value of \p preset as it is now, as people write it.
QString valueInForce(const TEKLUVA::PresetDescription& preset);
/// Those of all presets, in the order of describePresets().
QStringList valuesInForce();
/// Those that are built in, which are in force afterwards.
QStringList builtInValues();

} // namespace globalsctl
