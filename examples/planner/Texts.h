#pragma once

#include <QTranslator>

#include <functional>

class QLabel;
class QWidget;

/// The texts of the planner, which are all translated in its context. Main thread only, but for tr().
class Texts : public QObject
{
    Q_OBJECT

public:
    /// Belongs to the application object.
    static Texts* getInstance();

    /// Shows all texts in the language that the user prefers.
    void speakPreferredLanguage();
    /// Calls \p set now and after each change of the language, as long as \p context exists.
    void keep(QObject* context, const std::function<void()>& set) const;

Q_SIGNALS:
    void languageChanged();

private:
    using QObject::QObject;

    QTranslator m_translator;
};

/// Gives \p object the text \p source in the user's language, also when that changes, and returns it.
template <typename Object>
Object* translated(Object* object, const char* source, const char* property = "text")
{
    Texts::getInstance()->keep(
        object, [object, source, property] { object->setProperty(property, Texts::tr(source)); });
    return object;
}

/// A label that also leads the keyboard to \p buddy.
QLabel* makeLabel(const char* source, QWidget* buddy = nullptr);
