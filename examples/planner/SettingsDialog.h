#pragma once

class QDialog;
class QWidget;

/// Lets the user choose the language and the units, which are stored and in force at once.
QDialog* makeSettingsDialog(QWidget* parent);
