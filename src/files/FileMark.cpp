#include "files/FileMark.h"

#include "files/FileNames.h"

#include <ctime>
#include <sys/stat.h>
#include <utility>

namespace vardenix {

namespace {

constexpr int64_t Second = 1'000'000'000;
// Some ticks of the slowest clock of a kernel. File systems without fractions of seconds
// count by two.
constexpr int64_t FineTicks = 40'000'000;
constexpr int64_t CoarseTicks = 3 * Second;
constexpr int MostNaps = 50; // milliseconds

// The clock by which the kernel dates changes.
int64_t NowInTicks() {
    struct timespec now {};
    ::clock_gettime(CLOCK_REALTIME_COARSE, &now);
    return now.tv_sec * Second + now.tv_nsec;
}

} // namespace

bool FileMark::ChangedNoLaterThan(const FileMark& other) const {
    return std::pair(ChangedSeconds, ChangedNanoseconds) <=
           std::pair(other.ChangedSeconds, other.ChangedNanoseconds);
}

bool FileMark::IsSettled() const {
    const int64_t ticks = ChangedNanoseconds == 0 ? CoarseTicks : FineTicks;
    return ChangedSeconds * Second + ChangedNanoseconds + ticks < NowInTicks();
}

FileMark MarkOfStatus(const struct stat& status) {
    return {IdentityOfStatus(status), status.st_ctim.tv_sec, status.st_ctim.tv_nsec};
}

FileMark MarkOfPath(std::string_view path) {
    struct stat status {};
    if (::stat(RealPath(path, PathKind::File).c_str(), &status) != 0)
        return {};
    return MarkOfStatus(status);
}

void LetTickPass() {
    const int64_t start = NowInTicks();
    for (int nap = 0; nap < MostNaps && NowInTicks() == start; ++nap) {
        const struct timespec pause { 0, 1'000'000 };
        ::clock_nanosleep(CLOCK_MONOTONIC, 0, &pause, nullptr);
    }
}

} // namespace vardenix
