#pragma once

#include "program/Change.h"
#include "recovery/LogRecords.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vardenix {

// One change of a log that leads from the files towards what was unsaved: carried out, or
// taken back where it had been saved.
struct StoryStep {
    std::string Name;
    std::chrono::system_clock::time_point Time{};
    bool Back = false;
    // What it was written in, in that order, and of which papers each counts.
    struct Part {
        size_t ChangeAt = 0;
        uint8_t Papers = 0;
    };
    std::vector<Part> Parts{};
    // Of those that are about heights: whose, by LogStory::Heights.
    size_t Heights = 0;

    uint8_t Papers() const;
};

// What the records of a log come to: the files as they were last, and the way from there
// to the papers as they were in memory. Of a paper that had been saved only what came
// afterwards is on it, and nothing of one that is not unsaved.
struct LogStory {
    BasedOn Files;
    uint8_t Unsaved = 0; // papers
    std::chrono::system_clock::time_point Last{};
    std::vector<StoryStep> Steps{};
    // Whose unsaved changes are among the steps, in the order in which they were loaded:
    // the steps of each come before those of the next.
    std::vector<HeightsFiles> Heights{};
    // All of these but the last had been put aside for others; or that one, too.
    bool LastInUse = false;
    size_t WholeBytes = 0; // behind them the file is damaged, or ends

    // Papers that the steps are about.
    uint8_t Papers() const;
    // Of those by that number.
    bool WasPutAside(size_t heights) const {
        return heights + 1 < Heights.size() || !LastInUse;
    }
};

// Bytes of anybody's. Error 13 where they do not even begin as a log does.
LogStory ReadStory(std::span<const std::byte> bytes, const std::string& path);

// The changes of one step, in the order in which they are carried out.
std::vector<Change> ChangesOf(const StoryStep& step, std::span<const std::byte> bytes,
                              const std::string& path);

} // namespace vardenix
