#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

// A file in memory, for readers that take a path.
class MemoryFile {
public:
    MemoryFile() : handle_(::memfd_create("fuzz", MFD_CLOEXEC)) {}
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { ::close(handle_); }

    // The file holds these bytes and no others. False when the system refuses.
    bool Put(std::span<const std::byte> bytes) const {
        return ::ftruncate(handle_, 0) == 0 &&
               ::pwrite(handle_, bytes.data(), bytes.size(), 0) ==
                   static_cast<ssize_t>(bytes.size());
    }
    std::string Path() const { return "/proc/self/fd/" + std::to_string(handle_); }

private:
    int handle_;
};
