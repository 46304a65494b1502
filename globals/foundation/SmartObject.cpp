#include "globals/SmartObject.h"

namespace TEKLUVA {

std::atomic<std::int32_t> SmartObject::_obj_count{0};

SmartObject::SmartObject()
{
    ++_obj_count;
}

SmartObject::SmartObject(const SmartObject& /*other*/)
    : SmartObject()
{
}

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment,cert-oop54-cpp): nothing is assigned
SmartObject& SmartObject::operator=(const SmartObject& /*other*/)
{
    return *this;
}

SmartObject::~SmartObject()
{
    --_obj_count;
}

void SmartObject::__incRef()
{
    ++m_refCount;
}

void SmartObject::__decRef()
{
    --m_refCount;
}

int SmartObject::getRefCount() const
{
    return m_refCount;
}

int SmartObject::getObjCount() const
{
    return _obj_count;
}

} // namespace TEKLUVA
