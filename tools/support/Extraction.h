#pragma once

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
    /// Makes the folder if need be; throws Failure when it cannot be had. Files that exist are kept, unless
    /// \p replaces is true.
    Extraction(const QString& folder, bool replaces);

    /// Writes the entry, with the folders on its way. The reason why that could not be done; empty for none.
    QString extract(const TEKLUVA::ArchivedFile& entry);

private:
    /// Makes \p folder if need be. Why no entry may lie in it; empty for none.
    QString faultOfFolder(const std::filesystem::path& folder);
    bool isInside(const std::filesystem::path& folder) const;
    QString obstacleAt(const std::filesystem::path& place) const;

    std::filesystem::path m_folder; ///< without links
    bool m_replaces;
    std::string m_lastFolder; ///< in which an entry may lie
};

} // namespace globalsctl
