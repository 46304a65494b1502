#include "support/Block.h"

namespace globalsctl {

bool beginsLikeArchive(const QByteArray& bytes)
{
    return bytes.startsWith("PK\3\4") || bytes.startsWith("PK\5\6");
}

} // namespace globalsctl
