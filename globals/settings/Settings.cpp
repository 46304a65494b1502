#include "globals/Settings.h"

#include "globals/foundation/WithoutExceptions_p.h"
#include "globals/logs/ActiveLog_p.h"
#include "globals/logs/QtMessages_p.h"
#include "globals/settings/SettingsFile_p.h"

#include <QMutex>
#include <QMutexLocker>
#include <QPointer>

#include <utility>

namespace TEKLUVA {

namespace {

/// As QSettings sees it, which skips separators; to it an empty key is the whole group.
bool isEmptyKey(const QString& key)
{
    return key.count(QLatin1Char('/')) == key.size();
}

/// An invalid value removes its key.
QList<SettingsChange> changesOf(const QString& group, const QVariantMap& values)
{
    QList<SettingsChange> changes;
    for (auto value = values.begin(); value != values.end(); ++value) {
        if (value->isValid())
            changes << SettingsChange{group, value.key(), *value};
        else if (!isEmptyKey(value.key()))
            changes << SettingsChange{group, value.key(), std::nullopt};
    }
    return changes;
}

/// Without what must not be stored, which is logged.
QList<SettingsChange> storableOnes(const QList<SettingsChange>& changes)
{
    QList<SettingsChange> storable;
    for (const SettingsChange& change : changes) {
        if (!change.value || IniValue::isStorable(*change.value))
            storable << change;
        else
            logError(
                QStringLiteral(
                    "The setting %1 in the group %2 has a time in an unknown time zone. It was not stored.")
                    .arg(change.key, change.group));
    }
    return storable;
}

} // namespace

class GLOBALS_NO_EXPORT Settings::Private
{
public:
    /// Runs \p operation; when it throws, for want of memory, its result is empty.
    template <typename Operation>
    static auto run(Operation&& operation)
    {
        return withoutExceptions(operation, [](const char* what) {
            logError(std::string("Could not complete an operation on the settings (") + orUnknown(what)
                     + ").");
        });
    }

    /// What \p query returns about the store, under its lock. Empty without a store.
    template <typename Query>
    auto ask(Query&& query) -> decltype(query(std::declval<SettingsFile&>()))
    {
        using Result = decltype(query(std::declval<SettingsFile&>()));
        if (!store)
            return Result();
        return run([&]() -> Result {
            const QMutexLocker locked(&lock);
            const QtMessagePause pause; // a receiver of the active log may need the store
            return query(*store);
        });
    }

    /// The same about the store as it is on disk.
    template <typename Query>
    auto askFresh(Query&& query) -> decltype(query(std::declval<SettingsFile&>()))
    {
        auto answer = ask([&](SettingsFile& file) {
            file.refresh();
            return query(file);
        });
        reportReading();
        reportPending();
        return answer;
    }

    /// Logs the failure that \p operation returns; empty for none.
    template <typename Operation>
    void logFailureOf(Operation&& operation)
    {
        const QString failure = ask(operation);
        if (!failure.isEmpty())
            logError(failure);
    }

    /// \name Reports
    /// Made while the lock is free, because whoever shows the log may ask for settings.
    /// @{
    void reportReading();
    void reportPending();
    /// @}

    void change(const QList<SettingsChange>& changes);
    /// Writes what is pending or gives it up.
    void letGo();

