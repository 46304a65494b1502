#pragma once

#include "globals/globals_export.h"

#include <atomic>
#include <cstdint>

namespace TEKLUVA {

/// A polymorphic base that counts references to an object and the objects alive. It never deletes anything:
/// ownership stays with whoever created the object, and destroying one that is still referenced is allowed.
/// The instance count may be used from any thread, an object's reference count from one thread at a time.
class GLOBALS_EXPORT SmartObject
{
public:
    SmartObject();
    /// A copy is a new object that nobody refers to yet.
    SmartObject(const SmartObject&);
    /// References point at the object, not at its content, so its count stays.
    SmartObject& operator=(const SmartObject&);
    virtual ~SmartObject();

    void __incRef();
    void __decRef(); ///< reaching 0 has no effect

    int getRefCount() const;
    /// The number of SmartObject instances alive in the process.
    int getObjCount() const;

    static std::atomic<std::int32_t> _obj_count;

private:
    // Not behind a pointer: the base adds one number to each object, and the pointer alone takes more room.
    std::int32_t m_refCount = 0;
};

} // namespace TEKLUVA
