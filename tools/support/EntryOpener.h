#pragma once

#include "support/Block.h"

#include "globals/DataFileReader.h"

#include <optional>

namespace globalsctl {

/// Opens the entries of an archive with one password, and keeps count of what they prove of it. The archive
/// must be open without the password.
class EntryOpener
{
public:
    /// An empty \p password means that the entries are taken as they are.
    explicit EntryOpener(const QString& password);

    /// The content of the entry. Nothing, with the reason in fault(), when it cannot be had.
    std::optional<QByteArray> open(const TEKLUVA::ArchivedFile& entry);
    QString fault() const { return m_fault; }

    /// The number of entries that speak for the password.
    int rightCount() const { return m_right; }
    /// The number of entries that speak against it.
    int wrongCount() const { return m_wrong; }
    /// The number of those that do so because they are no protected blocks.
    int formlessCount() const { return m_formless; }
    /// Prints a note when entries were opened that prove neither that the password is right nor that it is
    /// wrong.
    void noteIfUnproven() const;

private:
    std::optional<QByteArray> fail(const QString& fault);

    const QString m_password;
    const TEKLUVA::DataFileReader m_reader;
    QString m_fault;
    int m_right = 0;
    int m_wrong = 0;
    int m_formless = 0;
    int m_unproven = 0;
};

} // namespace globalsctl
