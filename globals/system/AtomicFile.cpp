#include "globals/AtomicFile.h"

#include "globals/system/Folder_p.h"
#include "globals/system/System_p.h"

#include <QRandomGenerator>

#include <chrono>
#include <mutex>
#include <utility>

namespace TEKLUVA {

namespace fs = std::filesystem;

using System::FileHandle;
using System::FileStatus;

namespace {

constexpr const char* PREFIX = ".globals-";
constexpr const char* SUFFIX = ".tmp";
constexpr int DIGITS = 16;

fs::path hiddenNameIn(const fs::path& folder)
{
    const QString number = QString::number(QRandomGenerator::global()->generate64(), 16);
    return folder / (PREFIX + number.rightJustified(DIGITS, QLatin1Char('0')).toStdString() + SUFFIX);
}

bool isHiddenName(const std::string& name)
{
    const std::size_t prefix = std::char_traits<char>::length(PREFIX);
    return name.size() == prefix + DIGITS + std::char_traits<char>::length(SUFFIX)
           && name.compare(0, prefix, PREFIX) == 0
           && name.compare(prefix + DIGITS, std::string::npos, SUFFIX) == 0
           && name.find_first_not_of("0123456789abcdef", prefix) == prefix + DIGITS;
}

/// Removes what killed processes have left in \p folder. What is younger than an hour may still be written.
void removeRemains(const fs::path& folder)
{
    constexpr std::chrono::hours OLD{1};
    const auto now = fs::file_time_type::clock::now();
    std::error_code error;
    for (const System::FolderEntry& entry : System::entriesOf(folder, error)) {
        if (!isHiddenName(System::textOf(entry.name).toStdString()))
            continue;
        std::error_code unknown;
        const auto age = now - fs::last_write_time(folder / entry.name, unknown);
        if (!unknown && age > OLD)
            fs::remove(folder / entry.name, unknown);
    }
}

/// Whether nobody has cleared \p folder for an hour, as far as this process remembers. It remembers one
/// folder: who writes many files writes them into one folder after the other.
bool isDueForClearing(const fs::path& folder)
{
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::hours INTERVAL{1};
    // Nothing with a destructor: files are written until the process is gone.
    static std::mutex mutex;
    static std::size_t lastFolder = 0;
    static Clock::time_point lastTime;
    const std::lock_guard<std::mutex> lock(mutex);
    const std::size_t thisFolder = fs::hash_value(folder);
    const auto now = Clock::now();
    if (thisFolder == lastFolder && now - lastTime < INTERVAL)
        return false;
    lastFolder = thisFolder;
    lastTime = now;
    return true;
}

} // namespace

class GLOBALS_NO_EXPORT AtomicFile::Private
{
public:
    Private(fs::path target, Link link, fs::path ownName = {});
    ~Private();

    /// Whether \p result is no error, and there was none before. Keeps the first one.
    bool check(const std::error_code& result);
    bool isUsable() const { return !error && !isCommitted; }
    /// Gives the file its name and closes it.
    std::error_code place();

    FileHandle file;
    qint64 size = 0;
    bool isSynced = false;
    bool isCommitted = false;
    std::error_code error;

private:
    /// Of what is in the target's place; makes the target what its link leads to if that is to be followed.
    fs::file_status targetStatus(Link link);
    void open();
    /// Owner and permissions of the file that is replaced.
    void takeAttributes();
    std::error_code createHidden();
    std::error_code linkHidden();
    template <typename Make>
    std::error_code makeHidden(Make&& make);

