#pragma once

#include "globals/DataFileReader.h"

#include <QByteArray>
#include <QSet>
#include <QStringList>

#include <string>
#include <vector>

namespace globalsctl {

/// An open archive, with the list of its entries up to where that is damaged. Entries are read as they are
/// stored: without a password.
class Archive
{
public:
    struct Entry
    {
        std::string name;
        quint64 size; ///< in bytes, with the header and the padding of a protected block
    };

    /// Throws Failure, which names what \p path is instead, when it is no archive with entries.
    explicit Archive(const QString& path);

    QString path() const { return m_reader.getFilename(); }
    const TEKLUVA::DataFileReader& reader() const { return m_reader; }
    const std::vector<Entry>& entries() const { return m_entries; }

    /// Whether the list of entries is not damaged.
    bool isWhole() const { return m_isWhole; }
    /// Prints an error when the list is damaged; call it after the work on the entries. Returns the exit
    /// code.
    int reportDamage() const;

private:
    const TEKLUVA::DataFileReader m_reader;
    std::vector<Entry> m_entries;
    bool m_isWhole = false;
};

/// The entries of an archive that the user wants: all when none are named.
class Selection
{
public:
    /// Prints an error for each of \p names that the archive does not have.
    Selection(const Archive& archive, const QStringList& names);

    bool has(const std::string& name) const;
    int count() const { return m_count; }
    /// Whether the archive has all names.
    bool isComplete() const { return m_isComplete; }

private:
    QSet<QByteArray> m_names;
    int m_count = 0;
    bool m_isComplete = false;
};

} // namespace globalsctl
