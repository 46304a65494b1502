#include "globals/settings/SettingsFile_p.h"

#include "globals/AtomicFile.h"
#include "globals/Latin1.h"
#include "globals/WholeFile.h"
#include "globals/foundation/WithoutExceptions_p.h"
#include "globals/logs/ActiveLog_p.h"
#include "globals/settings/IniText_p.h"
#include "globals/settings/SettingsLock_p.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace TEKLUVA {

using std::chrono::milliseconds;
using System::FileStatus;

namespace {

using IniText::SEPARATOR;

/// How long a change waits for another process that writes.
constexpr milliseconds PATIENCE{5000};
constexpr qint64 LARGEST_FILE = qint64{64} << 20;
/// Damaged files that are kept. The last one of them is replaced by those that come after it.
constexpr int MOST_KEPT_ASIDE = 9;

bool isIni(QSettings::Format format)
{
    return format == QSettings::IniFormat || (format == QSettings::NativeFormat && !System::HAS_REGISTRY);
}

/// As QSettings spells it: without separators at the ends and without double ones.
QString normal(const QString& path)
{
    const bool isNormal =
        !path.startsWith(SEPARATOR) && !path.endsWith(SEPARATOR) && !path.contains(latin1("//"));
    return isNormal ? path : path.split(SEPARATOR, Qt::SkipEmptyParts).join(SEPARATOR);
}

QString prefixOf(const QString& group)
{
    const QString path = normal(group);
    return path.isEmpty() ? QString() : path + SEPARATOR; // null, which a null key begins with, too
}

/// With an empty key what stands before the keys of the group, which a file may hold as a key.
QString fullKey(const QString& group, const QString& key)
{
    return prefixOf(group) + normal(key);
}

/// The key that \p change sets, or the one that it removes with all below it.
QString pathOf(const SettingsChange& change)
{
    return change.value ? fullKey(change.group, change.key) : normal(change.group + SEPARATOR + change.key);
}

/// The keys right below \p group, or its sub-groups.
QStringList childNames(const IniValues& values, const QString& group, bool groups)
{
    const QString prefix = prefixOf(group);
    QStringList names;
    for (auto value = values.lowerBound(prefix); value != values.end(); ++value) {
        if (!value.key().startsWith(prefix))
            break;
        const auto end = value.key().indexOf(SEPARATOR, prefix.size());
        if ((end >= 0) == groups)
            names << value.key().mid(prefix.size(), end < 0 ? -1 : end - prefix.size());
    }
    names.sort(); // "a b/c" comes before "a/c"
    names.removeDuplicates();
    return names;
}

/// Removes the value at \p path and those below it.
void removeBelow(IniValues& values, const QString& path)
{
    const QString prefix = prefixOf(path);
    values.remove(path);
    auto value = values.lowerBound(prefix);
    while (value != values.end() && value.key().startsWith(prefix))
        value = values.erase(value);
}

bool isDoubtful(const IniCodec::Line& line)
{
    return line.isDamaged || !line.value.isPlain();
}

/// Of a file that is not there: all zero.
std::optional<FileStatus> statusOf(const System::Path& path)
{
    std::error_code error;
    const FileStatus status = System::statusOf(path, error);
    const bool isMissing =
        error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory;
    return !error || isMissing ? std::make_optional(status) : std::nullopt;
}

} // namespace

SettingsFile::SettingsFile(const QString& path, QSettings::Format format, QObject* parent)
    : QSettings(isIni(format) ? QString() : path, format, parent)
    , m_isIni(isIni(format))
    , m_path(m_isIni ? QFileInfo(path).absoluteFilePath() : fileName())
    , m_place(System::nativePath(m_path))
{
    static_cast<void>(reload());
}

SettingsFile::~SettingsFile()
{
    withoutExceptions([this] {
        if (!letGo())
            logError(failureToWrite(QStringLiteral("lost")));
    });
}

QString SettingsFile::failureToWrite(const QString& outcome) const
{
    return QStringLiteral("Could not write the settings file %1 (%2). The change is %3.")
        .arg(m_path, m_reason, outcome);
}

QString SettingsFile::failureToRead() const
{
    return QStringLiteral("Could not read the settings file %1 (%2).").arg(m_path, m_reason);
}

