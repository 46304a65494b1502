#pragma once

class QWidget;

/// Lets the user change the sides of a room, in the unit for constructing and within the bounds that the
/// presets set, and shows its area and volume in the unit for arranging.
QWidget* makeRoomPanel();

/// Shows the light of a lamp by its colour temperature.
QWidget* makeLightPanel();
