#include "PackingJob.h"

#include "Texts.h"

#include "globals/ConfigManager.h"
#include "globals/DataFileCreator.h"
#include "globals/DataFileReader.h"
#include "globals/StateHandler.h"

#include <QTemporaryDir>

using namespace TEKLUVA;

namespace {

using Files = QMap<QString, QByteArray>;

constexpr int FILE_SIZE = 256 * 1024; ///< bytes
constexpr const char *PACK_STEP = "pack", *CHECK_STEP = "check";

void addStep(const char* name, const QString& label)
{
    auto* states = StateHandler::getInstance();
    states->addProgressStep(QLatin1String(name), ProgressStep::E_PRT_BAR, label, QString(), false,
                            ProgressStep::E_PS_WAITING);
    states->setProgressBarSteps(QLatin1String(name), PACKED_FILES);
}

/// Shows that \p step has done \p files. False when the user has asked for an end.
bool goOn(const char* step, int files)
{
    auto* states = StateHandler::getInstance();
    const auto state = files < PACKED_FILES ? ProgressStep::E_PS_RUNNING : ProgressStep::E_PS_FINISHED;
    states->setProgressStepState(QLatin1String(step), state); // a start also finishes the step before
    states->setCurrentProgressBarStep(QLatin1String(step), static_cast<unsigned int>(files));
    return !states->wasAborted();
}

bool holds(const DataFileReader& archive, const Files& files)
{
    int checked = 0;
    archive.visitArchivedFiles([&](const ArchivedFile& entry) {
        const bool isSame =
            goOn(CHECK_STEP, checked) && entry.content() == files.value(QString::fromStdString(entry.name));
        checked += isSame ? 1 : 0;
        return isSame;
    });
    return checked == PACKED_FILES && goOn(CHECK_STEP, checked);
}

} // namespace

E_ProcessResult packAndCheck()
{
    addStep(PACK_STEP, Texts::tr("Pack archive"));
    addStep(CHECK_STEP, Texts::tr("Check archive"));
    const QTemporaryDir folder(ConfigManager::getInstance()->getPath(E_PT_TEMP_CACHE)
                               + QLatin1String("planner-XXXXXX"));
    const QString archive = folder.filePath(QStringLiteral("rooms.dat"));
    const QString password = QStringLiteral("planner-example");
    Files files;
    for (int file = 0; file < PACKED_FILES; ++file)
        files[QString::number(file)] = QByteArray(FILE_SIZE, static_cast<char>(file));
    const auto goOnPacking = [](int file) { return goOn(PACK_STEP, file); };
    if (folder.isValid() && DataFileCreator().createArchivFromData(files, archive, password, goOnPacking)
        && holds(DataFileReader(archive, password), files))
        return E_PR_DONE;
    return StateHandler::getInstance()->wasAborted() ? E_PR_ABORTED : E_PR_FAILED;
}
