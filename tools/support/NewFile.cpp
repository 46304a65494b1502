#include "support/NewFile.h"

#include <QRandomGenerator>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>

namespace globalsctl {

namespace {

/// Short, so that it fits wherever the name of the file does.
QByteArray nameBeside(const QByteArray& path)
{
    const QByteArray folder = path.left(path.lastIndexOf('/') + 1);
    return folder + ".globalsctl-" + QByteArray::number(QRandomGenerator::system()->generate64(), 36);
}

} // namespace

NewFile::NewFile(const QByteArray& path)
    : m_path(path)
    , m_newPath(nameBeside(path))
    , m_file(open(m_newPath.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666))
    , m_isToRemove(m_file.isOpen())
{
    if (!m_file.isOpen())
        noteError();
}

NewFile::~NewFile()
{
    if (m_isToRemove)
        static_cast<void>(unlink(m_newPath.constData()));
}

bool NewFile::write(const QByteArray& content)
{
    const char* next = content.constData();
    auto left = static_cast<std::size_t>(content.size());
    while (m_file.isOpen() && left > 0) {
        const ssize_t written = ::write(m_file.get(), next, left);
        if (written < 0 && errno != EINTR)
            return noteError();
        if (written > 0) {
            next += written;
            left -= static_cast<std::size_t>(written);
        }
    }
    return m_file.isOpen();
}

bool NewFile::sync()
{
    return fsync(m_file.get()) == 0 || noteError();
}

bool NewFile::commit()
{
    if (!m_file.close() || std::rename(m_newPath.constData(), m_path.constData()) != 0)
        return noteError();
    m_isToRemove = false;
    return true;
}

bool NewFile::noteError()
{
    m_error = qt_error_string(errno);
    return false;
}

} // namespace globalsctl
