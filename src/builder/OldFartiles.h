#pragma once

#include "builder/FartileIndex.h"
#include "builder/FartileShape.h"
#include "files/ReadableFile.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vardenix {

// The far tiles of containers that an earlier run has made, by what they were made of.
class OldFartiles {
public:
    // Null unless the index beside the containers can be trusted: it is whole, and the
    // containers are those files that it tells, not changed since. Of them no more than
    // the headers is read. Nothing that is wrong with these files is an error.
    static std::unique_ptr<const OldFartiles> Trusted(const std::string& textureFolder,
                                                      const FartileShape& shape);

    static constexpr int32_t None = -1;
    // The far tile with that key, or None; `likely` is looked at first.
    int32_t Find(const Digest& key, int32_t likely) const;
    int32_t Count() const { return static_cast<int32_t>(index_.Keys.size()); }

    // Open, whoever takes their names; by day and by night.
    const std::array<ReadableFile, 2>& Containers() const { return containers_; }
    // The CRC-32 of a far tile in both.
    const std::array<uint32_t, 2>& SumsOf(int32_t fartile) const {
        return index_.Sums[static_cast<size_t>(fartile)];
    }
    const std::vector<KnownPicture>& Pictures() const { return index_.Pictures; }

    // Made by Trusted; for it alone.
    OldFartiles(const std::string& textureFolder, FartileIndex index);

private:
    bool Fit(const FileMark& index, const FartileShape& shape) const;
    void MakePlaces();

    FartileIndex index_;
    std::array<ReadableFile, 2> containers_;
    std::vector<int32_t>
        places_; // of the keys, each near its own number; None where free
};

} // namespace vardenix
