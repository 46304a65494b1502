#pragma once

#include <memory>

class QMainWindow;

/// The planner's window with all its panels. Reads the presets, and throws TEKLUVA::Exception for a preset
/// file with faults in it. Records the run in the settings, from its start until the window closes; that the
/// application has ended well is for its main function to record. A log must be active.
std::unique_ptr<QMainWindow> makeMainWindow();
