#pragma once

class QWidget;

/// The presets in force with their bounds. The presets must have been read.
QWidget* makePresetsPanel();
