#include "support/Extraction.h"

#include "support/Failure.h"
#include "support/FileSystem.h"

#include "globals/AtomicFile.h"
#include "globals/Containment.h"
#include "globals/DataFileReader.h"

#include <algorithm>
#include <system_error>

namespace globalsctl {

namespace fs = std::filesystem;

namespace {

constexpr const char* SEPARATORS = "/\\"; ///< an archive may have been made on another system

bool isSeparator(char character)
{
    return character == '/' || character == '\\';
}

bool isAbsolute(const std::string& name)
{
    const bool hasDrive = name.size() > 2 && name[1] == ':' && isSeparator(name[2]);
    return isSeparator(name[0]) || hasDrive;
}

/// Whether one of the parts of \p name is "..".
bool hasParentStep(const std::string& name)
{
    std::size_t begin = 0;
    while (begin <= name.size()) {
        const std::size_t end = std::min(name.find_first_of(SEPARATORS, begin), name.size());
        if (name.compare(begin, end - begin, "..") == 0)
            return true;
        begin = end + 1;
    }
    return false;
}

/// Why no file may have that \p name; empty for a good one.
QString faultOf(const std::string& name)
{
    if (name.empty())
        return QStringLiteral("has no name");
    if (isAbsolute(name))
        return QStringLiteral("has an absolute name");
    return hasParentStep(name) ? QStringLiteral("has a name with \"..\"") : FileSystem::faultOfEntry(name);
}

QString reasonOf(const std::error_code& error)
{
    return QString::fromStdString(error.message());
}

} // namespace

Extraction::Extraction(const QString& folder, Existing existing, const QString& password)
    : m_existing(existing)
    , m_opener(password)
{
    const fs::path given = FileSystem::nativePath(folder);
    std::error_code error;
    fs::create_directories(given, error);
    m_folder = fs::canonical(given, error);
    if (!error && !fs::is_directory(m_folder, error))
        error = std::make_error_code(std::errc::not_a_directory);
    if (error)
        throw Failure(QStringLiteral("folder %1 could not be made: %2").arg(folder, reasonOf(error)));
}

QString Extraction::extract(const TEKLUVA::ArchivedFile& entry)
{
    if (QString fault = faultOf(entry.name); !fault.isEmpty())
        return fault;
    const fs::path place = m_folder / FileSystem::pathOfEntry(entry.name);
    const fs::path folder = place.parent_path(); // that of the entry "a/", a folder, is "a"
    if (QString fault = faultOfFolder(folder); !fault.isEmpty())
        return fault;
    if (!place.has_filename())
        return {};
    if (QString obstacle = obstacleAt(place); !obstacle.isEmpty())
        return obstacle;
    const auto content = m_opener.open(entry);
    return content ? write(place, *content) : m_opener.fault();
}

QString Extraction::write(const fs::path& place, const QByteArray& content)
{
    using TEKLUVA::AtomicFile;
    AtomicFile file(place, AtomicFile::Link::Replaced);
    // Thousands of files cannot wait for the disk each.
    const bool isPlaced = file.write(content) && file.commit(AtomicFile::Durability::Later);
    if (isPlaced)
        return {};
    m_isDiskFull = FileSystem::isWantOfRoom(file.errorCode());
    return QStringLiteral("could not be written: %1").arg(file.error());
}

QString Extraction::faultOfFolder(const fs::path& folder)
{
    if (folder.native() == m_lastFolder.native())
        return {}; // true of most entries, and the checks below cost several system calls
    if (!TEKLUVA::isWithin(folder, m_folder))
        return QStringLiteral("would lie outside of the folder, through a link");
    std::error_code error;
    fs::create_directories(folder, error);
    if (!error && !fs::is_directory(folder, error))
        error = std::make_error_code(std::errc::not_a_directory);
    if (error)
        return QStringLiteral("has a folder that could not be made: %1").arg(reasonOf(error));
    m_lastFolder = folder;
    return {};
}

QString Extraction::obstacleAt(const fs::path& place) const
{
    std::error_code error;
    const fs::file_type type = fs::symlink_status(place, error).type();
    if (type == fs::file_type::directory)
        return QStringLiteral("would replace a folder");
    if (type == fs::file_type::regular || type == fs::file_type::symlink)
        return m_existing == Existing::Replaced ? QString()
                                                : QStringLiteral("exists already; --force replaces it");
    return type == fs::file_type::not_found ? QString() : QStringLiteral("would replace what is no file");
}

} // namespace globalsctl
