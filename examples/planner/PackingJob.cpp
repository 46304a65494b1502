#include "PackingJob.h"

#include "Panel.h"

#include "globals/ConfigManager.h"
#include "globals/DataFileCreator.h"
#include "globals/DataFileReader.h"
#include "globals/StateHandler.h"

#include <QRandomGenerator>
#include <QTemporaryDir>

#include <array>
#include <string>

using namespace TEKLUVA;

namespace {

constexpr const char *WRITE_STEP = "write", *PACK_STEP = "pack", *CHECK_STEP = "check";

constexpr std::pair<const char*, const char*> STEPS[] = {
    {WRITE_STEP, QT_TRANSLATE_NOOP("Panel", "Write files")},
    {PACK_STEP, QT_TRANSLATE_NOOP("Panel", "Pack archive")},
    {CHECK_STEP, QT_TRANSLATE_NOOP("Panel", "Check archive")},
};

void addSteps()
{
    auto* states = StateHandler::getInstance();
    for (const auto& [name, label] : STEPS) {
        states->addProgressStep(QLatin1String(name), ProgressStep::E_PRT_BAR, Panel::tr(label), QString(),
                                false, ProgressStep::E_PS_WAITING);
        states->setProgressBarSteps(QLatin1String(name), PACKED_FILES);
    }
}

/// The same for each call, so that nobody has to remember it.
QByteArray contentOf(int file)
{
    std::array<quint32, PACKED_FILE_SIZE / sizeof(quint32)> numbers{};
    QRandomGenerator(static_cast<quint32>(file)).generate(numbers.begin(), numbers.end());
    return {reinterpret_cast<const char*>(numbers.data()), PACKED_FILE_SIZE};
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

bool writeFiles(const QStringList& paths)
{
    ConfigManager* config = ConfigManager::getInstance();
    int file = 0;
    while (file < paths.size() && goOn(WRITE_STEP, file)
           && config->writeDataToFile(paths[file], contentOf(file), false))
        ++file;
    return file == paths.size();
}

bool checkArchive(const DataFileReader& archive)
{
    int file = 0;
    const auto isNext = [&file](const ArchivedFile& entry) {
        return goOn(CHECK_STEP, file) && entry.name == std::to_string(file)
               && entry.content() == contentOf(file++);
    };
    return archive.visitArchivedFiles(isNext) && file == PACKED_FILES && goOn(CHECK_STEP, file);
}

} // namespace

E_ProcessResult packAndCheck()
{
    addSteps();
    const QTemporaryDir folder(ConfigManager::getInstance()->getPath(E_PT_TEMP_CACHE)
                               + QLatin1String("planner-XXXXXX"));
    const QString archive = folder.filePath(QStringLiteral("rooms.dat"));
    const QString password = QStringLiteral("planner-example");
    QStringList paths;
    for (int file = 0; file < PACKED_FILES; ++file)
        paths << folder.filePath(QString::number(file));
    const auto goOnPacking = [](int file) { return goOn(PACK_STEP, file); };
    if (folder.isValid() && writeFiles(paths)
        && DataFileCreator().createArchivFromFiles(paths, archive, password, goOnPacking)
        && checkArchive(DataFileReader(archive, password)))
        return E_PR_DONE;
    return StateHandler::getInstance()->wasAborted() ? E_PR_ABORTED : E_PR_FAILED;
}
