#pragma once

#include "platform/SystemFile.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace vardenix {

// An existing file, open to be read. Error 53 or the system's refusal.
SystemFile OpenToRead(const std::string& path);

// Reads from `position` on, and gives how many bytes there were: fewer than asked for at
// the end of the file. The system's refusal with `path`.
size_t ReadAt(const SystemFile& file, uint64_t position, std::span<std::byte> bytes,
              const std::string& path);

} // namespace vardenix
