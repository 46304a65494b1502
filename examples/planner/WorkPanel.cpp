#include "WorkPanel.h"

#include "PackingJob.h"
#include "Panel.h"
#include "ProgressDialog.h"

#include "globals/StateHandler.h"

#include <QtWidgets>

#include <future>

using namespace TEKLUVA;

namespace {

constexpr std::pair<const char*, const char*> STEPS[] = {
    {WRITE_STEP, QT_TRANSLATE_NOOP("Panel", "Write files")},
    {PACK_STEP, QT_TRANSLATE_NOOP("Panel", "Pack archive")},
    {CHECK_STEP, QT_TRANSLATE_NOOP("Panel", "Check archive")},
};

class WorkPanel : public Panel
{
public:
    WorkPanel();
    ~WorkPanel() override;

protected:
    void customEvent(QEvent* event) override;

private:
    void start();

    QPushButton* m_start = new QPushButton;
    QDialog* m_progress = makeProgressDialog(this);
    std::future<PackingResult> m_work;
};

WorkPanel::WorkPanel()
    : Panel(QT_TRANSLATE_NOOP("Panel", "Work"))
{
    translate(m_start, "text", QT_TRANSLATE_NOOP("Panel", "&Pack and check files"));
    (new QVBoxLayout(this))->addWidget(m_start, 0, Qt::AlignLeft);
    connect(m_start, &QPushButton::clicked, this, &WorkPanel::start);
}

WorkPanel::~WorkPanel()
{
    StateHandler::getInstance()->setAbort(); // the future waits
}

void WorkPanel::start()
{
    m_start->setEnabled(false);
    auto* states = StateHandler::getInstance();
    states->newProcess(Panel::tr("Packing"), true, true);
    for (const auto& [name, label] : STEPS) {
        states->addProgressStep(QLatin1String(name), ProgressStep::E_PRT_BAR, Panel::tr(label), QString(),
                                false, ProgressStep::E_PS_WAITING);
        states->setProgressBarSteps(QLatin1String(name), PACKED_FILES);
    }
    m_work = std::async(std::launch::async, [this] {
        const PackingResult result = packAndCheck();
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
        return result;
    });
}

/// The work has ended.
void WorkPanel::customEvent(QEvent* /*event*/)
{
    const PackingResult result = m_work.get();
    m_start->setEnabled(true);
    m_progress->accept();
    const QString size =
        QLocale().formattedDataSize(qint64(PACKED_FILES) * PACKED_FILE_SIZE, 1, QLocale::DataSizeSIFormat);
    if (result == PackingResult::Done)
        report(Panel::tr("Packed and checked %n file(s), %1.", nullptr, PACKED_FILES).arg(size),
               E_ST_INFORMATION);
    else if (result == PackingResult::Aborted)
        report(Panel::tr("The work was aborted."), E_ST_WARNING);
    else
        report(Panel::tr("The work failed."), E_ST_ERROR);
}

} // namespace

QWidget* makeWorkPanel()
{
    return new WorkPanel;
}
