#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace vardenix {

// A file that is being written, for those who make its bytes and need not know how it
// takes its place.
class ByteSink {
public:
    ByteSink() = default;
    ByteSink(const ByteSink&) = delete;
    ByteSink& operator=(const ByteSink&) = delete;
    virtual ~ByteSink() = default;

    // The system's refusals, with the file's name.
    virtual void Write(std::span<const std::byte> bytes) = 0;
    // Bytes written so far.
    virtual uint64_t Position() const = 0;
};

} // namespace vardenix
