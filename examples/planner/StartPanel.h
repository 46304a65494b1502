#pragma once

class QWidget;

/// Tells how the last run ended, and lets the user choose the language, which is the one shown from now on.
/// Make it before the other panels and before the state of this run is recorded.
QWidget* makeStartPanel();
