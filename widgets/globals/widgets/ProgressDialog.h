#pragma once

#include "globals/StateHandler.h"
#include "globals/widgets/globals_widgets_export.h"

#include <QDialog>

#include <memory>

namespace TEKLUVA {

/// Shows the processes of StateHandler: opens when one begins, with a bar for each step, and closes when it
/// ends with StateHandler::endProcess(). Nothing else is to be done but to make one:
///
///     new ProgressDialog(mainWindow); // the window owns it
///
/// A process that is shorter than getMinimumDuration() is not shown. A step with the types E_PRT_PERCENT and
/// E_PRT_PERCENT_ALT shows its percentage, a transfer its display text, another one its bar. With an abort
/// button, the button, the Escape key and closing the dialog request the abort; the dialog stays until the
/// work has ended, and without a button it stays whatever the user does.
///
/// Main thread only; the work may be in any thread. Work in the main thread is shown while it asks
/// StateHandler::wasAborted(), which lets events through when there is an abort button. Set a window modality
/// to keep the user from the other windows meanwhile.
class GLOBALS_WIDGETS_EXPORT ProgressDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ProgressDialog(QWidget* parent = nullptr);
    ~ProgressDialog() override;

    /// In milliseconds; 0 by default.
    int getMinimumDuration() const;
    void setMinimumDuration(int milliseconds);

public Q_SLOTS:
    /// Requests an abort where the process allows it.
    void reject() override;

protected:
    void changeEvent(QEvent* event) override;

private:
    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace TEKLUVA
