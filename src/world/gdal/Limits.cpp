#include "world/gdal/Limits.h"

#include "world/gdal/Datasets.h"

#include <array>
#include <cerrno>
#include <cpl_conv.h>
#include <cstddef>
#include <cstdint>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <ogr_srs_api.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>

namespace vardenix {

namespace {

constexpr rlim_t MostMemory = rlim_t{1} << 30; // bytes of addresses
constexpr rlim_t MostSeconds = 1800;           // of the processor

void Limit(decltype(RLIMIT_AS) what, rlim_t most) {
    const struct rlimit limit { most, most };
    // A lower limit that stands already is as good.
    static_cast<void>(::setrlimit(what, &limit));
}

// A map may name an address where its reference system is to be had, and the library
// would ask there. From here on no call of this process opens a socket or begins a
// program; where the system cannot keep such calls away, the map is not read.
void RefuseNetworkAndPrograms() {
    constexpr auto number = static_cast<uint32_t>(offsetof(struct seccomp_data, nr));
    constexpr auto refused = static_cast<uint32_t>(SECCOMP_RET_ERRNO | EACCES);
    std::array filter{sock_filter BPF_STMT(BPF_LD | BPF_W | BPF_ABS, number),
                      sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_socket, 3, 0),
                      sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_execve, 2, 0),
                      sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_execveat, 1, 0),
                      sock_filter BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
                      sock_filter BPF_STMT(BPF_RET | BPF_K, refused)};
    const sock_fprog program{static_cast<uint16_t>(filter.size()), filter.data()};
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
        ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
        throw MapRefused("this system cannot keep a map from the network, and so none is "
                         "read");
}

} // namespace

void LimitThisProcess() {
    RefuseNetworkAndPrograms();
    Limit(RLIMIT_AS, MostMemory);
    Limit(RLIMIT_CPU, MostSeconds);
    Limit(RLIMIT_CORE, 0);
    CPLSetConfigOption("GDAL_DRIVER_PATH", "disable");
    CPLSetConfigOption("GDAL_PAM_ENABLED", "NO");
    CPLSetConfigOption("GDAL_DISABLE_READDIR_ON_OPEN", "EMPTY_DIR");
    CPLSetConfigOption("GDAL_CACHEMAX", "64");
    CPLSetConfigOption("GDAL_NUM_THREADS", "1");
    OSRSetPROJEnableNetwork(0);
}

} // namespace vardenix
