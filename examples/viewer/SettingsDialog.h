#pragma once

#include <QDialog>

class QFormLayout;
class QPushButton;

/// Lets the user choose the language and the unit, which are stored and in force at once.
class SettingsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit SettingsDialog(QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    void setTexts();

    QFormLayout* m_form;
    QPushButton* m_close;
};

/// Shows all texts in the language that the user prefers. Main thread only.
void speakPreferredLanguage();
