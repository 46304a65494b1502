#include "globals/configuration/OverwriteQuestion_p.h"

#include "globals/ConfigManager.h"

#include <QApplication>
#include <QMessageBox>
#include <QThread>

namespace TEKLUVA {

namespace {

bool canAsk()
{
    const QCoreApplication* application = QCoreApplication::instance();
    return qobject_cast<const QApplication*>(application)
           && QThread::currentThread() == application->thread();
}

} // namespace

FileTree::Overwrite askToOverwrite(const QString& file)
{
    if (!canAsk())
        return FileTree::Overwrite::Fail;
    const QString title = ConfigManager::tr("Datei überschreiben");
    const QString question =
        ConfigManager::tr("Die Datei %1 existiert bereits. Soll sie überschrieben werden?").arg(file);
    const auto button = QMessageBox::information(nullptr, title, question, QMessageBox::Yes | QMessageBox::No,
                                                 QMessageBox::Yes);
    return button == QMessageBox::Yes ? FileTree::Overwrite::Replace : FileTree::Overwrite::Keep;
}

} // namespace TEKLUVA
