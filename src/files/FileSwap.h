#pragma once

#include "files/BinaryReader.h"
#include "files/FileIdentity.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vardenix {

// Files that something has replaced, kept in memory: as they were before it, and after
// each swap as they were before the swap. A file that was not there before is none of
// them: nothing is lost by one that came.
class FileSwap {
public:
    // Reads those of the files that are there, whose bytes are to be kept. The system's
    // refusals.
    explicit FileSwap(const std::vector<std::string>& paths);

    // The files have been replaced just now.
    void Replaced();
    // What is kept takes the files' places as one transaction, and what was there is
    // kept. ChangedFileError, and all as it was, when one is another than this object
    // knows of; the system's refusals.
    void Swap();

    bool Empty() const { return kept_.empty(); }
    // In memory.
    size_t Bytes() const;

private:
    struct Kept {
        std::string Path;
        FileBytes Bytes;
        FileIdentity There; // what stands in its place now
    };
    std::vector<Kept> kept_;
};

} // namespace vardenix
