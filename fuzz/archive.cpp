#include "Fuzz.h"

#include "tests/TestFiles.h"

#include "globals/DataFileReader.h"

#include <array>
#include <unzip.h>

using namespace TEKLUVA;

namespace {

/// What an entry may claim, so that a run is not spent on the making of large buffers.
constexpr quint64 LARGEST_ENTRY = 1 << 20;
constexpr std::size_t LONGEST_NAME = 256;

/// What minizip itself finds in the archive: names, cut, and sizes; nothing for a damaged one.
std::vector<std::pair<std::string, quint64>> entriesByMinizip(const QByteArray& fileName)
{
    std::vector<std::pair<std::string, quint64>> entries;
    void* zip = unzOpen64(fileName.constData());
    for (int result = zip ? unzGoToFirstFile(zip) : UNZ_ERRNO; result == UNZ_OK;
         result = unzGoToNextFile(zip)) {
        std::array<char, LONGEST_NAME + 1> name{};
        unz_file_info64 info{};
        if (unzGetCurrentFileInfo64(zip, &info, name.data(), LONGEST_NAME, nullptr, 0, nullptr, 0) != UNZ_OK)
            break;
        entries.emplace_back(name.data(), info.uncompressed_size);
    }
    unzClose(zip);
    return entries;
}

} // namespace

/// An archive, read in every way, and by minizip alone.
void fuzz(const QByteArray& input)
{
    const QString file = QStringLiteral("subject");
    require(TestFiles::write(file, input));
    for (const QString& password : {QString(), QStringLiteral("house-planner!")}) {
        const DataFileReader reader(file, password);
        require(reader.isArchiv() || reader.getFileContent().size() <= input.size());
        std::vector<std::string> names;
        std::vector<std::pair<std::string, quint64>> entries;
        const bool isWhole = reader.visitArchivedFiles([&](const ArchivedFile& entry) {
            names.push_back(entry.name.substr(0, LONGEST_NAME));
            entries.emplace_back(names.back(), entry.size);
            const auto content = entry.size <= LARGEST_ENTRY ? entry.content() : std::nullopt;
            require(!content || content->size() <= int(entry.size));
            if (entry.size <= LARGEST_ENTRY)
                reader.getContentOfArchivedFile(entry.name);
            return true;
        });
        require(entries == entriesByMinizip(QFile::encodeName(file)));
        require(reader.getListOfArchivedFiles() == (isWhole ? names : std::vector<std::string>()));
    }
}
