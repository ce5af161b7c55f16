// Preloaded into a program under test: makes the Nth call that changes the disk end the
// program on the spot (FAULT_MODE=kill), fail with a full disk (full), or write half of
// what it was given and then fail (short). FAULT_AT=N counts from 1. With
// FAULT_MODE=shrink somebody else cuts the file FAULT_FILE to 4 bytes just before the
// program opens it to read for the Nth time.
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace {

int calls = 0;

enum class Fault { None, Full, Short };

template <typename Fn>
Fn Real(const char* name) {
    return reinterpret_cast<Fn>(dlsym(RTLD_NEXT, name));
}

Fault Next() {
    const char* at = std::getenv("FAULT_AT");
    const char* mode = std::getenv("FAULT_MODE");
    ++calls;
    if (at == nullptr || mode == nullptr)
        return Fault::None;
    const std::string_view how = mode;
    // A full disk stays full; a kill happens once.
    if (how == "kill" && calls == std::atoi(at))
        _exit(99);
    if (how == "full" && calls >= std::atoi(at))
        return Fault::Full;
    if (how == "short" && calls == std::atoi(at))
        return Fault::Short;
    return Fault::None;
}

// The Nth opening of FAULT_FILE, for the fault that comes from outside.
bool IsTheOpening(const char* path) {
    static int openings = 0;
    const char* at = std::getenv("FAULT_AT");
    const char* mode = std::getenv("FAULT_MODE");
    const char* file = std::getenv("FAULT_FILE");
    if (at == nullptr || mode == nullptr || file == nullptr ||
        std::string_view(mode) != "shrink" || std::string_view(path) != file)
        return false;
    return ++openings == std::atoi(at);
}

int Refuse() {
    errno = ENOSPC;
    return -1;
}

} // namespace

extern "C" {

ssize_t write(int handle, const void* bytes, size_t count) {
    const auto real = Real<ssize_t (*)(int, const void*, size_t)>("write");
    if (handle <= 2)
        return real(handle, bytes, count);
    switch (Next()) {
    case Fault::Full:
        return Refuse();
    case Fault::Short:
        return real(handle, bytes, (count + 1) / 2);
    case Fault::None:
        break;
    }
    return real(handle, bytes, count);
}

int fsync(int handle) {
    const auto real = Real<int (*)(int)>("fsync");
    return Next() == Fault::Full ? Refuse() : real(handle);
}

int rename(const char* from, const char* to) noexcept {
    const auto real = Real<int (*)(const char*, const char*)>("rename");
    return Next() == Fault::Full ? Refuse() : real(from, to);
}

int unlink(const char* path) noexcept {
    const auto real = Real<int (*)(const char*)>("unlink");
    // A full disk still lets files go.
    Next();
    return real(path);
}

int open(const char* path, int flags, ...) {
    const auto real = Real<int (*)(const char*, int, unsigned)>("open");
    if ((flags & O_CREAT) == 0) {
        if (IsTheOpening(path) && truncate(path, 4) != 0)
            return Refuse();
        return real(path, flags, 0);
    }
    return Next() == Fault::Full ? Refuse() : real(path, flags, 0666);
}
}
