#pragma once

#include <QDialog>

/// Shows the process that the state handler tells of, each step with a bar, and opens when one begins. Knows
/// nothing of the work; whoever does closes the dialog with accept().
QDialog* makeProgressDialog(QWidget* parent);
