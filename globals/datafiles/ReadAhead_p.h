#pragma once

#include "globals/system/System_p.h"

#include <ioapi.h>

#include <array>

namespace TEKLUVA {

/// What minizip reads an archive through: two windows, one for the directory at the end and one for the
/// entries, so that going to and fro between them costs nothing. With its own functions minizip seeks before
/// each header, which throws away what the C library has read ahead, and so costs two system calls per entry.
class ReadAhead
{
    Q_DISABLE_COPY(ReadAhead)

public:
    /// \p size is the file's, in bytes.
    explicit ReadAhead(qint64 size)
        : m_size(size)
    {
    }

    /// From now on reads \p file, which must outlive its use. Nothing that was read before is used again.
    void setFile(const System::FileHandle& file);

    /// Lets minizip move to no place before \p position; 0 for all.
    void setFirstPosition(qint64 position) { m_first = position; }

    /// minizip's functions, which read from here, whatever name it gives them.
    zlib_filefunc64_def functions();

    bool hasFailed() const { return m_hasFailed; }
    qint64 size() const { return m_size; }
    qint64 firstPosition() const { return m_first; }
    qint64 position() const { return m_position; }
    void moveTo(qint64 position);
    /// How many bytes there were.
    qint64 read(char* target, qint64 size);

private:
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

    void advance(qint64 size);
    qint64 readPart(char* target, qint64 size);
    /// Makes the window at the position the current one; false at the end of the file and beyond.
    bool enterWindow();
    void fill(Window& window);

    const System::FileHandle* m_file = nullptr;
    const qint64 m_size;
    qint64 m_first = 0;
    qint64 m_position = 0;
    bool m_hasFailed = false;
    std::size_t m_current = 0;
    const char* m_next = nullptr; ///< the byte at the position, in the current window
    const char* m_end = nullptr;  ///< the end of that window
    std::array<Window, 2> m_windows;
};

} // namespace TEKLUVA
