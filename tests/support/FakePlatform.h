#pragma once

#include "platform/Platform.h"
#include "platform/Processes.h"
#include "platform/Registry.h"
#include "support/FixedClock.h"
#include "support/ScriptedDialogs.h"

#include <map>

namespace vardenix::tests {

class FakeRegistry : public Registry {
public:
    std::map<std::string, std::string> Values; // "KEY|NAME" to text

    std::string ReadText(std::string_view key, std::string_view name) const override {
        const auto found = Values.find(std::string(key) + "|" + std::string(name));
        return found == Values.end() ? "" : found->second;
    }
    void WriteText(std::string_view key, std::string_view name,
                   std::string_view value) override {
        Values[std::string(key) + "|" + std::string(name)] = value;
    }
};

// Writes down what it is asked: "start a b|sleep 1000".
class FakeProcesses : public Processes {
public:
    std::string Story;

    void Start(const std::string& commandLine) override { Tell("start " + commandLine); }
    void Open(const std::string& address) override { Tell("open " + address); }
    void Sleep(int milliseconds) override {
        Tell("sleep " + std::to_string(milliseconds));
    }

private:
    void Tell(const std::string& what) { Story += (Story.empty() ? "" : "|") + what; }
};

// A whole platform for tests, whose parts can be told what to answer.
struct FakePlatform {
    ScriptedDialogs Dialogs;
    FakeRegistry Registry;
    FixedClock Clock;
    FakeProcesses Processes;
    Platform All{Dialogs, Registry, Clock, Processes};
};

} // namespace vardenix::tests
