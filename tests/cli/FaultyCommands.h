// Every command that writes, with each of its calls to the system failing once, and with
// the program killed at each that changes the disk. The commands run in a child of the
// test, which has the shim between itself and the system.
#pragma once

#include "cli/CliTheater.h"

#include <map>
#include <string>
#include <vector>

namespace vardenix::tests {

using Files = std::map<std::string, std::string>; // by their names in the folder

class FaultyCommands : public CliTheater {
protected:
    void SetUp() override;
    void TearDown() override;

    // `reading` is a command that opens what was written. Only each `failing`th call
    // fails where a command makes very many; a kill and a full disk come at every one.
    void TryEveryCall(const std::vector<std::string>& writing,
                      const std::vector<std::string>& reading, int failing = 1);
    Files OnDiskNow() const;

    bool readsBack_ = false; // it reads what it has written, and may fail then
    int done_ = 0;           // what the writing command ends with
    Files old_;
    // Files that no theater has, and in what a kill has left of their writing: it stays
    // until they are written the next time.
    std::vector<std::string> leftovers_{"report.txtx", "heights.bmpx"};

private:
    void TryEveryCall(const char* mode, const std::vector<std::string>& writing,
                      const std::vector<std::string>& reading, const Files& done,
                      int step);
    int RunWith(const char* mode, int at, std::vector<std::string> arguments);
    void WriteFinest();
    void PutBack(const Files& files) const;
    Files Found(bool killed) const;
    std::string Difference(const Files& found) const;

    int* calls_ = nullptr; // that the last command made
};

} // namespace vardenix::tests
