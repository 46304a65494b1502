#include "WorkPanel.h"

#include "PackingJob.h"
#include "Panel.h"

#include "globals/Worker.h"
#include "globals/widgets/ProgressDialog.h"

#include <QtWidgets>

using namespace TEKLUVA;

namespace {

class WorkPanel : public Panel
{
public:
    WorkPanel();
    ~WorkPanel() override;

private:
    void start();
    void showEnd(E_ProcessResult result);

    QPushButton* m_start = new QPushButton;
    std::future<E_ProcessResult> m_work;
};

WorkPanel::WorkPanel()
    : Panel(QT_TRANSLATE_NOOP("Panel", "Work"))
{
    translate(m_start, "text", QT_TRANSLATE_NOOP("Panel", "&Pack and check files"));
    (new QVBoxLayout(this))->addWidget(m_start, 0, Qt::AlignLeft);
    (new ProgressDialog(this))->setWindowModality(Qt::WindowModal);
    connect(m_start, &QPushButton::clicked, this, &WorkPanel::start);
    connect(StateHandler::getInstance(), &StateHandler::processFinished, this, &WorkPanel::showEnd);
}

WorkPanel::~WorkPanel()
{
    StateHandler::getInstance()->setAbort(); // the future waits
}

void WorkPanel::start()
{
    m_start->setEnabled(false);
    m_work = runWorker(Panel::tr("Packing"), &packAndCheck);
}

void WorkPanel::showEnd(E_ProcessResult result)
{
    m_start->setEnabled(true);
    const QString size =
        QLocale().formattedDataSize(qint64(PACKED_FILES) * PACKED_FILE_SIZE, 1, QLocale::DataSizeSIFormat);
    if (result == E_PR_DONE)
        report(Panel::tr("Packed and checked %n file(s), %1.", nullptr, PACKED_FILES).arg(size),
               E_ST_INFORMATION);
    else if (result == E_PR_ABORTED)
        report(Panel::tr("The work was aborted."), E_ST_WARNING);
    else
        report(Panel::tr("The work failed."), E_ST_ERROR);
}

} // namespace

QWidget* makeWorkPanel()
{
    return new WorkPanel;
}
