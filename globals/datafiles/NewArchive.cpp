#include "globals/datafiles/NewArchive_p.h"

#include "globals/system/Buffer_p.h"
#include "globals/system/LastError_p.h"
#include "globals/system/System_p.h"

#include <zip.h>

#include <algorithm>

namespace TEKLUVA {

/// minizip's own functions, over the stream of an AtomicFile. They note the first failure.
class NewArchive::Functions
{
public:
    static zlib_filefunc64_def of(NewArchive* archive)
    {
        zlib_filefunc64_def functions = original();
        functions.opaque = archive;
        functions.zopen64_file = &open;
        functions.zwrite_file = &write;
        functions.ztell64_file = &tell;
        functions.zseek64_file = &seek;
        functions.zclose_file = &close;
        return functions;
    }

private:
    static zlib_filefunc64_def original()
    {
        zlib_filefunc64_def functions{};
        fill_fopen64_filefunc(&functions);
        return functions;
    }

    static void noteError(void* archive)
    {
        std::error_code& error = static_cast<NewArchive*>(archive)->m_error;
        const std::error_code reason = System::lastError();
        if (!error)
            error = reason ? reason : std::make_error_code(std::errc::io_error);
    }

    static void* open(void* archive, const void* /*name*/, int /*mode*/)
    {
        return static_cast<NewArchive*>(archive)->m_file.openStream();
    }

    static uLong write(void* archive, void* stream, const void* bytes, uLong size)
    {
        const uLong written = original().zwrite_file(nullptr, stream, bytes, size);
        if (written != size)
            noteError(archive);
        return written;
    }

    /// minizip would write a failure into the archive, as a position.
    static ZPOS64_T tell(void* archive, void* stream)
    {
        const ZPOS64_T position = original().ztell64_file(nullptr, stream);
        if (static_cast<qint64>(position) < 0)
            noteError(archive);
        return position;
    }

    static long seek(void* archive, void* stream, ZPOS64_T offset, int origin)
    {
        const long result = original().zseek64_file(nullptr, stream, offset, origin);
        if (result != 0) // what was written before goes to the disk
            noteError(archive);
        return result;
    }

    static int close(void* archive, void* stream)
    {
        const int result = original().zclose_file(nullptr, stream);
        if (result != 0)
            noteError(archive);
        return result;
    }
};

void NewArchive::Close::operator()(void* archive) const
{
    zipClose(archive, nullptr);
}

NewArchive::NewArchive(const QString& path)
    : m_file(path)
{
    zlib_filefunc64_def functions = Functions::of(this);
    m_archive.reset(zipOpen2_64("", APPEND_STATUS_CREATE, nullptr, &functions));
}

NewArchive::~NewArchive() = default;

bool NewArchive::isOpen() const
{
    return m_archive != nullptr;
}

bool NewArchive::pack(const QString& name, const QByteArray& data)
{
    return packEntry(m_archive.get(), name, data);
}

bool NewArchive::commit()
{
    const bool isClosed = zipClose(m_archive.release(), nullptr) == ZIP_OK;
    return isClosed && !m_error && m_file.commit();
}

QString NewArchive::error() const
{
    return m_error ? System::messageOf(m_error) : m_file.error();
}

bool packEntry(void* zipFile, const QString& name, const QByteArray& data)
{
    // minizip writes into the memory for an entry's header without a look at whether it got it.
    constexpr quint64 MORE_THAN_A_HEADER = 100'000;
    constexpr int LONGEST_NAME = 0xffff;
    constexpr qint64 LARGEST_PLAIN_SIZE = 0xfffffffe;
    constexpr qint64 PIECE = qint64{1} << 30;
    const QByteArray entry = System::encodedName(name);
    if (entry.size() > LONGEST_NAME || !allocate(MORE_THAN_A_HEADER))
        return false;
    const zip_fileinfo nothing{};
    const qint64 dataSize = data.size();
    const int isLarge = dataSize > LARGEST_PLAIN_SIZE ? 1 : 0;
    int result = zipOpenNewFileInZip64(zipFile, entry.constData(), &nothing, nullptr, 0, nullptr, 0, nullptr,
                                       Z_DEFLATED, Z_DEFAULT_COMPRESSION, isLarge);
    for (qint64 done = 0; result == ZIP_OK && done < dataSize; done += PIECE) {
        const auto size = static_cast<unsigned>(std::min(PIECE, dataSize - done));
        result = zipWriteInFileInZip(zipFile, data.constData() + done, size);
    }
    return result == ZIP_OK && zipCloseFileInZip(zipFile) == ZIP_OK;
}

} // namespace TEKLUVA
