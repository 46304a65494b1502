#pragma once

#include "support/EntryOpener.h"
#include "support/Files.h"

#include <QString>

#include <filesystem>

namespace TEKLUVA {
struct ArchivedFile;
}

namespace globalsctl {

/// Writes entries of an archive below one folder and nowhere else, whatever their names are.
class Extraction
{
public:
    /// Makes \p folder if it is missing; throws Failure when it cannot be made. Files that exist are kept
    /// unless they are to be replaced. An empty \p password means that the entries are taken as they are.
    Extraction(const QString& folder, Existing existing, const QString& password);

    /// Writes the entry and the folders in its name. Returns why that failed, to be put after the entry's
    /// name; empty when it is written.
    QString extract(const TEKLUVA::ArchivedFile& entry);

    /// Whether a failure was one of the disk, which the other entries would meet, too.
    bool isDiskFull() const { return m_isDiskFull; }

    /// What the entries have told of the password.
    const EntryOpener& opener() const { return m_opener; }

private:
    /// Makes \p folder if it is missing. Returns why no entry may be written into it; empty for a good one.
    QString faultOfFolder(const std::filesystem::path& folder);
    /// What is in the way of a file at \p place; empty for nothing.
    QString obstacleAt(const std::filesystem::path& place) const;

    std::filesystem::path m_folder; ///< canonical
    QString write(const std::filesystem::path& place, const QByteArray& content);

    Existing m_existing;
    bool m_isDiskFull = false;
    EntryOpener m_opener;
    std::filesystem::path m_lastFolder; ///< the last one that faultOfFolder() found good
};

} // namespace globalsctl
