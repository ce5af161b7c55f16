#pragma once

#include <utility>

namespace vardenix {

// A file descriptor that is closed when its owner goes.
class SystemFile {
public:
    SystemFile() = default;
    explicit SystemFile(int handle) : handle_(handle) {}
    SystemFile(SystemFile&& other) noexcept : handle_(std::exchange(other.handle_, -1)) {}
    SystemFile& operator=(SystemFile&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~SystemFile() { Close(); }

    bool IsOpen() const { return handle_ >= 0; }
    int Handle() const { return handle_; }
    // False, with errno set, when the system could not keep what was written.
    bool Close();

private:
    int handle_ = -1;
};

} // namespace vardenix
