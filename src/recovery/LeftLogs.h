#pragma once

#include "files/BinaryReader.h"
#include "files/HeldFile.h"
#include "recovery/LogStory.h"

#include <optional>
#include <string>
#include <vector>

namespace vardenix {

// Where the logs of changes lie, and earlier saves: below the user's own data, whichever
// installation of the program is used. Empty for a user without a home.
std::string LogFolder();

// A new log in that folder, which is made, for its user alone.
HeldFile MakeLog(const std::string& folder);

// What becomes of a log that an ended program has left.
enum class LogFate : uint8_t {
    Left,      // nobody has been asked about it: "<number>.log"
    NotWanted, // "<number>.aside"
    Unfit      // its files are others by now, and that was told: "<number>.unfit"
};

// A log of changes that nobody writes any more, held for as long as this lives, so that
// no other program takes it meanwhile.
struct LeftLog {
    std::string Name; // the number of its file
    LogFate Fate = LogFate::Left;
    HeldFile File;
    FileBytes Bytes;
    LogStory Story;

    bool Damaged() const { return Story.WholeBytes < Bytes.size(); }
};

// What a folder has of them, the oldest first.
struct LeftLogs {
    std::vector<LeftLog> Logs;
    // Of the others: the number, and why it was not read: a program is writing it.
    struct Unread {
        std::string Name;
        std::string Why;
    };
    std::vector<Unread> Others;
};
// All of them, or those of one theater, by the real path of its L2 file. One in which
// nothing is unsaved is taken away.
LeftLogs LeftLogsOf(const std::string& folder,
                    const std::optional<std::string>& l2File = {});

// Why the changes of a log cannot be put back, as the end of a sentence; empty when they
// can: the files that it is based on are there as they were.
std::string WhyUnfit(const LogStory& story);

void DropLog(const LeftLog& log);
// Error 70 where a program is writing it.
void DropUnread(const std::string& folder, const LeftLogs::Unread& log);
void SetFate(LeftLog& log, LogFate fate);

} // namespace vardenix
