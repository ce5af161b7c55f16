// Part of the preloaded library: with FAULT_MODE=refuse the disk fails (EIO) when the
// program looks at FAULT_FILE for the Nth time (FAULT_AT=N).
#include <cerrno>
#include <cstdlib>
#include <dirent.h>
#include <dlfcn.h>
#include <string_view>
#include <sys/stat.h>

namespace {

template <typename Fn>
Fn Real(const char* name) {
    return reinterpret_cast<Fn>(dlsym(RTLD_NEXT, name));
}

bool IsRefused(const char* path) {
    static int looks = 0;
    const char* at = std::getenv("FAULT_AT");
    const char* mode = std::getenv("FAULT_MODE");
    const char* file = std::getenv("FAULT_FILE");
    if (at == nullptr || mode == nullptr || file == nullptr ||
        std::string_view(mode) != "refuse" || std::string_view(path) != file)
        return false;
    if (++looks != std::atoi(at))
        return false;
    errno = EIO;
    return true;
}

} // namespace

extern "C" {

int stat(const char* path, struct stat* status) noexcept {
    const auto real = Real<int (*)(const char*, struct stat*)>("stat");
    return IsRefused(path) ? -1 : real(path, status);
}

int lstat(const char* path, struct stat* status) noexcept {
    const auto real = Real<int (*)(const char*, struct stat*)>("lstat");
    return IsRefused(path) ? -1 : real(path, status);
}

int fstatat(int folder, const char* path, struct stat* status, int flags) noexcept {
    const auto real = Real<int (*)(int, const char*, struct stat*, int)>("fstatat");
    return IsRefused(path) ? -1 : real(folder, path, status, flags);
}

DIR* opendir(const char* path) {
    const auto real = Real<DIR* (*)(const char*)>("opendir");
    return IsRefused(path) ? nullptr : real(path);
}
}
