#include "globals/Containment.h"

#include "globals/system/System_p.h"

#include <algorithm>

namespace TEKLUVA {

namespace fs = std::filesystem;

bool isWithin(const fs::path& path, const fs::path& folder)
{
    std::error_code error;
    const fs::path inner = System::weaklyCanonical(path, error);
    if (error)
        return false;
    const fs::path outer = System::canonical(folder, error);
    if (error)
        return false;
    // By whole names: "/data/old2" does not lie in "/data/old".
    const auto [outerEnd, innerEnd] = std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end());
    return outerEnd == outer.end();
}

bool isWithin(const QString& path, const QString& folder)
{
    return isWithin(System::nativePath(path), System::nativePath(folder));
}

} // namespace TEKLUVA
