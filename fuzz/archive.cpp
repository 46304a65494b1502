#include "Fuzz.h"

#include "globals/DataFileReader.h"

#include <QFile>

using namespace TEKLUVA;

namespace {

/// What an entry may claim, so that a run is not spent on the making of large buffers.
constexpr quint64 LARGEST_ENTRY = 1 << 20;

} // namespace

/// An archive, read in every way.
void fuzz(const QByteArray& input)
{
    QFile file(QStringLiteral("subject"));
    require(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(input) == input.size());
    for (const QString& password : {QString(), QStringLiteral("house-planner!")}) {
        const DataFileReader reader(file.fileName(), password);
        require(reader.isArchiv() || reader.getFileContent().size() <= input.size());
        std::vector<std::string> names;
        const bool isWhole = reader.visitArchivedFiles([&](const ArchivedFile& entry) {
            names.push_back(entry.name.substr(0, 256));
            const auto content = entry.size <= LARGEST_ENTRY ? entry.content() : std::nullopt;
            require(!content || content->size() <= int(entry.size));
            if (entry.size <= LARGEST_ENTRY)
                reader.getContentOfArchivedFile(entry.name);
            return true;
        });
        require(reader.getListOfArchivedFiles() == (isWhole ? names : std::vector<std::string>()));
    }
}
