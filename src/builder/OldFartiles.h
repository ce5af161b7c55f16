#pragma once

#include "builder/FartileIndex.h"
#include "builder/FartileShape.h"
#include "builder/RebuildView.h"
#include "builder/TileFiles.h"
#include "files/ReadableFile.h"

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace vardenix {

// The far tiles of containers that an earlier run has made, by what they were made of.
class OldFartiles {
public:
    // Null unless the index beside the containers can be trusted: it is whole, the
    // containers have the size and the time that it tells and, read once, the checksum.
    // Nothing that is wrong with these files is an error. 32755 when the user stops it.
    static std::unique_ptr<const OldFartiles> Trusted(const std::string& textureFolder,
                                                      const FartileShape& shape,
                                                      RebuildView& view);

    static constexpr int32_t None = -1;
    // The far tile with that key, or None.
    int32_t Find(const Digest& key) const;

    // The bytes of one that was found; used by several threads at once. Error 57 when
    // the container has become shorter, and the system's refusals.
    std::vector<uint8_t> Read(int32_t index, DayOrNight when) const;

    // Read by Trusted; for it alone.
    OldFartiles(const std::string& textureFolder, const FartileShape& shape);

private:
    bool Fit(const FartileIndex& index, const FartileShape& shape,
             RebuildView& view) const;
    void TakeKeys(const std::vector<Digest>& keys);

    size_t linearSize_;
    std::array<ReadableFile, 2> containers_; // open, whoever takes their names
    std::vector<std::pair<Digest, int32_t>> byKey_;
};

} // namespace vardenix
