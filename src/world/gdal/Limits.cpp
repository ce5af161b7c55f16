#include "world/gdal/Limits.h"

#include <cpl_conv.h>
#include <cstdint>
#include <ogr_srs_api.h>
#include <sys/resource.h>

namespace vardenix {

namespace {

constexpr rlim_t MostMemory = rlim_t{1} << 30; // bytes of addresses
constexpr rlim_t MostSeconds = 1800;           // of the processor

void Limit(decltype(RLIMIT_AS) what, rlim_t most) {
    const struct rlimit limit { most, most };
    // A lower limit that stands already is as good.
    static_cast<void>(::setrlimit(what, &limit));
}

} // namespace

void LimitThisProcess() {
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
