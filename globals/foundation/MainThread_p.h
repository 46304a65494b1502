#pragma once

#include <QCoreApplication>
#include <QThread>

namespace TEKLUVA {

/// Hands a new object over to the application's main thread, so that its signals arrive there. Without an
/// application there is no main thread to speak of, and the object stays where it is.
inline void moveToMainThread(QObject* object)
{
    const QCoreApplication* application = QCoreApplication::instance();
    if (application && QThread::currentThread() != application->thread())
        object->moveToThread(application->thread());
}

} // namespace TEKLUVA
