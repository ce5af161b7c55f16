#pragma once

#include <functional>

namespace vardenix {

// Calls back once, on the program's one thread, unless it is stopped or started anew
// before.
class Timer {
public:
    Timer() = default;
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    virtual ~Timer() = default;

    virtual void Start(int milliseconds, std::function<void()> whenOver) = 0;
    virtual void Stop() = 0;
};

// How long a server is waited for, in milliseconds.
constexpr int ServerPatience = 30000;

} // namespace vardenix
