#include "Archive.h"
#include "Bench.h"
#include "QuaZipPeer.h"

#include "globals/DataFileCreator.h"
#include "globals/DataFileReader.h"

#include <KZip>
#include <minizip/unzip.h>
#include <zip.h>

#include <QFile>
#include <QMap>

#include <array>
#include <dlfcn.h>
#include <map>
#include <memory>

using namespace TEKLUVA;

namespace {

constexpr int ENTRY_SIZE = 1024;
constexpr int MOST_ENTRIES = 10000;
constexpr std::size_t LONGEST_NAME = 256;

struct Wanted
{
    QString path;
    std::string name; ///< of one entry
};

template <auto Close>
struct Closer
{
    template <typename Handle>
    void operator()(Handle* handle) const
    {
        Close(handle);
    }
};
using MinizipArchive = std::unique_ptr<void, Closer<&unzClose>>;
using LibzipArchive = std::unique_ptr<zip_t, Closer<&zip_discard>>;
using LibzipFile = std::unique_ptr<zip_file_t, Closer<&zip_fclose>>;

// Each side opens the archive in each call, because ours does, and closes it.

std::size_t listWithUs(const Wanted& wanted)
{
    return DataFileReader(wanted.path, QString()).getListOfArchivedFiles().size();
}

QByteArray readWithUs(const Wanted& wanted)
{
    return DataFileReader(wanted.path, QString()).getContentOfArchivedFile(wanted.name);
}

std::size_t listWithMinizip(const Wanted& wanted)
{
    const MinizipArchive archive(unzOpen64(QFile::encodeName(wanted.path).constData()));
    std::vector<std::string> names;
    std::array<char, LONGEST_NAME + 1> name{};
    int result = unzGoToFirstFile(archive.get());
    while (result == UNZ_OK) {
        unz_file_info64 info{};
        unzGetCurrentFileInfo64(archive.get(), &info, name.data(), LONGEST_NAME, nullptr, 0, nullptr, 0);
        names.emplace_back(name.data());
        result = unzGoToNextFile(archive.get());
    }
    return names.size();
}

QByteArray readWithMinizip(const Wanted& wanted)
{
    constexpr int CASE_SENSITIVE = 1;
    const MinizipArchive archive(unzOpen64(QFile::encodeName(wanted.path).constData()));
    unzLocateFile(archive.get(), wanted.name.c_str(), CASE_SENSITIVE);
    unz_file_info64 info{};
    unzGetCurrentFileInfo64(archive.get(), &info, nullptr, 0, nullptr, 0, nullptr, 0);
    QByteArray content(static_cast<int>(info.uncompressed_size), Qt::Uninitialized);
    unzOpenCurrentFile(archive.get());
    unzReadCurrentFile(archive.get(), content.data(), static_cast<unsigned>(content.size()));
    unzCloseCurrentFile(archive.get());
    return content;
}

LibzipArchive openWithLibzip(const Wanted& wanted)
{
    return LibzipArchive(zip_open(QFile::encodeName(wanted.path).constData(), ZIP_RDONLY, nullptr));
}

std::size_t listWithLibzip(const Wanted& wanted)
{
    const LibzipArchive archive = openWithLibzip(wanted);
    const auto count = static_cast<zip_uint64_t>(zip_get_num_entries(archive.get(), 0));
    std::vector<std::string> names;
    for (zip_uint64_t entry = 0; entry < count; ++entry)
        names.emplace_back(zip_get_name(archive.get(), entry, 0));
    return names.size();
}

QByteArray contentWithLibzip(zip_t* archive, const std::string& name)
{
    zip_stat_t info{};
    zip_stat(archive, name.c_str(), 0, &info);
    const LibzipFile file(zip_fopen_index(archive, info.index, 0));
    QByteArray content(static_cast<int>(info.size), Qt::Uninitialized);
    zip_fread(file.get(), content.data(), info.size);
    return content;
}

QByteArray readWithLibzip(const Wanted& wanted)
{
    return contentWithLibzip(openWithLibzip(wanted).get(), wanted.name);
}

/// Bound before the program's own symbols, so that QuaZip finds its own minizip and we find ours.
const Bench::QuaZipPeer& quaZip()
{
    static void* const MODULE = dlopen(QUAZIP_MODULE, RTLD_NOW | RTLD_LOCAL | RTLD_DEEPBIND);
    Bench::require(MODULE, "the module of QuaZip cannot be loaded");
    static const auto* const PEER = static_cast<const Bench::QuaZipPeer*>(dlsym(MODULE, "quaZipPeer"));
    return *PEER;
}

std::size_t listWithQuaZip(const Wanted& wanted)
{
    return static_cast<std::size_t>(quaZip().list(wanted.path).size());
}

QByteArray readWithQuaZip(const Wanted& wanted)
{
    return quaZip().read(wanted.path, QString::fromStdString(wanted.name));
}

std::size_t listWithKArchive(const Wanted& wanted)
{
    KZip archive(wanted.path);
    archive.open(QIODevice::ReadOnly);
    return static_cast<std::size_t>(archive.directory()->entries().size());
}

QByteArray readWithKArchive(const Wanted& wanted)
{
    KZip archive(wanted.path);
    archive.open(QIODevice::ReadOnly);
    return archive.directory()->file(QString::fromStdString(wanted.name))->data();
}

struct Side
{
    const char* name;
    std::size_t (*list)(const Wanted& wanted);
    QByteArray (*read)(const Wanted& wanted);
};
constexpr Side SIDES[] = {
    {"ours", &listWithUs, &readWithUs},
    {"minizip", &listWithMinizip, &readWithMinizip},
    {"QuaZip", &listWithQuaZip, &readWithQuaZip},
    {"libzip", &listWithLibzip, &readWithLibzip},
    {"KArchive", &listWithKArchive, &readWithKArchive},
};

struct Size
{
    const char* name;
    int entries;
};
constexpr Size SIZES[] = {{"10 entries", 10}, {"1,000 entries", 1000}, {"10,000 entries", MOST_ENTRIES}};

/// The entry in the middle is what finding one by its name costs on the average.
Wanted wantedOf(int count)
{
    return {QString::fromStdString(Bench::archive(count)), Bench::entryName(count / 2)};
}

// All entries one after the other, by one reader or from one archive that stays open.

std::size_t readAllWithUs(const std::string& path)
{
    DataFileReader reader(QString::fromStdString(path), QString());
    std::size_t bytes = 0;
    for (int entry = 0; entry < MOST_ENTRIES; ++entry)
        bytes += static_cast<std::size_t>(reader.getContentOfArchivedFile(Bench::entryName(entry)).size());
    return bytes;
}

std::size_t readAllWithLibzip(const std::string& path)
{
    const LibzipArchive archive(zip_open(path.c_str(), ZIP_RDONLY, nullptr));
    std::size_t bytes = 0;
    for (int entry = 0; entry < MOST_ENTRIES; ++entry)
        bytes += static_cast<std::size_t>(contentWithLibzip(archive.get(), Bench::entryName(entry)).size());
    return bytes;
}

void addAll(const char* side, std::size_t (*readAll)(const std::string& path))
{
    Bench::addSlow(
        std::string("read all entries by name/10,000 entries/") + side, [] { Bench::archive(MOST_ENTRIES); },
        [readAll] { return readAll(Bench::archive(MOST_ENTRIES)) == std::size_t{MOST_ENTRIES} * ENTRY_SIZE; })
        ->Unit(benchmark::kMillisecond);
}

void addSide(const Size& size, const Side& side)
{
    const std::string names = std::string(size.name) + "/" + side.name;
    Bench::add("list an archive/" + names, [side, size] {
        const Wanted wanted = wantedOf(size.entries);
        Bench::require(side.list(wanted) == static_cast<std::size_t>(size.entries), "entries are missing");
        return [side, wanted] { return side.list(wanted); };
    });
    Bench::add("read one entry by name/" + names, [side, size] {
        const Wanted wanted = wantedOf(size.entries);
        Bench::require(side.read(wanted) == Bench::text(ENTRY_SIZE), "an entry is read differently");
        return [side, wanted] { return side.read(wanted); };
    });
}

std::string makeArchive(int count)
{
    QMap<QString, QByteArray> data;
    for (int entry = 0; entry < count; ++entry)
        data.insert(QString::fromStdString(Bench::entryName(entry)), Bench::text(ENTRY_SIZE));
    const QString path = Bench::folder(QStringLiteral("archives")) + QStringLiteral("/%1.zip").arg(count);
    Bench::require(DataFileCreator().createArchivFromData(data, path, QString()), "no archive can be made");
    return path.toStdString();
}

} // namespace

std::string Bench::entryName(int entry)
{
    constexpr int DIGITS = 5;
    const std::string number = std::to_string(entry);
    return "model-" + std::string(DIGITS - number.size(), '0') + number + ".dat";
}

const std::string& Bench::archive(int count)
{
    static std::map<int, std::string> paths;
    std::string& path = paths[count];
    if (path.empty())
        path = makeArchive(count);
    return path;
}

void Bench::addArchives()
{
    for (const Size& size : SIZES) {
        for (const Side& side : SIDES)
            addSide(size, side);
    }
    addAll("ours", &readAllWithUs);
    addAll("libzip", &readAllWithLibzip);
}