    /// Null until a file is opened, and again once the store's parent has destroyed it.
    QPointer<SettingsFile> store;
    /// Held for a whole operation.
    QMutex lock;
    std::function<void(bool)> observer;

private:
    /// \name As last reported
    /// @{
    bool m_isReadable = true;
    bool m_isPending = false;
    /// @}
};

void Settings::Private::reportReading()
{
    logFailureOf([this](const SettingsFile& file) {
        const bool wasReadable = std::exchange(m_isReadable, file.isReadable());
        return wasReadable && !m_isReadable ? file.failureToRead() : QString();
    });
}

void Settings::Private::reportPending()
{
    bool isPending = false;
    bool wasPending = false;
    {
        const QMutexLocker locked(&lock);
        isPending = store && store->isPending();
        wasPending = std::exchange(m_isPending, isPending);
    }
    if (isPending != wasPending && observer)
        observer(isPending);
}

void Settings::Private::change(const QList<SettingsChange>& changes)
{
    logFailureOf([&changes](SettingsFile& file) {
        const bool isWritten = file.change(changes);
        return isWritten ? QString() : file.failureToWrite(QStringLiteral("kept in memory"));
    });
}

void Settings::Private::letGo()
{
    logFailureOf([](SettingsFile& file) {
        const bool isWritten = file.letGo();
        return isWritten ? QString() : file.failureToWrite(QStringLiteral("lost"));
    });
    reportPending();
}

Settings::Settings()
    : d(std::make_unique<Private>())
{
}

Settings::Settings(const QString& path, QSettings::Format format, QObject* parent)
    : Settings()
{
    openSettingsFile(path, format, parent);
}

Settings::Settings(const Settings& other)
    : Settings()
{
    const QMutexLocker locked(&other.d->lock);
    d->store = other.d->store;
}

Settings::~Settings()
{
    d->letGo();
    // Without memory for the event it is left to its parent.
    withoutExceptions([this] {
        if (d->store)
            d->store->deleteLater();
    });
}

void Settings::openSettingsFile(const QString& path, QSettings::Format format, QObject* parent)
{
    d->letGo();
    if (d->store)
        d->store->deleteLater();
    d->store = new SettingsFile(path, format, parent);
    d->reportReading();
}

QVariant Settings::getSetting(const QString& group, const QString& key) const
{
    return d->askFresh([&](const SettingsFile& file) { return file.valueOf(group, key); });
}

QVariantMap Settings::getSettings(const QString& group) const
{
    return d->askFresh([&](const SettingsFile& file) { return file.valuesOf(group); });
}

QVariantMap Settings::getSettingsBelow(const QString& group) const
{
    return d->askFresh([&](const SettingsFile& file) { return file.valuesBelow(group); });
}

bool Settings::hasSetting(const QString& group, const QString& key) const
{
    return d->ask([&](const SettingsFile& file) { return file.hasKey(group, key); });
}

void Settings::setSetting(const QString& group, const QString& key, const QVariant& value)
{
    d->run([&] { changeSettings({{group, key, value}}); });
}

void Settings::setSettings(const QString& group, const QVariantMap& values)
{
    d->run([&] { changeSettings(changesOf(group, values)); });
}

void Settings::removeSetting(const QString& group, const QString& key)
{
    if (!isEmptyKey(key))
        d->run([&] { changeSettings({{group, key, std::nullopt}}); });
}

void Settings::removeSettingGroup(const QString& group)
{
    d->run([&] { changeSettings({{group, QString(), std::nullopt}}); });
}

void Settings::clearSettings()
{
    removeSettingGroup(QString());
}

void Settings::changeSettings(const QList<SettingsChange>& changes)
{
    if (!d->store)
        return;
    d->run([&] { d->change(storableOnes(changes)); });
    d->reportPending();
}

bool Settings::hasSettingGroup(const QString& group) const
{
    return !getAllGroupMembers(group).isEmpty();
}

QStringList Settings::getAllGroups() const
{
    return d->ask([](const SettingsFile& file) { return file.groupsOf(QString()); });
}

QStringList Settings::getAllGroupMembers(const QString& group) const
{
    return d->ask([&group](const SettingsFile& file) { return file.keysOf(group); });
}

bool Settings::hasPendingChanges() const
{
    return d->ask([](const SettingsFile& file) { return file.isPending(); });
}

QString Settings::lastError() const
{
    return d->ask([](const SettingsFile& file) { return file.lastError(); });
}

void Settings::flushPendingChanges()
{
    d->letGo();
}

void Settings::whenPendingChanges(std::function<void(bool)> observer)
{
    d->observer = std::move(observer);
}

QList<int> Settings::damagedLines() const
{
    return d->ask([](SettingsFile& file) { return file.damagedLines(); });
}

} // namespace TEKLUVA
