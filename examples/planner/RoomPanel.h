#pragma once

class QWidget;

/// A room of three sides, which are held in cm and shown in the user's units. The presets must have been
/// read.
QWidget* makeRoomPanel();
