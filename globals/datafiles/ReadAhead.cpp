#include "globals/datafiles/ReadAhead_p.h"

#include <QtGlobal>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <new>

namespace TEKLUVA {

namespace {

/// A part of the file in memory.
struct Window // NOLINT(cppcoreguidelines-pro-type-member-init)
{
    static constexpr qint64 SIZE = qint64{32} * 1024;

    qint64 begin = 0;
    qint64 size = 0;
    std::array<char, SIZE> bytes; // not initialised: nothing is read beyond size

    bool contains(qint64 position) const { return position >= begin && position < begin + size; }
    const char* at(qint64 position) const { return bytes.data() + (position - begin); }
    const char* end() const { return at(begin + size); }
};

/// A file that is read in windows: one for the directory at the end of an archive and one for its entries, so
/// that going to and fro between them costs nothing.
class ReadAhead
{
    Q_DISABLE_COPY(ReadAhead)

public:
    ReadAhead(const System::FileHandle& file, qint64 size)
        : m_file(file)
        , m_size(size)
    {
    }

    bool hasFailed() const { return m_hasFailed; }
    qint64 size() const { return m_size; }
    qint64 position() const { return m_position; }

    void moveTo(qint64 position)
    {
        m_position = position;
        const Window& window = m_windows[m_current];
        m_end = window.end();
        m_next = window.contains(position) ? window.at(position) : m_end;
    }

    /// How many bytes there were.
    qint64 read(char* target, qint64 size)
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

private:
    void advance(qint64 size)
    {
        m_next += size;
        m_position += size;
    }

    qint64 readPart(char* target, qint64 size)
    {
        if (m_next == m_end && !enterWindow())
            return 0;
        const qint64 part = std::min<qint64>(size, m_end - m_next);
        std::memcpy(target, m_next, static_cast<std::size_t>(part));
        advance(part);
        return part;
    }

    /// Makes the window at the position the current one; false at the end of the file and beyond.
    bool enterWindow()
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

    void fill(Window& window)
    {
        // From a multiple of its size, because the directory is looked for from the end backwards.
        window.begin = m_position - m_position % Window::SIZE;
        const qint64 size = std::min(Window::SIZE, m_size - window.begin);
        std::error_code error;
        window.size = m_file.readAt(window.bytes.data(), size, window.begin, error);
        m_hasFailed |= bool(error);
    }

    const System::FileHandle& m_file;
    const qint64 m_size;
    qint64 m_position = 0;
    bool m_hasFailed = false;
    std::size_t m_current = 0;
    const char* m_next = nullptr; ///< the byte at the position, in the current window
    const char* m_end = nullptr;  ///< the end of that window
    std::array<Window, 2> m_windows;
};

ReadAhead* fileOf(void* stream)
{
    return static_cast<ReadAhead*>(stream);
}

void* openFile(void* opaque, const void* /*name*/, int /*mode*/)
{
    const auto& file = *static_cast<const System::FileHandle*>(opaque);
    std::error_code error;
    const System::FileStatus status = file.status(error);
    // Nothing may be thrown through minizip's functions.
    return error ? nullptr : new (std::nothrow) ReadAhead(file, status.size);
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
    if (position < 0)
        return -1;
    file->moveTo(position);
    return 0;
}

int closeFile(void* /*opaque*/, void* stream)
{
    delete fileOf(stream);
    return 0;
}

int hasFailed(void* /*opaque*/, void* stream)
{
    return fileOf(stream)->hasFailed() ? 1 : 0;
}

} // namespace

zlib_filefunc64_def readAheadFunctions(const System::FileHandle& file)
{
    return {
        &openFile,     &readFile,
        &writeNothing, &tell,
        &seek,         &closeFile,
        &hasFailed,    const_cast<System::FileHandle*>(&file)}; // NOLINT(*-const-cast): only given back to us
}

} // namespace TEKLUVA
