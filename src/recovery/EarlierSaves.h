#pragma once

#include "program/ChangeLog.h"
#include "program/ProgramState.h"
#include "recovery/PaperFile.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vardenix {

// Earlier saves of a theater lie in a folder of the user's own data, a file for each:
// what makes of a save the one before it. So they lead back one by one from the file on
// the disk; one that another program has written in between is the end of the way.

// The last saves of each paper, and what they may take of the disk for one theater.
constexpr size_t MostSaves = 10;
constexpr uint64_t MostSavedBytes = uint64_t{256} << 20;

// Where they lie, below the user's own data; empty for a user without a home.
std::string SavesFolder();

// A state of a paper that was on the disk.
struct EarlierSave {
    vardenix::Paper Paper = Paper::Level2;
    std::chrono::system_clock::time_point Time{}; // of its writing
    uint64_t Bytes = 0;                           // of the file that leads to it
    std::string File;
};

// Of the paper as it is on the disk now, the newest first. What cannot be read is the end
// of the way.
std::vector<EarlierSave> EarlierSavesOf(const ProgramState& state, Paper paper,
                                        const std::string& folder);

// Makes of the paper in memory what it was in the save of that number, from 0 for the
// newest; one change of the program's log, which can be taken back and is not saved.
// Error 9 where there is no such save; error 5 where it is what the paper is already.
void BringBack(ProgramState& state, Paper paper, size_t number,
               const std::string& folder);

// "Level 2", "L0/ELV heights", "Texture.bin", "theater.map".
std::string NameOfPaper(Paper paper);

// Keeps what a save is about to replace, for each paper that is saved from now on;
// nothing of it keeps a save from being made.
class SaveKeeper : private ChangeFollower {
public:
    // Follows the state's log, both borrowed; an empty folder keeps nothing.
    SaveKeeper(ProgramState& state, std::string folder);

private:
    void Walked(const Change& change, Walk walk) override;
    void Saved(Paper paper) override;
    void Keep(Paper paper);
    void Hold(Paper paper);

    ProgramState& state_;
    std::string folder_;
    // As they were read or last saved; nothing where they cannot be held.
    std::array<std::optional<PaperFile>, AllPapers.size()> held_;
};

} // namespace vardenix
