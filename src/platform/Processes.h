#pragma once

#include <string>

namespace vardenix {

// Other programs, and this one's place among them.
class Processes {
public:
    Processes() = default;
    Processes(const Processes&) = delete;
    Processes& operator=(const Processes&) = delete;
    virtual ~Processes() = default;

    // Starts a command line and does not wait for it; error 53 when it cannot be started.
    virtual void Start(const std::string& commandLine) = 0;
    // Opens an address or document with the user's own program for it.
    virtual void Open(const std::string& address) = 0;
    virtual void Sleep(int milliseconds) = 0;
};

class SystemProcesses : public Processes {
public:
    void Start(const std::string& commandLine) override;
    void Open(const std::string& address) override;
    void Sleep(int milliseconds) override;
};

} // namespace vardenix
