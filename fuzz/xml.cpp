#include "Fuzz.h"

#include "globals/Log.h"
#include "globals/LogManager.h"
#include "globals/MessageHandler.h"

#include <QUrl>

using namespace TEKLUVA;

/// The description of an XML message of each type, and the address it comes from.
void fuzz(const QByteArray& input)
{
    MessageHandler handler(nullptr);
    for (const QtMsgType type : {QtDebugMsg, QtWarningMsg, QtCriticalMsg, QtFatalMsg})
        handler.message(type, textOf(input), QUrl(), SourceLocation(QUrl(textOf(input)), input.size()));
    require(LogManager::getInstance()->getActiveLog()->getEntryCount() == 4);
}
