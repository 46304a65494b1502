#pragma once

#include "globals/globals.h"

#include <QGroupBox>

class QLabel;

/// A box of the window that speaks the user's language. All texts of the planner are translated in its
/// context. Main thread only.
class Panel : public QGroupBox
{
    Q_OBJECT

public:
    /// \p title is to be translated, as all texts here are.
    explicit Panel(const char* title);

    /// Sets the property \p name of \p object now and whenever the user has chosen another language.
    void translate(QObject* object, const char* name, const char* text) const;
    /// A label that also leads the keyboard to \p buddy.
    QLabel* makeLabel(const char* text, QWidget* buddy = nullptr);

    /// Shows \p message in the status line for a few seconds and writes it to the active log, which must
    /// exist.
    static void report(const QString& message, TEKLUVA::E_StateType type);

Q_SIGNALS:
    void languageChanged();

protected:
    void changeEvent(QEvent* event) override;
};
