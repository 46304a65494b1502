#pragma once

class QWidget;

/// Starts the packing in a thread of its own and tells how it ended. When the panel is deleted, the work is
/// aborted and its end waited for.
QWidget* makeWorkPanel();
