#include "Bench.h"

#include "globals/Settings.h"

#include <KConfig>
#include <KConfigGroup>

#include <QCoreApplication>
#include <QFile>
#include <QSettings>

#include <memory>

using namespace TEKLUVA;

namespace {

constexpr int GROUPS = 5;
constexpr int KEYS = 6;

QString groupName(int group)
{
    return QStringLiteral("group_%1").arg(group);
}

QString keyName(int key)
{
    return QStringLiteral("key_%1").arg(key);
}

/// A file of its own for each side: Qt shares what it knows of a file between all who use it. Made anew, so
/// that all files are of the same length.
QString settingsFile(const char* side)
{
    QString path = Bench::folder(QStringLiteral("settings")) + QLatin1Char('/') + QString::fromLatin1(side)
                   + QStringLiteral(".ini");
    QSettings file(path, QSettings::IniFormat);
    for (int group = 0; group < GROUPS; ++group) {
        for (int key = 0; key < KEYS; ++key)
            file.setValue(groupName(group) + QLatin1Char('/') + keyName(key), 1000);
    }
    return path;
}

/// As another process would, with another size, because QSettings looks at that and the milliseconds only.
void changeFile(const QString& path)
{
    static bool isLonger = false;
    isLonger = !isLonger;
    QFile file(path);
    Bench::require(file.open(QIODevice::ReadWrite), "the settings file cannot be opened");
    const QByteArray content = file.readAll().trimmed();
    file.resize(0);
    file.write(content + (isLonger ? "\n\n" : "\n"));
}

/// The names are no part of the work.
struct Place
{
    QString group = groupName(2);
    QString key = keyName(3);
};

/// Different from the value before, in four digits.
int nextValue()
{
    static int value = 0;
    return 1000 + (value = (value + 1) % 9000);
}

/// What other processes have written is seen by each read, and what is written is on disk.
class Ours
{
public:
    static constexpr const char* NAME = "ours";
    explicit Ours(const QString& path)
        : m_settings(path, QSettings::IniFormat, nullptr)
    {
    }
    QVariant read() { return m_settings.getSetting(m_place.group, m_place.key); }
    int write()
    {
        m_settings.setSetting(m_place.group, m_place.key, nextValue());
        return 0;
    }

private:
    Place m_place;
    Settings m_settings;
};

class WithQt
{
public:
    static constexpr const char* NAME = "QSettings";
    explicit WithQt(const QString& path)
        : m_settings(path, QSettings::IniFormat)
    {
    }
    QVariant read()
    {
        m_settings.sync();
        return m_settings.value(m_path);
    }
    int write()
    {
        m_settings.setValue(m_path, nextValue());
        m_settings.sync();
        return 0;
    }

private:
    const QString m_path = Place().group + QLatin1Char('/') + Place().key;
    QSettings m_settings;
};

class WithKConfig
{
public:
    static constexpr const char* NAME = "KConfig";
    explicit WithKConfig(const QString& path)
        : m_config(path, KConfig::SimpleConfig)
    {
    }
    QString read()
    {
        m_config.reparseConfiguration();
        return m_config.group(m_place.group).readEntry(m_place.key);
    }
    int write()
    {
        m_config.group(m_place.group).writeEntry(m_place.key, nextValue());
        m_config.sync();
        return 0;
    }

private:
    Place m_place;
    KConfig m_config;
};

template <typename Side>
void addSide()
{
    const std::string name = Side::NAME;
    const auto make = [] { return std::make_shared<Side>(settingsFile(Side::NAME)); };
    Bench::add("read one setting/30 keys/" + name,
               [make] { return [side = make()] { return side->read(); }; });
    Bench::add("write one setting/30 keys/" + name, [make] {
        return [side = make()] { return side->write(); };
    })->UseRealTime();
    const auto path = std::make_shared<QString>();
    const auto side = std::make_shared<std::unique_ptr<Side>>();
    const auto change = [path] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (path->isEmpty())
            *path = settingsFile(Side::NAME);
        changeFile(*path);
    };
    Bench::addSlow(
        "read one setting changed by others/30 keys/" + name,
        [=] {
            if (!*side) {
                change();
                *side = std::make_unique<Side>(*path);
            }
            change();
        },
        [side] { return QVariant((*side)->read()).toInt() == 1000; });
    Bench::addSlow("open settings and read one/30 keys/" + name, change,
                   [path] { return QVariant(Side(*path).read()).toInt() == 1000; });
}

} // namespace

void Bench::addSettingsAccess()
{
    addSide<Ours>();
    addSide<WithQt>();
    addSide<WithKConfig>();
}