bool SettingsFile::change(const QList<SettingsChange>& changes)
{
    Pending pending = m_pending; // all changes or none: some of them would be written later, too
    for (const SettingsChange& change : changes) {
        if (!change.value || !change.key.isEmpty())
            pending.add(change);
    }
    m_pending = std::move(pending);
    return writePending(PATIENCE);
}

bool SettingsFile::letGo()
{
    const bool isWritten = writePending(PATIENCE);
    m_pending = {};
    return isWritten;
}

void SettingsFile::refresh()
{
    if (!isPending() || !writePending(milliseconds(0)))
        static_cast<void>(reload()); // the values stay as they are where it cannot be read
}

QVariant SettingsFile::valueOf(const QString& group, const QString& key) const
{
    const IniValues values = withPending();
    const auto value = values.constFind(fullKey(group, key));
    return key.isEmpty() || value == values.constEnd() ? QVariant() : value->toVariant();
}

bool SettingsFile::hasKey(const QString& group, const QString& key) const
{
    return withPending().contains(fullKey(group, key));
}

QVariantMap SettingsFile::valuesOf(const QString& group) const
{
    const IniValues values = withPending();
    QVariantMap found;
    for (const QString& key : childNames(values, group, false))
        found.insert(key, values.value(prefixOf(group) + key).toVariant());
    return found;
}

QStringList SettingsFile::keysOf(const QString& group) const
{
    return childNames(withPending(), group, false);
}

QStringList SettingsFile::groupsOf(const QString& group) const
{
    return childNames(withPending(), group, true);
}

QVariantMap SettingsFile::valuesBelow(const QString& group) const
{
    const IniValues values = withPending();
    const QString prefix = prefixOf(group);
    QVariantMap found;
    for (auto value = values.lowerBound(prefix); value != values.end(); ++value) {
        if (!value.key().startsWith(prefix))
            break;
        found.insert(found.constEnd(), value.key(), value->toVariant());
    }
    return found;
}

QList<int> SettingsFile::damagedLines()
{
    if (!m_isIni || !reload())
        return {};
    if (!m_doubtful)
        m_doubtful = IniCodec::read(m_content).value_or(std::vector<IniCodec::Line>());
    std::vector<IniText::Position> damaged;
    for (const IniCodec::Line& line : *m_doubtful) {
        if (line.isDamaged || !line.value.isReadable())
            damaged.push_back(line.begin);
    }
    std::sort(damaged.begin(), damaged.end());
    return IniCodec::lineNumbers(m_content, damaged);
}

void SettingsFile::Pending::add(const SettingsChange& change)
{
    const QString path = pathOf(change);
    if (change.value) {
        values.insert(path, IniValue(*change.value));
        return;
    }
    removals.insert(path);
    removeBelow(values, path);
}

bool SettingsFile::writePending(milliseconds patience)
{
    if (!isPending())
        return true;
    // The removal of what is not there, say, takes neither a lock nor a write.
    const bool isNothingNew = withPending() == m_values && reload() && withPending() == m_values;
    if (!isNothingNew && !(m_isIni ? writeToFile(patience) : writeWithQt()))
        return false;
    m_values = withPending(); // where nothing is new the types may be
    m_pending = {};
    return true;
}

/// Puts what \p fill writes into the place of \p path.
template <typename Fill>
bool SettingsFile::replaceFile(const QString& path, Fill&& fill)
{
    AtomicFile file(path, QStringLiteral(".%1.new").arg(QFileInfo(path).fileName()));
    const bool isReplaced = fill(file) && file.commit();
    return isReplaced || fail(file.error());
}

/// Keeps the file for the user and for support, and for nobody who may not read the file itself, beside what
/// was kept before: the first damage may have cost more than the next.
bool SettingsFile::keepAside()
{
    const QString first = m_path + latin1(".damaged");
    QString path = first;
    for (int number = 2; number <= MOST_KEPT_ASIDE && QFileInfo::exists(path); ++number) {
        if (readWhole(path) == m_content)
            return true;
        path = first + QLatin1Char('.') + QString::number(number);
    }
    return replaceFile(path, [this](AtomicFile& file) { return file.copyFrom(m_place); });
}

