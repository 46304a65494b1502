#pragma once

#include "globals/StateHandler.h"

#include <QStatusBar>

/// Fills \p bar with the status message, how the last run ended, the user's units, the progress of the
/// process, and a warning while settings cannot be saved. Before the state of this run is recorded.
void fillStatusBar(QStatusBar* bar);

/// Shows \p message in the status bar for a few seconds and writes it to the active log, which must exist.
void report(const QString& message, TEKLUVA::E_StateType type);
