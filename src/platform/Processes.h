#pragma once

#include <string>
#include <vector>

namespace vardenix {

// Other programs, and this one's place among them.
class Processes {
public:
    Processes() = default;
    Processes(const Processes&) = delete;
    Processes& operator=(const Processes&) = delete;
    virtual ~Processes() = default;

    // Starts a program and does not wait for it. The command line is the name of a file
    // and nothing else, blanks and all, or words parted by blanks: the program, by its
    // path or looked for where the user's programs are, and its arguments. Double quotes
    // hold a word together. Error 53 when there is no such program, 70 when it may not be
    // run, else the system's refusal.
    virtual void Start(const std::string& commandLine) = 0;
    // Opens an address or document with the user's own program for it; error 53 when
    // there is none.
    virtual void Open(const std::string& address) = 0;
    virtual void Sleep(int milliseconds) = 0;
};

class SystemProcesses : public Processes {
public:
    void Start(const std::string& commandLine) override;
    void Open(const std::string& address) override;
    void Sleep(int milliseconds) override;

private:
    void Spawn(const std::vector<std::string>& words, const std::string& shown);

    std::vector<int> started_; // process numbers of those that may still run
};

// A text as one word of a command line.
std::string QuotedWord(const std::string& text);

} // namespace vardenix
