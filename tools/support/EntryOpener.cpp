#include "support/EntryOpener.h"

#include "support/Output.h"

#include "globals/DataBlock.h"

namespace globalsctl {

using namespace TEKLUVA;

EntryOpener::EntryOpener(const QString& password)
    : m_password(password)
    , m_reader(QString(), password)
{
}

std::optional<QByteArray> EntryOpener::open(const ArchivedFile& entry)
{
    m_fault.clear();
    std::optional<QByteArray> content = entry.content();
    if (!content)
        return fail(QStringLiteral("could not be read: it is damaged"));
    if (m_password.isEmpty() || content->isEmpty())
        return content;
    const bool isBlock = !DataBlock::faultOf(*content);
    const PasswordProof proof = isBlock ? proofOf(*content, m_password) : PasswordProof::Wrong;
    m_formless += isBlock ? 0 : 1;
    m_right += proof == PasswordProof::Right ? 1 : 0;
    m_wrong += proof == PasswordProof::Wrong ? 1 : 0;
    m_unproven += proof == PasswordProof::None ? 1 : 0;
    if (!isBlock)
        return fail(QStringLiteral("is no protected block"));
    if (proof == PasswordProof::Wrong)
        return fail(QStringLiteral("could not be read: wrong password or damaged"));
    return m_reader.decryptData(*content);
}

std::optional<QByteArray> EntryOpener::fail(const QString& fault)
{
    m_fault = fault;
    return std::nullopt;
}

void EntryOpener::noteIfUnproven() const
{
    if (m_unproven > 0 && m_right == 0 && m_wrong == 0)
        printNote(QStringLiteral("note: nothing proves the password: no entry has padding"));
}

} // namespace globalsctl
