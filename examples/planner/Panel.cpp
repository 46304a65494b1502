#include "Panel.h"

#include "globals/Log.h"
#include "globals/LogManager.h"
#include "globals/StateHandler.h"

#include <QtWidgets>

using namespace TEKLUVA;

Panel::Panel(const char* title)
{
    translate(this, "title", title);
}

void Panel::translate(QObject* object, const char* name, const char* text) const
{
    const auto set = [object, name, text] { object->setProperty(name, tr(text)); };
    set();
    connect(this, &Panel::languageChanged, object, set);
}

QLabel* Panel::makeLabel(const char* text, QWidget* buddy)
{
    auto* label = new QLabel(this);
    label->setBuddy(buddy);
    translate(label, "text", text);
    return label;
}

void Panel::report(const QString& message, E_StateType type)
{
    constexpr int SHOWN_FOR = 8000;                                                   // milliseconds
    constexpr E_LogLevel LEVELS[] = {E_LL_INFO, E_LL_INFO, E_LL_WARNING, E_LL_ERROR}; // by E_StateType
    StateHandler::getInstance()->newStatusMessage(message, type, SHOWN_FOR);
    LogManager::getInstance()->getActiveLog()->logMessage(LEVELS[type], message.toStdString(), {}, 0);
}

void Panel::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        Q_EMIT languageChanged();
    QGroupBox::changeEvent(event);
}
