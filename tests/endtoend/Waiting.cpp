#include "endtoend/Waiting.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>
#include <unistd.h>

namespace vardenix::tests {

namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* Mark = "VARDENIX_TEST";
constexpr std::chrono::milliseconds BetweenPolls{20};
constexpr std::chrono::seconds BetweenLooks{1};
// A blinking cursor takes less.
constexpr int64_t LeastOfALook = 50'000'000; // nanoseconds

std::string TextOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool IsOurs(const std::filesystem::path& process) {
    const std::string variables = '\0' + TextOf(process / "environ");
    return variables.find('\0' + std::string(Mark) + "=" + std::to_string(::getpid()) +
                          '\0') != std::string::npos;
}

// What our programs have done so far.
struct Work {
    int64_t Nanoseconds = 0; // at work, or ready for it and waiting for a processor
    bool OnDisk = false;     // one waits for the disk
};

Work WorkOf(const std::filesystem::path& process) {
    Work work;
    for (const auto& thread : std::filesystem::directory_iterator(process / "task")) {
        std::ifstream schedule(thread.path() / "schedstat");
        int64_t running = 0;
        int64_t waiting = 0;
        if (schedule >> running >> waiting)
            work.Nanoseconds += running + waiting;
        const std::string status = TextOf(thread.path() / "stat");
        work.OnDisk |= status.find(") D ") != std::string::npos;
    }
    return work;
}

Work WorkOfOurs() {
    Work all;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const std::string name = entry.path().filename();
        if (name.find_first_not_of("0123456789") != std::string::npos)
            continue;
        // A process may end while it is looked at.
        try {
            if (!IsOurs(entry.path()))
                continue;
            const Work work = WorkOf(entry.path());
            all.Nanoseconds += work.Nanoseconds;
            all.OnDisk |= work.OnDisk;
        } catch (const std::filesystem::filesystem_error&) {
            continue;
        }
    }
    return all;
}

} // namespace

std::map<std::string, std::string> MarkOfOurs() {
    return {{Mark, std::to_string(::getpid())}};
}

std::map<std::string, std::string> NotOurs() { return {{Mark, ""}}; }

bool WaitFor(const std::function<bool()>& condition, std::chrono::seconds patience) {
    Clock::time_point worked = Clock::now();
    Clock::time_point look = worked + BetweenLooks;
    Work before;
    while (!condition()) {
        const Clock::time_point now = Clock::now();
        if (now >= look) {
            const Work work = WorkOfOurs();
            // Less than before: one of them has ended.
            if (work.OnDisk || work.Nanoseconds < before.Nanoseconds ||
                work.Nanoseconds - before.Nanoseconds > LeastOfALook)
                worked = now;
            before = work;
            look = now + BetweenLooks;
        }
        if (now - worked > patience)
            return false;
        std::this_thread::sleep_until(now + BetweenPolls);
    }
    return true;
}

} // namespace vardenix::tests
