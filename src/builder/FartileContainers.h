#pragma once

#include "builder/FartileIndex.h"
#include "builder/FartileShape.h"
#include "builder/RewrittenFile.h"
#include "files/Digest.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vardenix {

// Both containers and their index while they are written.
class FartileContainers {
public:
    // The files are borrowed. The headers are written at once.
    FartileContainers(RebuildFiles& files, const std::string& textureFolder,
                      const FartileShape& shape);

    // The next far tile, and what it is known by.
    void Add(std::span<const uint8_t> day, std::span<const uint8_t> night,
             const Digest& key);
    // All far tiles are there; the files count among those made.
    void Finish();

private:
    RebuildFiles& files_;
    std::string pathOfIndex_;
    RewrittenFile day_;
    RewrittenFile night_;
    std::vector<Digest> keys_;
};

} // namespace vardenix
