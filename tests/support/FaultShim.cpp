// Between a program under test and the system: makes its calls fail. Either preloaded and
// told by the environment, or linked into a test program and told by ArmFaults.
//
// FAULT_AT=N counts the calls from 1, FAULT_MODE says what the Nth does:
// - kill: ends the program on the spot; full: the disk is full from then on; short:
// writes
//   half of what it was given; term: the program is asked to end. These count the calls
//   that change the disk.
// - fail, fail2, fail3: that call, or that and the next one or two, fails with an error
// of
//   the disk, or of memory where memory is asked for; killany: ends the program on the
//   spot. These count every call that looks at, reads or changes the disk, or asks for
//   much memory.
// - owner: every change of owner and group fails with EINVAL, as where users are mapped.
// - rights: every change of rights fails with EPERM, as on a file system without them.
// - shrink: somebody else cuts the file FAULT_FILE to 4 bytes just before the program
//   opens it to read for the Nth time.
// - touch: somebody else writes the file FAULT_TOUCHED just when the program opens
//   FAULT_FILE for the Nth time.
// - refuse: the disk fails when the program looks at FAULT_FILE for the Nth time.
// - none: nothing; the calls are counted.
#include "support/FaultShim.h"

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <new>
#include <string_view>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Below that, memory is not what a program runs out of first.
constexpr size_t MuchMemory = size_t{200} << 10;

enum class Mode {
    None,
    Kill,
    Full,
    Short,
    Term,
    Fail,
    KillAny,
    Owner,
    Rights,
    Shrink,
    Touch,
    Refuse
};

struct Plan {
    Mode How = Mode::None;
    int At = 0;
    int Times = 1;
    int Calls = 0;
    bool Known = false;
    bool Armed = false; // by the program itself
};
Plan plan;

Plan PlanOf(std::string_view mode, int at) {
    Plan made{Mode::None, at, 1, 0, true, false};
    if (mode == "kill")
        made.How = Mode::Kill;
    else if (mode == "full")
        made.How = Mode::Full;
    else if (mode == "short")
        made.How = Mode::Short;
    else if (mode == "term")
        made.How = Mode::Term;
    else if (mode.substr(0, 4) == "fail")
        made.How = Mode::Fail;
    else if (mode == "killany")
        made.How = Mode::KillAny;
    else if (mode == "owner")
        made.How = Mode::Owner;
    else if (mode == "rights")
        made.How = Mode::Rights;
    else if (mode == "shrink")
        made.How = Mode::Shrink;
    else if (mode == "touch")
        made.How = Mode::Touch;
    else if (mode == "refuse")
        made.How = Mode::Refuse;
    if (made.How == Mode::Fail && mode.size() == 5)
        made.Times = mode[4] - '0';
    return made;
}

Plan& ThePlan() {
    if (!plan.Known) {
        const char* at = std::getenv("FAULT_AT");
        const char* mode = std::getenv("FAULT_MODE");
        plan = PlanOf(mode != nullptr ? mode : "none", at != nullptr ? std::atoi(at) : 0);
    }
    return plan;
}

enum class Call { Looks, Changes };
enum class Fault { None, Full, Short, Broken };

Fault Next(Call call) {
    Plan& now = ThePlan();
    const bool everyCall = now.How == Mode::Fail || now.How == Mode::KillAny;
    if (call == Call::Looks && !everyCall && now.How != Mode::None)
        return Fault::None;
    ++now.Calls;
    switch (now.How) {
    case Mode::Kill:
    case Mode::KillAny:
        if (now.Calls == now.At)
            _exit(99);
        return Fault::None;
    case Mode::Term:
        if (now.Calls == now.At)
            raise(SIGTERM);
        return Fault::None;
    case Mode::Full:
        return now.Calls >= now.At ? Fault::Full : Fault::None;
    case Mode::Short:
        return now.Calls == now.At ? Fault::Short : Fault::None;
    case Mode::Fail:
        return now.Calls >= now.At && now.Calls < now.At + now.Times ? Fault::Broken
                                                                     : Fault::None;
    default:
        return Fault::None;
    }
}

int Refuse(int error) {
    errno = error;
    return -1;
}

// What a call that only looks fails with.
bool IsBroken() { return Next(Call::Looks) == Fault::Broken; }

// Nonzero: what a call that changes something fails with.
int Refusal() {
    switch (Next(Call::Changes)) {
    case Fault::Full:
        return ENOSPC;
    case Fault::Broken:
        return EIO;
    default:
        return 0;
    }
}

// The Nth time that a call is for FAULT_FILE.
bool IsTheTimeFor(Mode mode, const char* path) {
    static int times = 0;
    const char* file = std::getenv("FAULT_FILE");
    return ThePlan().How == mode && file != nullptr && std::string_view(path) == file &&
           ++times == ThePlan().At;
}

bool IsRefused(const char* path) {
    return IsBroken() || IsTheTimeFor(Mode::Refuse, path);
}