    fs::path m_target;
    fs::path m_folder;
    bool m_isReplacing = false;
    const fs::path m_ownName; ///< to be used as the hidden one; empty for any
    fs::path m_hidden;        ///< empty while the file has no name
};

AtomicFile::Private::Private(fs::path target, Link link, fs::path ownName)
    : m_target(std::move(target))
    , m_ownName(std::move(ownName))
{
    const fs::file_status status = targetStatus(link);
    m_folder = m_target.has_parent_path() ? m_target.parent_path() : fs::path(".");
    m_isReplacing = fs::exists(status);
    if (fs::is_directory(status))
        check(std::make_error_code(std::errc::is_a_directory));
    else if (m_isReplacing && !fs::is_symlink(status) && !fs::is_regular_file(status))
        check(std::make_error_code(std::errc::not_supported));
    if (isUsable())
        open();
    if (isUsable() && fs::is_regular_file(status))
        takeAttributes();
}

AtomicFile::Private::~Private()
{
    std::error_code ignored;
    if (!m_hidden.empty())
        fs::remove(m_hidden, ignored);
}

bool AtomicFile::Private::check(const std::error_code& result)
{
    if (!error)
        error = result;
    return !error;
}

fs::file_status AtomicFile::Private::targetStatus(Link link)
{
    constexpr int MOST_LINKS = 40; // as the system's own limit
    std::error_code failure;
    fs::file_status status = fs::symlink_status(m_target, failure);
    for (int i = 0; link == Link::Followed && fs::is_symlink(status); ++i) {
        if (i == MOST_LINKS) {
            check(std::make_error_code(std::errc::too_many_symbolic_link_levels));
            break;
        }
        m_target = m_target.parent_path() / fs::read_symlink(m_target, failure);
        status = fs::symlink_status(m_target, failure);
    }
    if (failure && status.type() != fs::file_type::not_found)
        check(failure);
    return status;
}

void AtomicFile::Private::open()
{
    std::error_code cannotOpen;
    file = FileHandle::createUnnamed(m_folder, cannotOpen);
    if (cannotOpen == std::errc::not_supported || cannotOpen == std::errc::operation_not_supported
        || cannotOpen == std::errc::is_a_directory || cannotOpen == std::errc::invalid_argument)
        cannotOpen = createHidden();
    check(cannotOpen);
}

void AtomicFile::Private::takeAttributes()
{
    std::error_code unknown;
    const FileStatus status = System::statusOf(m_target, unknown);
    if (!unknown)
        file.takeAttributes(status);
}

/// Tries names until \p make has made the file under one of them.
template <typename Make>
std::error_code AtomicFile::Private::makeHidden(Make&& make)
{
    constexpr int MOST_TRIES = 100;
    std::error_code result;
    if (isDueForClearing(m_folder))
        removeRemains(m_folder);
    for (int i = 0; i < MOST_TRIES; ++i) {
        fs::path name = m_ownName.empty() ? hiddenNameIn(m_folder) : m_folder / m_ownName;
        if (!m_ownName.empty())
            fs::remove(name, result); // of a process that was killed
        result = make(name);
        if (!result)
            m_hidden = std::move(name);
        if (result != std::errc::file_exists)
            break;
    }
    return result;
}

std::error_code AtomicFile::Private::createHidden()
{
    return makeHidden([this](const fs::path& name) {
        std::error_code result;
        file = FileHandle::create(name, result);
        return result;
    });
}

std::error_code AtomicFile::Private::linkHidden()
{
    return makeHidden([this](const fs::path& name) { return file.linkTo(name); });
}

std::error_code AtomicFile::Private::place()
{
    std::error_code result;
    if (m_hidden.empty() && !m_isReplacing) {
        result = file.linkTo(m_target);
        if (result != std::errc::file_exists)
            return result ? result : file.close();
    }
    // A link cannot replace a file, renaming can.
    if (m_hidden.empty())
        result = linkHidden();
    if (m_hidden.empty())
        return result;
    result = file.close();
    if (result)
        return result;
    result = System::replace(m_hidden, m_target);
    if (!result)
        m_hidden.clear();
    return result;
}

AtomicFile::AtomicFile(const fs::path& target, Link link)
    : d(std::make_unique<Private>(target, link))
{
}

AtomicFile::AtomicFile(const QString& target, Link link)
    : AtomicFile(System::nativePath(target), link)
{
}

AtomicFile::AtomicFile(const QString& target, const QString& hiddenName)
    : d(std::make_unique<Private>(System::nativePath(target), Link::Followed, System::nativePath(hiddenName)))
{
}

AtomicFile::~AtomicFile() = default;

bool AtomicFile::write(const QByteArray& bytes)
{
    if (!d->isUsable())
        return false;
    const std::error_code result = d->file.writeAt(bytes.constData(), bytes.size(), d->size);
    d->size += bytes.size();
    d->isSynced = false;
    return d->check(result);
}

bool AtomicFile::copyFrom(const fs::path& source)
{
    if (!d->isUsable())
        return false;
    std::error_code result;
    const FileHandle original = FileHandle::openForReading(source, result);
    if (!d->check(result))
        return false;
    const FileStatus status = original.status(result);
    if (!result && status.kind != System::FileKind::Regular)
        result = std::make_error_code(std::errc::not_supported); // it might never end
    if (!d->check(result))
        return false;
    // First: where the copy has a hidden name meanwhile, others could read it. Not every file system has any.
    static_cast<void>(d->file.setPermissions(status.permissions));
    d->size = status.size;
    d->isSynced = false;
    return d->check(d->file.copyFrom(original));
}

std::FILE* AtomicFile::openStream()
{
    if (!d->isUsable())
        return nullptr;
    std::error_code result;
    std::FILE* stream = d->file.openStream(result);
    d->check(result);
    return stream;
}

bool AtomicFile::sync()
{
    if (!d->isUsable())
        return false;
    d->isSynced = d->check(d->file.sync());
    return d->isSynced;
}

bool AtomicFile::commit(Durability durability)
{
    if (durability == Durability::OnDisk && !d->isSynced && !sync())
        return false;
    if (!d->isUsable())
        return false;
    d->isCommitted = true;
    d->check(d->place());
    return !d->error;
}

QString AtomicFile::error() const
{
    return d->error ? System::messageOf(d->error) : QString();
}

std::error_code AtomicFile::errorCode() const
{
    return d->error;
}

} // namespace TEKLUVA
