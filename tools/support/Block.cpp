#include "support/Block.h"

#include "globals/DataBlock.h"
#include "globals/DataFileReader.h"

namespace globalsctl {

using namespace TEKLUVA;

bool beginsLikeArchive(const QByteArray& bytes)
{
    return bytes.startsWith("PK\3\4") || bytes.startsWith("PK\5\6");
}

PasswordProof proofOf(const QByteArray& block, const QString& password)
{
    const int padCount = static_cast<uchar>(block[0]);
    if (padCount == 0)
        return PasswordProof::None;
    // The last part alone, as a block without padding: what stands before it is its initialisation vector.
    const QByteArray last =
        QByteArray(DataBlock::PAD_COUNT_SIZE, '\0') + block.right(2 * DataBlock::BLOCK_SIZE);
    const QByteArray plain = DataFileReader(QString(), password).decryptData(last);
    return plain.endsWith(QByteArray(padCount, '\0')) ? PasswordProof::Right : PasswordProof::Wrong;
}

} // namespace globalsctl
