#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <string>

namespace vardenix::tests {

// How long nothing may stir.
inline constexpr std::chrono::seconds Patience{30};

// Polls until `condition` holds. As long as a program of ours works, it is waited for,
// however slow the machine, to the end that CTest sets; false once all of them have been
// idle for `patience`.
bool WaitFor(const std::function<bool()>& condition,
             std::chrono::seconds patience = Patience);

// A program that is started with this counts as ours, and so does whatever it starts.
std::map<std::string, std::string> MarkOfOurs();
// A program that is there for the others' sake.
std::map<std::string, std::string> NotOurs();

} // namespace vardenix::tests
