#pragma once

#include "builder/FartileIndex.h"
#include "builder/FartileShape.h"
#include "catalogue/TextureBin.h"
#include "files/Digest.h"
#include "files/FileMark.h"
#include "files/FileNames.h"
#include "pictures/ImageFiles.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vardenix {

enum class DayOrNight : size_t { Day = 0, Night = 1 };

// What both pictures of a tile are known by.
using TileDigests = std::array<Digest, 2>;

// The pictures of tiles as they are on the disk. Used by several threads at once, for
// different pictures.
class TileFiles {
public:
    // The catalogue is borrowed; the folder of its pictures is listed once. `known` are
    // pictures that need not be read to be known again.
    explicit TileFiles(const Catalogue& catalogue,
                       const std::vector<KnownPicture>& known = {});

    // The number is below the catalogue's. Error 481 with the path for a file that cannot
    // be read.
    struct Read {
        PictureFile File;
        vardenix::Digest Digest;
    };
    Read ReadFile(int32_t tile, DayOrNight when);
    // None unless the file is known without being read.
    std::optional<Digest> Recall(int32_t tile, DayOrNight when);

    // How many tiles the catalogue has.
    size_t Count() const { return catalogue_.Lookup.size(); }
    // Two for each tile, by day and by night: those that a later run will know, and empty
    // ones.
    const std::vector<KnownPicture>& Known() const { return known_; }
    // How many files were read.
    int32_t FilesRead() const { return filesRead_; }

private:
    std::string PathOf(int32_t tile, DayOrNight when) const;
    KnownPicture& KnownOf(int32_t tile, DayOrNight when) {
        return known_[static_cast<size_t>(tile) * 2 + static_cast<size_t>(when)];
    }

    const Catalogue& catalogue_;
    FolderIndex folder_;               // as it was at the start of the run
    std::vector<KnownPicture> before_; // by their inodes
    std::vector<KnownPicture> known_;
    std::atomic<int32_t> filesRead_ = 0;
};

} // namespace vardenix
