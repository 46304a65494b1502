#pragma once

#include <QJsonArray>
#include <QStringList>

namespace globalsctl {

class PresetFile;

/// What is found in several preset files, one after the other.
class PresetCheck
{
public:
    /// Strictly, notes make a file as bad as errors do.
    explicit PresetCheck(bool isStrict)
        : m_isStrict(isStrict)
    {
    }

    /// Prints an error for a file that cannot be read.
    void check(const QString& path);

    bool isGood() const { return m_bad == 0; }
    /// An object for each file.
    QJsonArray files() const { return m_files; }
    /// Prints the faults and notes, and for several files their number.
    void print() const;

private:
    void add(const QString& path, const PresetFile& file);
    void addUnreadable(const QString& path, const QString& reason);

    const bool m_isStrict;
    int m_bad = 0;
    QStringList m_lines;
    QJsonArray m_files;
};

} // namespace globalsctl
