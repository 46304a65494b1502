#pragma once

#include <QtGlobal>

namespace TEKLUVA {

/// As long as it lives, what Qt itself says on the calling thread does not go to the active log: a lock is
/// held that receivers of the log may need.
class QtMessagePause
{
    Q_DISABLE_COPY(QtMessagePause)

public:
    QtMessagePause();
    ~QtMessagePause();

    static bool isActive();
};

} // namespace TEKLUVA