template <typename Fn>
Fn Real(const char* name) {
    return reinterpret_cast<Fn>(dlsym(RTLD_NEXT, name));
}

// Each call finds the system's own once.
#define REAL(name) static const auto real = Real<decltype(&::name)>(#name)

} // namespace

void ArmFaults(std::string_view mode, int at) {
    plan = PlanOf(mode, at);
    plan.Armed = true;
}

int FaultCalls() { return plan.Calls; }

void* operator new(size_t size) {
    if (size >= MuchMemory && IsBroken())
        throw std::bad_alloc();
    void* memory = std::malloc(size != 0 ? size : 1);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}
void* operator new[](size_t size) { return operator new(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, size_t) noexcept { std::free(memory); }

extern "C" {

int stat(const char* path, struct stat* status) noexcept {
    REAL(stat);
    return IsRefused(path) ? Refuse(EIO) : real(path, status);
}

int lstat(const char* path, struct stat* status) noexcept {
    REAL(lstat);
    return IsRefused(path) ? Refuse(EIO) : real(path, status);
}

int fstat(int handle, struct stat* status) noexcept {
    REAL(fstat);
    return IsBroken() ? Refuse(EIO) : real(handle, status);
}

int fstatat(int folder, const char* path, struct stat* status, int flags) noexcept {
    REAL(fstatat);
    return IsRefused(path) ? Refuse(EIO) : real(folder, path, status, flags);
}

DIR* opendir(const char* path) {
    REAL(opendir);
    if (!IsRefused(path))
        return real(path);
    errno = EIO;
    return nullptr;
}

ssize_t read(int handle, void* bytes, size_t count) {
    REAL(read);
    return IsBroken() ? Refuse(EIO) : real(handle, bytes, count);
}

ssize_t pread(int handle, void* bytes, size_t count, off_t offset) {
    REAL(pread);
    return IsBroken() ? Refuse(EIO) : real(handle, bytes, count, offset);
}

void* mmap(void* where, size_t size, int rights, int flags, int handle,
           off_t offset) noexcept {
    REAL(mmap);
    if (size < MuchMemory || !IsBroken())
        return real(where, size, rights, flags, handle, offset);
    errno = ENOMEM;
    return MAP_FAILED;
}

ssize_t write(int handle, const void* bytes, size_t count) {
    REAL(write);
    if (handle <= 2)
        return real(handle, bytes, count);
    switch (Next(Call::Changes)) {
    case Fault::Full:
        return Refuse(ENOSPC);
    case Fault::Broken:
        return Refuse(EIO);
    case Fault::Short:
        return real(handle, bytes, (count + 1) / 2);
    case Fault::None:
        break;
    }
    return real(handle, bytes, count);
}

int fsync(int handle) {
    REAL(fsync);
    const int refusal = Refusal();
    if (refusal != 0)
        return Refuse(refusal);
    // What a kill leaves is in the system's memory; nobody pulls the plug here.
    return ThePlan().Armed ? 0 : real(handle);
}

int rename(const char* from, const char* to) noexcept {
    REAL(rename);
    const int refusal = Refusal();
    return refusal != 0 ? Refuse(refusal) : real(from, to);
}

int link(const char* from, const char* to) noexcept {
    REAL(link);
    const int refusal = Refusal();
    return refusal != 0 ? Refuse(refusal) : real(from, to);
}

int unlink(const char* path) noexcept {
    REAL(unlink);
    // A full disk still lets files go.
    const int refusal = Refusal();
    return refusal == EIO ? Refuse(refusal) : real(path);
}

int fchown(int handle, uid_t user, gid_t group) noexcept {
    REAL(fchown);
    if (ThePlan().How == Mode::Owner && user != static_cast<uid_t>(-1))
        return Refuse(EINVAL);
    return IsBroken() ? Refuse(EIO) : real(handle, user, group);
}

int fchmod(int handle, mode_t rights) noexcept {
    REAL(fchmod);
    if (ThePlan().How == Mode::Rights)
        return Refuse(EPERM);
    return IsBroken() ? Refuse(EIO) : real(handle, rights);
}

int open(const char* path, int flags, ...) {
    REAL(open);
    if (IsTheTimeFor(Mode::Touch, path) &&
        utimensat(AT_FDCWD, std::getenv("FAULT_TOUCHED"), nullptr, 0) != 0)
        return Refuse(EIO);
    if ((flags & O_CREAT) == 0) {
        if (IsTheTimeFor(Mode::Shrink, path) && truncate(path, 4) != 0)
            return Refuse(EIO);
        return IsBroken() ? Refuse(EIO) : real(path, flags, 0);
    }
    va_list rest;
    va_start(rest, flags);
    const auto rights = va_arg(rest, mode_t);
    va_end(rest);
    const int refusal = Refusal();
    return refusal != 0 ? Refuse(refusal) : real(path, flags, rights);
}
}
