#include "Archive.h"
#include "Bench.h"
#include "Process.h"

#include <zip.h>

#include <QByteArray>
#include <QDir>
#include <QFile>

using namespace Bench;

namespace {

constexpr int ENTRIES = 10000;
constexpr int FEW_ENTRIES = 10;

QString target()
{
    return folder(QStringLiteral("extracted"));
}

void emptyTarget()
{
    QDir(target()).removeRecursively();
    target();
}

bool isWhole(int entries)
{
    return QDir(target()).entryList(QDir::Files).size() == entries;
}

std::vector<std::string> ourCommand(int entries)
{
    return {GLOBALSCTL, "data", "extract", archive(entries), "--output", target().toStdString()};
}

bool extractWithUnzip()
{
    return run({"unzip", "-q", archive(ENTRIES), "-d", target().toStdString()}).isDone;
}

bool extractEntry(zip_t* archive, zip_uint64_t entry)
{
    zip_stat_t info{};
    zip_stat_index(archive, entry, 0, &info);
    zip_file_t* source = zip_fopen_index(archive, entry, 0);
    QByteArray content(static_cast<int>(info.size), Qt::Uninitialized);
    const bool isRead = zip_fread(source, content.data(), info.size) == content.size();
    zip_fclose(source);
    QFile file(target() + QLatin1Char('/') + QString::fromUtf8(info.name));
    return isRead && file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

/// The archive stays open, and no process is started.
bool extractWithLibzip()
{
    zip_t* opened = zip_open(archive(ENTRIES).c_str(), ZIP_RDONLY, nullptr);
    bool isDone = opened != nullptr;
    for (zip_uint64_t entry = 0; isDone && entry < ENTRIES; ++entry)
        isDone = extractEntry(opened, entry);
    zip_discard(opened);
    return isDone;
}

/// How much more memory all entries take than a few.
void addMemory()
{
    benchmark::RegisterBenchmark("extract all/memory/ours", [](benchmark::State& state) {
        for ([[maybe_unused]] const auto& iteration : state) {
            emptyTarget();
            const double few = runWatched(ourCommand(FEW_ENTRIES)).peakMebibytes;
            emptyTarget();
            const double all = runWatched(ourCommand(ENTRIES)).peakMebibytes;
            state.counters["peak MiB"] = all;
            state.counters["MiB more than for 10 entries"] = all - few;
        }
    })->Iterations(1);
}

} // namespace

void Bench::addExtraction()
{
    const auto add = [](const std::string& side, const auto& extract) {
        addSlow("extract all/10,000 entries/" + side, &emptyTarget, [extract] {
            return extract() && isWhole(ENTRIES);
        })->Iterations(1);
    };
    add("libzip", &extractWithLibzip);
    add("unzip", &extractWithUnzip);
    if (!run({GLOBALSCTL, "data", "extract", "--help"}).isDone)
        return; // built without the tool
    add("ours", [] { return run(ourCommand(ENTRIES)).isDone; });
    addMemory();
}
