#pragma once

#include <QCoreApplication>
#include <QThread>

namespace TEKLUVA {

/// Moves a new object to the application's main thread, so that its signals arrive there. Without an
/// application object no thread is known as the main one, and the object stays where it is.
inline void moveToMainThread(QObject* object)
{
    const QCoreApplication* application = QCoreApplication::instance();
    if (application && QThread::currentThread() != application->thread())
        object->moveToThread(application->thread());
}

} // namespace TEKLUVA
