#include "ProgressDialog.h"

#include "Panel.h"

#include "globals/StateHandler.h"

#include <QtWidgets>

#include <utility>

using namespace TEKLUVA;

namespace {

class ProgressDialog : public QDialog
{
public:
    explicit ProgressDialog(QWidget* parent);

    /// Asks for an abort where the process allows it; the dialog stays until the work has ended.
    void reject() override;

private:
    void begin(const QString& process, bool withTotal, bool withAbort);
    void addStep(ProgressStep* step, bool inFront);
    void showStep(ProgressStep* step);

    Panel* m_panel = new Panel(QT_TRANSLATE_NOOP("Panel", "Progress"));
    QFormLayout* m_rows = new QFormLayout(m_panel); ///< the last one is the total
    QMap<ProgressStep*, QProgressBar*> m_bars;
    QProgressBar* m_total = new QProgressBar; ///< in percent
    QPushButton* m_abort = new QPushButton;
};

ProgressDialog::ProgressDialog(QWidget* parent)
    : QDialog(parent)
{
    m_rows->addRow(m_panel->makeLabel(QT_TRANSLATE_NOOP("Panel", "Total"), m_total), m_total);
    m_panel->translate(m_abort, "text", QT_TRANSLATE_NOOP("Panel", "A&bort"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_panel);
    layout->addWidget(m_abort, 0, Qt::AlignRight);
    const auto* states = StateHandler::getInstance();
    connect(states, &StateHandler::createNewProcessRequested, this, &ProgressDialog::begin);
    connect(states, &StateHandler::createNewProgressStepRequested, this, &ProgressDialog::addStep);
    connect(states, &StateHandler::renameProcessTitleRequested, this, &QWidget::setWindowTitle);
    connect(states, &StateHandler::abortProcess, m_abort, [this] { m_abort->setEnabled(false); });
    connect(m_abort, &QPushButton::clicked, this, &ProgressDialog::reject);
}

void ProgressDialog::begin(const QString& process, bool withTotal, bool withAbort)
{
    m_bars.clear();
    while (m_rows->rowCount() > 1)
        m_rows->removeRow(0);
    setWindowTitle(process);
    m_rows->labelForField(m_total)->setVisible(withTotal);
    m_total->setVisible(withTotal);
    m_abort->setVisible(withAbort);
    m_abort->setEnabled(true);
    show();
}

void ProgressDialog::addStep(ProgressStep* step, bool inFront)
{
    m_bars[step] = new QProgressBar;
    m_rows->insertRow(inFront ? 0 : m_rows->rowCount() - 1, step->getProgressStepLabel(), m_bars[step]);
    connect(step, &ProgressStep::updateProgressStepRequested, this, &ProgressDialog::showStep);
    showStep(step);
}

void ProgressDialog::showStep(ProgressStep* step)
{
    if (!m_bars.contains(step))
        return; // of the process before, with a signal that was still on its way
    const auto steps = static_cast<int>(step->getProgressBarSteps());
    m_bars[step]->setMaximum(steps);
    m_bars[step]->setValue(qMin(static_cast<int>(step->getCurrentProgressBarStep()), steps));
    double done = 0;
    for (const QProgressBar* bar : std::as_const(m_bars))
        done += static_cast<double>(bar->value()) / qMax(bar->maximum(), 1);
    m_total->setValue(static_cast<int>(100 * done / static_cast<double>(m_bars.size())));
}

void ProgressDialog::reject()
{
    if (m_abort->isVisibleTo(this))
        StateHandler::getInstance()->setAbort();
}

} // namespace

QDialog* makeProgressDialog(QWidget* parent)
{
    return new ProgressDialog(parent);
}
