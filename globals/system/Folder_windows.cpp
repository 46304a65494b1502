#include "globals/system/Folder_p.h"

#include "globals/system/Handle_windows_p.h"

#include <cwchar>
#include <memory>
#include <type_traits>

namespace TEKLUVA::System {

namespace {

struct CloseSearch
{
    void operator()(void* search) const { ::FindClose(search); }
};
using Search = std::unique_ptr<void, CloseSearch>;

/// A link, or another folder or volume in this place; not what is merely stored elsewhere.
bool isLink(const WIN32_FIND_DATAW& entry)
{
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT)
           && IsReparseTagNameSurrogate(entry.dwReserved0);
}

EntryKind entryKindOf(const WIN32_FIND_DATAW& entry)
{
    if (isLink(entry))
        return EntryKind::Link;
    return entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY ? EntryKind::Folder : EntryKind::File;
}

/// The folder itself and the one above are no entries.
bool isEntry(const wchar_t* name)
{
    return std::wcscmp(name, L".") != 0 && std::wcscmp(name, L"..") != 0;
}

} // namespace

void Folder::Close::operator()(void* /*stream*/) const
{
}

Folder Folder::open(const Path& path, std::error_code& error)
{
    const bool isFolder = std::filesystem::is_directory(path, error);
    if (!isFolder && !error)
        error = std::make_error_code(std::errc::not_a_directory);
    Folder folder;
    if (isFolder)
        folder.m_path = path;
    return folder;
}

Folder Folder::openInside(const Path& name, std::error_code& error) const
{
    const Path path = m_path / name;
    if (!System::isLink(path))
        return open(path, error);
    error = std::make_error_code(std::errc::not_a_directory);
    return {};
}

std::vector<FolderEntry> Folder::entries(std::error_code& error) const
{
    error = m_path.empty() ? std::make_error_code(std::errc::bad_file_descriptor) : std::error_code();
    if (error)
        return {};
    WIN32_FIND_DATAW entry = {};
    HANDLE first = ::FindFirstFileW((m_path / L"*").c_str(), &entry);
    if (first == INVALID_HANDLE_VALUE) {
        error = lastSystemError();
        return {};
    }
    const Search search(first);
    std::vector<FolderEntry> entries;
    do {
        if (isEntry(&entry.cFileName[0]))
            entries.push_back({&entry.cFileName[0], entryKindOf(entry)});
    } while (::FindNextFileW(search.get(), &entry));
    if (::GetLastError() == ERROR_NO_MORE_FILES)
        return entries;
    error = lastSystemError();
    return {};
}

FileStatus Folder::statusOf(const Path& name, std::error_code& error) const
{
    return System::statusOf(m_path / name, error);
}

std::error_code Folder::remove(const FolderEntry& entry) const
{
    std::error_code error;
    const bool isRemoved = std::filesystem::remove(m_path / entry.name, error);
    return isRemoved || error ? error : std::make_error_code(std::errc::no_such_file_or_directory);
}

} // namespace TEKLUVA::System
