#include "globals/settings/SettingsFile_p.h"

#include "globals/settings/SettingsGuard_p.h"

#include <QEvent>
#include <QFile>
#include <QStringList>

#include <algorithm>
#include <new>

#include <sys/stat.h>

namespace TEKLUVA {

namespace {

class GroupScope
{
    Q_DISABLE_COPY(GroupScope)

public:
    GroupScope(QSettings& store, const QString& group)
        : m_store(store)
    {
        m_store.beginGroup(group);
    }
    ~GroupScope() { m_store.endGroup(); }

private:
    QSettings& m_store;
};

/// As QSettings spells it: without separators at the ends and without double ones.
QString fullKey(const QString& group, const QString& key)
{
    const QString path = group + QLatin1Char('/') + key;
    return path.split(QLatin1Char('/'), Qt::SkipEmptyParts).join(QLatin1Char('/'));
}

QString prefixOf(const QString& path)
{
    return path.isEmpty() ? path : path + QLatin1Char('/');
}

/// The keys right below \p group, or its sub-groups.
QStringList childNames(const QStringList& keys, const QString& group, bool groups)
{
    const QString prefix = prefixOf(fullKey(group, QString()));
    QStringList found;
    for (const QString& key : keys) {
        const int end = key.indexOf(QLatin1Char('/'), prefix.size());
        if (key.startsWith(prefix) && (end >= 0) == groups)
            found << key.mid(prefix.size(), end < 0 ? -1 : end - prefix.size());
    }
    found.removeDuplicates();
    return found;
}

/// The stamp of a file that was never looked at.
constexpr FileStamp UNSEEN = {-1};

FileStamp stampOf(const QByteArray& path)
{
    struct stat status
    {
    };
    if (stat(path.constData(), &status) != 0)
        return {};
    const auto nanoseconds = [](const timespec& time) {
        constexpr qint64 SECOND = 1'000'000'000;
        return time.tv_sec * SECOND + time.tv_nsec;
    };
    return {static_cast<qint64>(status.st_dev), static_cast<qint64>(status.st_ino), status.st_size,
            nanoseconds(status.st_mtim), nanoseconds(status.st_ctim)};
}

void applyTo(QMap<QString, QVariant>& values, const SettingsChange& change)
{
    const QString path = fullKey(change.group, change.key);
    if (change.value) {
        values.insert(path, *change.value);
        return;
    }
    const QString prefix = prefixOf(path);
    for (auto entry = values.begin(); entry != values.end();) {
        const bool removed = entry.key() == path || entry.key().startsWith(prefix);
        entry = removed ? values.erase(entry) : std::next(entry);
    }
}

} // namespace

SettingsFile::SettingsFile(const QString& path, QSettings::Format format, QObject* parent)
    : QSettings(path, format, parent)
    , m_path(QFile::encodeName(fileName()))
    , m_seen(UNSEEN)
{
}

SettingsFile::~SettingsFile()
{
    writePending();
}

bool SettingsFile::change(const QList<SettingsChange>& changes)
{
    for (const SettingsChange& change : changes)
        keepPending(change);
    return writePending();
}

void SettingsFile::letGo()
{
    writePending();
    m_pending.clear();
}

void SettingsFile::refresh()
{
    // Without room nothing is synced, because QSettings would write what an earlier failure has left with it.
    if (!m_pending.isEmpty()) {
        writePending();
        return;
    }
    static_cast<void>(reload()); // a file that cannot be read leaves the values as they are
}

QVariant SettingsFile::valueOf(const QString& group, const QString& key)
{
    if (!m_pending.isEmpty())
        return withPending().value(fullKey(group, key));
    const GroupScope scope(*this, group);
    return soundValue(key);
}

bool SettingsFile::hasKey(const QString& group, const QString& key)
{
    if (!m_pending.isEmpty())
        return withPending().contains(fullKey(group, key));
    const GroupScope scope(*this, group);
    return contains(key);
}

QVariantMap SettingsFile::valuesOf(const QString& group)
{
    QVariantMap values;
    if (!m_pending.isEmpty()) {
        const Values all = withPending();
        for (const QString& key : childNames(all.keys(), group, false))
            values.insert(key, all.value(fullKey(group, key)));
        return values;
    }
    const GroupScope scope(*this, group);
    for (const QString& key : childKeys())
        values.insert(key, soundValue(key));
    return values;
}

QStringList SettingsFile::keysOf(const QString& group)
{
    if (!m_pending.isEmpty())
        return childNames(withPending().keys(), group, false);
    const GroupScope scope(*this, group);
    return childKeys();
}

QStringList SettingsFile::groupsOf(const QString& group)
{
    if (!m_pending.isEmpty())
        return childNames(withPending().keys(), group, true);
    const GroupScope scope(*this, group);
    return childGroups();
}

bool SettingsFile::event(QEvent* event)
{
    return event->type() == QEvent::UpdateRequest || QSettings::event(event);
}

void SettingsFile::keepPending(const SettingsChange& change)
{
    const QString path = fullKey(change.group, change.key);
    const auto isSuperseded = [&](const SettingsChange& earlier) {
        const QString earlierPath = fullKey(earlier.group, earlier.key);
        return earlierPath == path || (!change.value && earlierPath.startsWith(prefixOf(path)));
    };
    m_pending.erase(std::remove_if(m_pending.begin(), m_pending.end(), isSuperseded), m_pending.end());
    m_pending << change;
}

bool SettingsFile::writePending()
{
    if (m_pending.isEmpty())
        return true;
    qint64 addedBytes = 0;
    for (const SettingsChange& change : m_pending)
        addedBytes += SettingsGuard::sizeInFile(change.group, change.key, change.value.value_or(QVariant()));
    if (!SettingsGuard::hasRoom(fileName(), addedBytes))
        return false;
    try {
        if (!writeToFile())
            return false;
    } catch (const std::bad_alloc&) {
        return false; // what a damaged value in the file claims to need; a destructor may be waiting for us
    }
    m_pending.clear();
    return true;
}

bool SettingsFile::reload()
{
    // Taken before the sync: a change during it is seen the next time.
    const FileStamp stamp = stampOf(m_path);
    if (stamp == m_seen)
        return true;
    const auto content = SettingsGuard::contentOf(fileName());
    if (!content)
        return false;
    sync();
    if (allKeys().isEmpty() && SettingsGuard::hasKeys(*content)) {
        // What we could read, Qt could not, for a moment, and it believes that it has.
        SettingsGuard::makeNewer(fileName());
        sync();
    }
    m_seen = stamp;
    return true;
}

bool SettingsFile::writeToFile()
{
    if (!reload())
        return false;
    dropUnsound();
    for (const SettingsChange& change : m_pending)
        apply(change);
    SettingsGuard::removeAbandonedLock(fileName());
    sync();
    return status() == NoError || !stillFails();
}

void SettingsFile::dropUnsound()
{
    const QStringList keys = allKeys();
    const auto isUsable = [this](const QString& key) {
        const QVariant found = value(key);
        return (found.isValid() || contains(key)) && SettingsGuard::isSound(found);
    };
    if (std::all_of(keys.begin(), keys.end(), isUsable))
        return;
    Values sound;
    for (const QString& key : keys) {
        if (isUsable(key))
            sound.insert(key, value(key));
    }
    // All anew, because a key such as "/a//b" is read from a damaged file but can be neither asked for nor
    // removed.
    clear();
    for (auto entry = sound.begin(); entry != sound.end(); ++entry)
        setValue(entry.key(), *entry);
}

QVariant SettingsFile::soundValue(const QString& key) const
{
    const QVariant found = value(key);
    return SettingsGuard::isSound(found) ? found : QVariant();
}

bool SettingsFile::stillFails() const
{
    // A store reports the first error it ever met. A new one over the same file shares its unwritten changes,
    // so that its first error is that of today.
    QSettings today(fileName(), format());
    today.sync();
    return today.status() == AccessError;
}

void SettingsFile::apply(const SettingsChange& change)
{
    const GroupScope scope(*this, change.group);
    if (change.value)
        setValue(change.key, *change.value);
    else
        remove(change.key);
}

SettingsFile::Values SettingsFile::withPending() const
{
    Values values;
    try {
        for (const QString& key : allKeys())
            values.insert(key, soundValue(key));
    } catch (const std::bad_alloc&) {
        values.clear(); // the file cannot be read
    }
    for (const SettingsChange& change : m_pending)
        applyTo(values, change);
    return values;
}

} // namespace TEKLUVA
