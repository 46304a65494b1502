#include "globals/datafiles/ReadAhead_p.h"

#include <QtGlobal>

#include <algorithm>
#include <cstring>

namespace TEKLUVA {

namespace {

ReadAhead* fileOf(void* stream)
{
    return static_cast<ReadAhead*>(stream);
}

void* openFile(void* opaque, const void* /*name*/, int /*mode*/)
{
    return opaque;
}

uLong readFile(void* /*opaque*/, void* stream, void* target, uLong size)
{
    return static_cast<uLong>(fileOf(stream)->read(static_cast<char*>(target), static_cast<qint64>(size)));
}

uLong writeNothing(void* /*opaque*/, void* /*stream*/, const void* /*bytes*/, uLong /*size*/)
{
    return 0;
}

ZPOS64_T tell(void* /*opaque*/, void* stream)
{
    return static_cast<ZPOS64_T>(fileOf(stream)->position());
}

long seek(void* /*opaque*/, void* stream, ZPOS64_T offset, int origin)
{
    ReadAhead* file = fileOf(stream);
    qint64 start = 0;
    if (origin != ZLIB_FILEFUNC_SEEK_SET)
        start = origin == ZLIB_FILEFUNC_SEEK_CUR ? file->position() : file->size();
    const qint64 position = start + static_cast<qint64>(offset);
    if (position < file->firstPosition())
        return -1;
    file->moveTo(position);
    return 0;
}

int closeFile(void* /*opaque*/, void* /*stream*/)
{
    return 0;
}

int testError(void* /*opaque*/, void* stream)
{
    return fileOf(stream)->hasFailed() ? 1 : 0;
}

} // namespace

void ReadAhead::setFile(const System::FileHandle& file)
{
    m_file = &file;
    m_hasFailed = false;
    for (Window& window : m_windows)
        window.size = 0;
    moveTo(m_position);
}

void ReadAhead::moveTo(qint64 position)
{
    m_position = position;
    const Window& window = m_windows[m_current];
    m_end = window.end();
    m_next = window.contains(position) ? window.at(position) : m_end;
}

qint64 ReadAhead::read(char* target, qint64 size)
{
    // minizip reads headers byte by byte: this is where all the time goes.
    if (size == 1 && m_next != m_end) {
        *target = *m_next;
        advance(1);
        return 1;
    }
    qint64 done = 0;
    while (done < size) {
        const qint64 part = readPart(target + done, size - done);
        if (part <= 0)
            break;
        done += part;
    }
    return done;
}

void ReadAhead::advance(qint64 size)
{
    m_next += size;
    m_position += size;
}

qint64 ReadAhead::readPart(char* target, qint64 size)
{
    if (m_next == m_end && !enterWindow())
        return 0;
    const qint64 part = std::min<qint64>(size, m_end - m_next);
    std::memcpy(target, m_next, static_cast<std::size_t>(part));
    advance(part);
    return part;
}

bool ReadAhead::enterWindow()
{
    if (m_position >= m_size)
        return false; // a damaged archive may send us anywhere
    if (!m_windows[m_current].contains(m_position))
        m_current = 1 - m_current; // the older one
    if (!m_windows[m_current].contains(m_position))
        fill(m_windows[m_current]);
    moveTo(m_position);
    return m_next != m_end;
}

void ReadAhead::fill(Window& window)
{
    // From a multiple of its size, because the directory is looked for from the end backwards.
    window.begin = m_position - m_position % Window::SIZE;
    const qint64 size = std::min(Window::SIZE, m_size - window.begin);
    std::error_code error;
    window.size = m_file->readAt(window.bytes.data(), size, window.begin, error);
    m_hasFailed |= bool(error);
}

zlib_filefunc64_def ReadAhead::functions()
{
    return {&openFile, &readFile, &writeNothing, &tell, &seek, &closeFile, &testError, this};
}

} // namespace TEKLUVA
