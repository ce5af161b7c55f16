#include "support/PlainUser.h"

#include <filesystem>
#include <stdexcept>
#include <unistd.h>

namespace vardenix::tests {

namespace {

constexpr uid_t Nobody = 65534;

} // namespace

PlainUser::PlainUser() : wasSuperuser_(geteuid() == 0) {
    // The real user as well: it is the one that access() asks for.
    if (wasSuperuser_ && setresuid(Nobody, Nobody, 0) != 0)
        throw std::runtime_error("cannot become a plain user");
}

PlainUser::~PlainUser() {
    if (wasSuperuser_ && setresuid(0, 0, 0) != 0)
        std::terminate();
}

void LetOthers(const std::string& path, unsigned rights) {
    std::filesystem::permissions(
        path, static_cast<std::filesystem::perms>(rights << 6 | rights << 3 | rights));
}

} // namespace vardenix::tests
