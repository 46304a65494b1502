#pragma once

#include "globals/Log.h"

class QWidget;

/// Shows \p log, which must outlive the panel, while it is written from whatever thread.
QWidget* makeLogPanel(TEKLUVA::Log* log);
