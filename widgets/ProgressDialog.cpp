#include "globals/widgets/ProgressDialog.h"

#include "ToolTip_p.h"

#include <QEvent>
#include <QFormLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>

namespace TEKLUVA {

class GLOBALS_WIDGETS_NO_EXPORT ProgressDialog::Private
{
public:
    /// What a step is shown with.
    struct Row
    {
        unsigned int id;
        QProgressBar* bar;
    };

    void show(const ProgressSnapshot& snapshot);
    void setSteps(const QVector<ProgressStepSnapshot>& shown);
    void setTexts() const;

    QFormLayout* rows = new QFormLayout; ///< the last one is the total
    QVector<Row> steps;
    QLabel* totalLabel = new QLabel;
    QProgressBar* total = new QProgressBar; ///< in percent
    QPushButton* abort = new QPushButton;
    QTimer opening; ///< of a process that lasts long enough
};

namespace {

constexpr int MIN_CHARACTERS = 60;   ///< of the width
constexpr int LABEL_CHARACTERS = 40; ///< of its labels, at most

bool isPercentage(ProgressStep::E_ProgressType type)
{
    return type == ProgressStep::E_PRT_PERCENT || type == ProgressStep::E_PRT_PERCENT_ALT;
}

void showStep(const ProgressStepSnapshot& step, QProgressBar* bar)
{
    const bool showsPercent = isPercentage(step.type);
    quint64 all = showsPercent ? 100 : step.barSteps; // 0: the bar is busy
    quint64 done = showsPercent ? step.percent : step.currentBarStep;
    const bool isFinished = step.state == ProgressStep::E_PS_FINISHED;
    if (isFinished && (showsPercent || all == 0))
        done = all = std::max<quint64>(all, 1);
    constexpr quint64 LARGEST = std::numeric_limits<int>::max();
    const quint64 divisor = all / LARGEST + 1;
    bar->setMaximum(static_cast<int>(all / divisor));
    bar->setValue(static_cast<int>(done / divisor));
    bar->setToolTip(toolTipOf(step.description));
}

QString textOf(const ProgressStepSnapshot& step)
{
    const bool showsText = step.type == ProgressStep::E_PRT_TRANSFER && !step.displayText.isEmpty();
    return showsText ? QStringLiteral("%1: %2").arg(step.label, step.displayText) : step.label;
}

/// With both ends of a long text, such as the name of a file, for which the form would have no room.
void showText(const QString& text, QLabel* label)
{
    const QFontMetrics font = label->fontMetrics();
    const int width = LABEL_CHARACTERS * font.averageCharWidth();
    QString shown = font.elidedText(text, Qt::ElideMiddle, width);
    label->setText(shown.replace(QLatin1Char('&'), QLatin1String("&&"))); // one would mark a letter
    label->setToolTip(toolTipOf(text));
}

} // namespace

void ProgressDialog::Private::setTexts() const
{
    totalLabel->setText(ProgressDialog::tr("Gesamt"));
    abort->setText(ProgressDialog::tr("&Abbrechen"));
}

/// Makes the rows anew when the process has other steps than are shown.
void ProgressDialog::Private::setSteps(const QVector<ProgressStepSnapshot>& shown)
{
    const bool isSame =
        std::equal(steps.begin(), steps.end(), shown.begin(), shown.end(),
                   [](const Row& row, const ProgressStepSnapshot& step) { return row.id == step.id; });
    if (isSame)
        return;
    for (; !steps.isEmpty(); steps.removeLast())
        rows->removeRow(0);
    for (const ProgressStepSnapshot& step : shown) {
        steps.append({step.id, new QProgressBar});
        auto* label = new QLabel;
        label->setTextFormat(Qt::PlainText); // names of files are in it
        label->setBuddy(steps.last().bar);
        rows->insertRow(static_cast<int>(steps.size()) - 1, label, steps.last().bar);
    }
}

void ProgressDialog::Private::show(const ProgressSnapshot& snapshot)
{
    setSteps(snapshot.steps);
    for (int row = 0; row < steps.size(); ++row) {
        const ProgressStepSnapshot& step = snapshot.steps[row];
        auto* label = static_cast<QLabel*>(rows->labelForField(steps[row].bar));
        showStep(step, steps[row].bar);
        showText(textOf(step), label);
        label->setVisible(step.isVisible);
        steps[row].bar->setVisible(step.isVisible);
    }
    totalLabel->setVisible(snapshot.showsTotal);
    total->setVisible(snapshot.showsTotal);
    total->setValue(static_cast<int>(snapshot.totalPercent));
    abort->setVisible(snapshot.showsAbort);
    abort->setEnabled(!snapshot.isAborted);
}

ProgressDialog::ProgressDialog(QWidget* parent)
    : QDialog(parent)
    , d(std::make_unique<Private>())
{
    d->rows->addRow(d->totalLabel, d->total);
    d->totalLabel->setBuddy(d->total);
    d->setTexts();
    d->opening.setSingleShot(true);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(d->rows);
    layout->addWidget(d->abort, 0, Qt::AlignRight);
    setMinimumWidth(MIN_CHARACTERS * fontMetrics().averageCharWidth());
    const auto* states = StateHandler::getInstance();
    connect(states, &StateHandler::createNewProcessRequested, this, [this](const QString& name) {
        setWindowTitle(name);
        d->setSteps({}); // numbers begin anew with each process
        d->opening.start();
    });
    connect(states, &StateHandler::progressChanged, this, [this](const ProgressSnapshot& snapshot) {
        setWindowTitle(snapshot.processName);
        d->show(snapshot);
    });
    connect(states, &StateHandler::processFinished, this, [this, states](E_ProcessResult result) {
        if (states->isProcessRunning())
            return; // the next one began before a worker's last signal arrived
        d->opening.stop();
        done(result == E_PR_DONE ? Accepted : Rejected);
    });
    connect(&d->opening, &QTimer::timeout, this, &QWidget::show);
    connect(d->abort, &QPushButton::clicked, this, &ProgressDialog::reject);
}

ProgressDialog::~ProgressDialog() = default;

int ProgressDialog::getMinimumDuration() const
{
    return d->opening.interval();
}

void ProgressDialog::setMinimumDuration(int milliseconds)
{
    d->opening.setInterval(milliseconds);
}

void ProgressDialog::reject()
{
    const bool mayAbort = d->abort->isVisibleTo(this) && d->abort->isEnabled();
    if (mayAbort)
        StateHandler::getInstance()->setAbort();
}

void ProgressDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        d->setTexts();
    QDialog::changeEvent(event);
}

} // namespace TEKLUVA
