#pragma once

#include <filesystem>
#include <sys/stat.h>

namespace vardenix {

// Copies a plain file to a name that is free, with the rights of `mode` that are no more
// than reading, writing and running, flushed to the disk. What was made goes when it
// fails with the system's refusal; error 75 where something has that name, or the file is
// no plain one.
void CopyFile(const std::filesystem::path& from, const std::filesystem::path& to,
              mode_t mode);

} // namespace vardenix
