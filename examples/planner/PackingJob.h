#pragma once

constexpr int PACKED_FILES = 200;
constexpr int PACKED_FILE_SIZE = 256 * 1024; ///< bytes

/// The names of the steps of the job in the state handler, where they must exist.
constexpr const char *WRITE_STEP = "write", *PACK_STEP = "pack", *CHECK_STEP = "check";

enum class PackingResult { Done, Aborted, Failed };

/// Writes files, packs them into a protected archive and checks it, until the user asks the state handler for
/// an abort. Whatever the result, all files are gone afterwards. For any thread.
PackingResult packAndCheck();
