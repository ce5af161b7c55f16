#include "platform/Signals.h"

#include "texts/RuntimeError.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace vardenix {

namespace {

std::atomic<int> heard{0};
int pipeEnds[2] = {-1, -1};

void Hear(int signal) {
    const int before = errno;
    heard = signal;
    if (pipeEnds[1] >= 0 && ::write(pipeEnds[1], "", 1) < 0)
        errno = before; // full: it is readable already
    errno = before;
}

void DoNothing(int /*signal*/) {}

} // namespace

void MakeFileSizeLimitAnError() {
    // A handler, unlike what is ignored, is not handed on to other programs.
    struct sigaction action {};
    action.sa_handler = DoNothing;
    ::sigaction(SIGXFSZ, &action, nullptr);
}

void HearEndSignals() {
    if (pipeEnds[0] < 0 && ::pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        ThrowSystemError(errno, "making", "a pipe");
    for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
        struct sigaction before {};
        ::sigaction(signal, nullptr, &before);
        if (before.sa_handler == SIG_IGN)
            continue;
        struct sigaction action {};
        action.sa_handler = Hear;
        // Reading and writing go on; a second signal is not asked any more.
        action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
        ::sigaction(signal, &action, nullptr);
    }
}

int EndSignalHeard() { return heard; }

int EndSignalHandle() { return pipeEnds[0]; }

} // namespace vardenix
