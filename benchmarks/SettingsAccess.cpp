#include "Bench.h"

#include "globals/Settings.h"

#include <KConfig>
#include <KConfigGroup>

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
    QVariant read() { return m_settings.getSetting(m_place.group, m_place.key); }
    int write()
    {
        m_settings.setSetting(m_place.group, m_place.key, nextValue());
        return 0;
    }

private:
    Place m_place;
    Settings m_settings{settingsFile(NAME), QSettings::IniFormat, nullptr};
};

class WithQt
{
public:
    static constexpr const char* NAME = "QSettings";
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
    QSettings m_settings{settingsFile(NAME), QSettings::IniFormat};
};

class WithKConfig
{
public:
    static constexpr const char* NAME = "KConfig";
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
    KConfig m_config{settingsFile(NAME), KConfig::SimpleConfig};
};

template <typename Side>
void addSide()
{
    const std::string name = Side::NAME;
    Bench::add("read one setting/30 keys/" + name,
               [] { return [side = std::make_shared<Side>()] { return side->read(); }; });
    Bench::add("write one setting/30 keys/" + name, [] {
        return [side = std::make_shared<Side>()] { return side->write(); };
    })->UseRealTime();
}

} // namespace

void Bench::addSettingsAccess()
{
    addSide<Ours>();
    addSide<WithQt>();
    addSide<WithKConfig>();
}
