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
    QMessageBox box(
        QMessageBox::Information, ConfigManager::tr("Datei überschreiben"),
        ConfigManager::tr("Die Datei %1 existiert bereits. Soll sie überschrieben werden?").arg(file),
        QMessageBox::Yes | QMessageBox::No);
    box.setInformativeText(
        ConfigManager::tr("Bei \"Nein\" bleibt sie, und die andere Datei wird nicht kopiert."));
    box.setDefaultButton(QMessageBox::Yes);
    return box.exec() == QMessageBox::Yes ? FileTree::Overwrite::Replace : FileTree::Overwrite::Keep;
}

} // namespace TEKLUVA
