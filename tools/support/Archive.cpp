#include "support/Archive.h"

#include "support/Block.h"
#include "support/ExitCode.h"
#include "support/Failure.h"
#include "support/FileSystem.h"
#include "support/Files.h"
#include "support/Output.h"

#include "globals/DataBlock.h"

#include <QFile>
#include <QFileInfo>

#include <limits>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

/// Whether a file of \p size bytes that starts with \p start has the form of a protected block.
bool isLikeBlock(const QByteArray& start, qint64 size)
{
    // The form depends on the length modulo the cipher's block, and on the first byte.
    const qint64 rest = (size - DataBlock::HEADER_SIZE) % DataBlock::BLOCK_SIZE;
    return rest == 0 && start.size() >= DataBlock::HEADER_SIZE && !DataBlock::faultOf(start);
}

/// What the file is that is no archive, and which command is for it.
QString kindOf(const QString& path)
{
    constexpr int START = DataBlock::HEADER_SIZE + DataBlock::BLOCK_SIZE;
    QFile file(path);
    const QByteArray start = file.open(QIODevice::ReadOnly) ? file.read(START) : QByteArray();
    if (beginsLikeArchive(start))
        return QStringLiteral("%1 is an archive that is cut: its list of entries is missing").arg(path);
    if (isLikeBlock(start, file.size()))
        return QStringLiteral("%1 is no archive with entries but may be a protected block; use "
                              "\"data decrypt\", or \"presets show\" for presets")
            .arg(path);
    return QStringLiteral("%1 is no archive with entries").arg(path);
}

} // namespace

Archive::Archive(const QString& path)
    : m_reader(path, QString())
{
    requireReadable(path, std::numeric_limits<qint64>::max());
    if (!m_reader.isArchiv())
        throw Failure(kindOf(path));
    m_isWhole = m_reader.visitArchivedFiles([this](const ArchivedFile& entry) {
        m_entries.push_back({entry.name, entry.size});
        return true;
    });
    QFile file(path);
    if (m_entries.empty() && file.open(QIODevice::ReadOnly) && file.read(4) == "PK\5\6")
        throw Failure(QStringLiteral("%1 is an archive without entries").arg(path));
}

int Archive::reportDamage() const
{
    if (m_isWhole)
        return Done;
    printError(QStringLiteral("the list of entries in %1 is damaged; it ends after %2")
                   .arg(path(), QString::number(m_entries.size())));
    return Failed;
}

Selection::Selection(const Archive& archive, const QStringList& names)
{
    for (const QString& name : names)
        m_names << FileSystem::entryName(name);
    QSet<QByteArray> absent = m_names;
    for (const Archive::Entry& entry : archive.entries()) {
        m_count += has(entry.name) ? 1 : 0;
        absent.remove(QByteArray::fromStdString(entry.name));
    }
    for (const QByteArray& name : absent)
        printError(QStringLiteral("%1 is not in %2").arg(FileSystem::textOfEntry(name), archive.path()));
    m_isComplete = absent.isEmpty();
}

bool Selection::has(const std::string& name) const
{
    return m_names.isEmpty() || m_names.contains(QByteArray::fromStdString(name));
}

} // namespace globalsctl
