#include "support/FileSystem.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>

#include <io.h>
#include <windows.h>

namespace globalsctl::FileSystem {

namespace {

Identity identityIn(HANDLE file)
{
    constexpr int HALF = 32;
    BY_HANDLE_FILE_INFORMATION info = {};
    if (!::GetFileInformationByHandle(file, &info))
        return {};
    return {info.dwVolumeSerialNumber, quint64{info.nFileIndexHigh} << HALF | info.nFileIndexLow};
}

struct NameFault
{
    const char* pattern; ///< found in the name of a file or folder that cannot be
    const char* reason;
};

constexpr NameFault NAME_FAULTS[] = {
    // Among them the separator, which an archive does not have, and what leads to a stream of another file.
    {R"([\x00-\x1f<>:"|?*\\])", R"(has a name with a control character or one of <>:"|?*\)"},
    {R"(^(?!\.$).*[. ]$)", "has a name that ends in a dot or a blank, which Windows leaves out"},
    {R"(^(CON|PRN|AUX|NUL|CONIN\$|CONOUT\$|(COM|LPT)[1-9¹²³]) *(\.|$))", "has the name of a device"},
};

QString faultOfName(const QString& name)
{
    for (const NameFault& fault : NAME_FAULTS) {
        const QRegularExpression pattern(QString::fromUtf8(fault.pattern),
                                         QRegularExpression::CaseInsensitiveOption);
        if (pattern.match(name).hasMatch())
            return QString::fromLatin1(fault.reason);
    }
    return {};
}

} // namespace

Identity identityOf(const QString& path)
{
    constexpr DWORD SHARED = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    HANDLE file = ::CreateFileW(nativePath(path).c_str(), FILE_READ_ATTRIBUTES, SHARED, nullptr,
                                OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return {};
    const Identity identity = identityIn(file);
    ::CloseHandle(file);
    return identity;
}

Identity identityOf(const QFile& openFile)
{
    return identityIn(reinterpret_cast<HANDLE>(::_get_osfhandle(openFile.handle())));
}

bool isReadableByOthers(const QFile& /*file*/)
{
    return false; // Qt does not read the access list
}

std::filesystem::path nativePath(const QString& path)
{
    return path.toStdWString();
}

QByteArray entryName(const QString& text)
{
    return text.toUtf8();
}

QString textOfEntry(const QByteArray& name)
{
    return QString::fromUtf8(name);
}

std::filesystem::path pathOfEntry(const std::string& name)
{
    return QString::fromStdString(name).toStdWString();
}

QString faultOfEntry(const std::string& name)
{
    const QString text = QString::fromStdString(name);
    if (text.toStdString() != name)
        return QStringLiteral("has a name that is not UTF-8");
    const QStringList parts = text.split(QLatin1Char('/'));
    for (const QString& part : parts) {
        if (QString fault = faultOfName(part); !fault.isEmpty())
            return fault;
    }
    return {};
}

bool isWantOfRoom(const std::error_code& reason)
{
    constexpr int DISK_QUOTA_EXCEEDED = 1295; // which the compiler's headers lack
    constexpr int CODES[] = {ERROR_DISK_FULL, ERROR_HANDLE_DISK_FULL, DISK_QUOTA_EXCEEDED,
                             ERROR_FILE_TOO_LARGE};
    const bool isKnown = std::find(std::begin(CODES), std::end(CODES), reason.value()) != std::end(CODES);
    return isKnown && reason.category() == std::system_category();
}

} // namespace globalsctl::FileSystem
