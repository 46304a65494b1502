#pragma once

#include <QByteArray>
#include <QList>

/// What the process asks of the system, while an object of this class lives: SystemCalls.cpp stands between
/// all libraries and the C library.
class SystemCalls
{
    Q_DISABLE_COPY(SystemCalls)

public:
    SystemCalls();
    ~SystemCalls();

    /// The call \p name fails with \p error from its \p first-th time on, 1 for every time.
    void fail(const QByteArray& name, int error, int first = 1);
    /// Files can no longer be made without a name.
    void forbidUnnamedFiles();

    /// The calls that change something or wait for the disk, in their order: "rename a b".
    static QByteArrayList changes();
    /// The files that were opened so that child processes would inherit them.
    static QByteArrayList inherited();
};
