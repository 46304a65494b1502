#pragma once

class QWidget;

/// Shows the light of a lamp by its colour temperature.
QWidget* makeColourPanel();
