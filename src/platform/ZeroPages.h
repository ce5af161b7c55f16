#pragma once

#include <cstddef>
#include <utility>

namespace vardenix {

// Memory of zeros straight from the system, for the arrays of many millions of bytes.
// What nobody has written to is not really taken; large pieces come in large pages, so
// that filling them is not held up once every 4 KiB.
class ZeroPages {
public:
    ZeroPages() = default;
    // Error 7 when there is no memory.
    explicit ZeroPages(size_t bytes);
    ZeroPages(ZeroPages&& other) noexcept
        : data_(std::exchange(other.data_, nullptr)),
          bytes_(std::exchange(other.bytes_, 0)) {}
    ZeroPages& operator=(ZeroPages&& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(bytes_, other.bytes_);
        return *this;
    }
    ~ZeroPages();

    // Null for no bytes.
    void* Data() const { return data_; }

private:
    void* data_ = nullptr;
    size_t bytes_ = 0;
};

} // namespace vardenix
