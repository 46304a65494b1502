#pragma once

#include <QtGlobal>

#include <unistd.h>

namespace TEKLUVA {

/// A file descriptor that is closed at the end of its scope; a negative one stands for none.
class Descriptor
{
    Q_DISABLE_COPY(Descriptor)

public:
    explicit Descriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    ~Descriptor() { static_cast<void>(close()); }

    bool isOpen() const { return m_descriptor >= 0; }
    int get() const { return m_descriptor; }

    /// False, with the reason in errno, when what was written may not have arrived.
    bool close()
    {
        const int descriptor = m_descriptor;
        m_descriptor = -1;
        return descriptor < 0 || ::close(descriptor) == 0;
    }

private:
    int m_descriptor;
};

} // namespace TEKLUVA
