#pragma once

#include <QDialog>

/// Lets the user choose the language and the unit, which are stored and in force at once.
class SettingsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit SettingsDialog(QWidget* parent = nullptr);
};

/// Shows all texts in the language that the user prefers. Main thread only.
void speakPreferredLanguage();
