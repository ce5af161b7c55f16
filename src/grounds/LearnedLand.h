#pragma once

#include "catalogue/TextureBin.h"
#include "grounds/CornerGrounds.h"
#include "grounds/TileFits.h"
#include "levels/Terrain.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace vardenix {

// With more tiles than this only those that the map uses are learned.
constexpr size_t MostLearnedTiles = 2000;

// The tiles of a catalogue that are worth learning: sides of their day pictures, which
// are read here, and ways.
LearnedTiles TilesToLearn(const Terrain& terrain, const Catalogue& catalogue);

// Level 2, each tile by its index.
LandGrid GridOf(const Terrain& terrain, const LearnedTiles& tiles);

// What fits with what, learned from a map and the pictures of its tiles. The same input
// gives the same, to the bit.
class LearnedLand {
public:
    LearnedLand(LearnedTiles tiles, const LandGrid& map);

    const LearnedTiles& Tiles() const { return tiles_; }
    const MeetingFits& Fits(Meeting meeting) const {
        return meeting == Meeting::Eastward ? eastward_ : northward_;
    }
    // By tile index.
    const GroundsOfTile& GroundsOf(int32_t tile) const {
        return grounds_.Tiles[static_cast<size_t>(tile)];
    }
    int16_t GroundCount() const { return grounds_.Count; }
    const GroundSteps& Steps() const { return steps_; }
    // Posts of the map that have a tile.
    int32_t UseOf(int32_t tile) const { return uses_[static_cast<size_t>(tile)]; }
    // Little, less for tiles that are used often.
    float CostOf(int32_t tile) const { return costs_[static_cast<size_t>(tile)]; }
    // The tiles with these grounds at their corners, rising; none is an empty list.
    const std::vector<int32_t>& TilesWith(const GroundsOfTile& grounds) const;

    // The share of the map's corners where a tile's ground is that of most of the posts
    // round the corner; of its seams, those that fit.
    double ExplainedCorners() const { return explainedCorners_; }
    double FittingSeams() const { return fittingSeams_; }
    // Why nothing can be painted; empty when it can.
    const std::string& Refusal() const { return refusal_; }

private:
    void CountUses(const LandGrid& map);
    void Judge(const LandGrid& map);

    LearnedTiles tiles_;
    MeetingCounts countsEastward_;
    MeetingCounts countsNorthward_;
    MeetingFits eastward_;
    MeetingFits northward_;
    CornerGrounds grounds_;
    GroundSteps steps_;
    std::vector<int32_t> uses_;
    std::vector<float> costs_;
    std::map<GroundsOfTile, std::vector<int32_t>> byGrounds_;
    double explainedCorners_ = 0;
    double fittingSeams_ = 0;
    std::string refusal_;
};

// The ground at each corner of the posts of a grid, one more a side than posts, row by
// row from the south: that which most of the posts round it have there, the lowest of
// several; -1 where none of them is known.
std::vector<int16_t> VotedGrounds(const LearnedLand& land, const LandGrid& posts);

} // namespace vardenix
