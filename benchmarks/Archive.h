#pragma once

#include <string>

namespace Bench {

/// The path of an archive of \p count entries of 1 KiB, made when it is asked for first.
const std::string& archive(int count);

/// The name of an entry, counted from 0.
std::string entryName(int entry);

} // namespace Bench