bool SettingsFile::writeToFile(milliseconds patience)
{
    QDir().mkpath(QFileInfo(m_path).path());
    const SettingsLock lock(m_path, patience);
    if (!lock.isHeld())
        return fail(lock.reason());
    if (!reload() || !mayBeReplaced())
        return false;
    if (m_isDamaged && !keepAside())
        return false;
    const auto content = IniCodec::write(withPending());
    if (!content || content->size() > LARGEST_FILE) // nobody would read it any more
        return failAsTooLarge();
    const auto before = statusOf(m_place);
    if (!replaceFile(m_path, [&content](AtomicFile& file) { return file.write(*content); }))
        return false;
    if (before)
        makeNewerThan(*before);
    m_seen.reset(); // somebody may have replaced it already
    m_content = *content;
    m_isDamaged = false;
    m_doubtful.reset();
    return true;
}

/// QSettings reads a file again when its size or its time in milliseconds has changed, and writes its old
/// values over ours when neither has.
void SettingsFile::makeNewerThan(const FileStatus& before)
{
    constexpr qint64 MILLISECOND = 1'000'000; // in nanoseconds
    const auto now = statusOf(m_place);
    if (now && now->modified / MILLISECOND <= before.modified / MILLISECOND)
        static_cast<void>(System::setModified(m_place, before.modified + MILLISECOND));
}

/// A file that may not be written is not replaced either, though its folder would allow it.
bool SettingsFile::mayBeReplaced()
{
    const QFileInfo file(m_path);
    if (!file.exists() || file.isWritable())
        return true;
    return fail(System::messageOf(std::make_error_code(std::errc::permission_denied)));
}

bool SettingsFile::writeWithQt()
{
    // A store reports the first error that it ever met, so that of today needs a new one.
    QSettings today(m_path, format());
    const IniValues values = withPending();
    today.clear();
    for (auto value = values.begin(); value != values.end(); ++value)
        today.setValue(value.key(), value->toVariant());
    today.sync();
    return today.status() == NoError || fail(QStringLiteral("QSettings cannot write it"));
}

bool SettingsFile::reload()
{
    if (!m_isIni)
        return reloadWithQt();
    // Taken before the file is read: a change meanwhile is seen the next time.
    const auto status = statusOf(m_place);
    if (status && m_seen == status)
        return true;
    m_seen.reset();
    const bool isSettled = status && System::isSettled(*status);
    const bool isMissing = status == FileStatus();
    const auto content =
        isMissing ? std::make_optional(QByteArray()) : readWhole(m_path, LARGEST_FILE, &m_reason);
    m_isReadable = content.has_value();
    if (content && *content != m_content)
        m_isReadable = take(*content);
    if (!m_isReadable)
        return false;
    if (isMissing || isSettled)
        m_seen = status;
    return true;
}

bool SettingsFile::take(const QByteArray& content)
{
    const auto lines = IniCodec::read(content);
    if (!lines)
        return failAsTooLarge();
    bool isDamaged = false;
    std::vector<IniCodec::Line> doubtful;
    IniValues values;
    for (const IniCodec::Line& line : *lines) {
        isDamaged |= line.isDamaged;
        if (isDoubtful(line))
            doubtful.push_back(line);
        if (line.isEntry)
            values.insert(values.constEnd(), line.key, line.value); // files are in order, as a rule
    }
    // At last and at once: values of which some are missing would be written so.
    m_content = content;
    m_isDamaged = isDamaged;
    m_doubtful = std::move(doubtful);
    m_values.swap(values);
    return true;
}

bool SettingsFile::reloadWithQt()
{
    sync();
    IniValues values;
    for (const QString& key : allKeys())
        values.insert(key, IniValue(value(key)));
    m_values.swap(values);
    return true;
}

bool SettingsFile::fail(const QString& reason)
{
    m_reason = reason;
    return false;
}

bool SettingsFile::failAsTooLarge()
{
    return fail(System::messageOf(std::make_error_code(std::errc::file_too_large)));
}

IniValues SettingsFile::withPending() const
{
    IniValues values = m_values;
    for (const QString& path : m_pending.removals)
        removeBelow(values, path);
    for (auto value = m_pending.values.begin(); value != m_pending.values.end(); ++value)
        values.insert(value.key(), *value);
    return values;
}

} // namespace TEKLUVA
