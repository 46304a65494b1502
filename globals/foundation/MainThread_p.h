#pragma once

#include <QCoreApplication>
#include <QThread>

namespace TEKLUVA {

/// Whether the calling thread is another one than the main one. Without an application object none is known
/// as the main one.
inline bool isOffMainThread()
{
    const QCoreApplication* application = QCoreApplication::instance();
    return application && QThread::currentThread() != application->thread();
}

/// Moves a new object to the application's main thread, so that its signals arrive there.
inline void moveToMainThread(QObject* object)
{
    if (isOffMainThread())
        object->moveToThread(QCoreApplication::instance()->thread());
}

} // namespace TEKLUVA
