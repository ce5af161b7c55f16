#pragma once

#include "grounds/LearnedLand.h"

#include <cstdint>
#include <vector>

namespace vardenix {

// Which posts of a grid are meant, by LandGrid::At.
using PostMarks = std::vector<uint8_t>;

// The grounds at the corners of a grid of posts, as they are and as they are to become.
// Corners go row by row from the south, one more a side than posts.
class CornerPlan {
public:
    // All as most posts round them have it.
    CornerPlan(const LearnedLand& land, const LandGrid& posts);

    // All corners of the marked posts become `ground`; those round them step towards it
    // as far as tiles can lead from one to the other.
    void PaintOutward(const PostMarks& painted, int16_t ground);
    // Corners at the edge of the marked posts stay; those further in become `ground`, or
    // what can lead to it.
    void PaintInward(const PostMarks& painted, int16_t ground);
    // Corners that lie inside the marked posts are found anew: with as few steps too many
    // to those round them as can be, and near to what they are.
    void FindInside(const PostMarks& marked);

    // The corners of a post as planned; an unknown ground is -1.
    GroundsOfTile GroundsAt(int32_t x, int32_t y) const;
    // Whether another ground is planned for one of its corners.
    bool Changes(int32_t x, int32_t y) const;

private:
    enum class Freedom : uint8_t { Kept, Movable };
    struct Violation {
        int32_t Steps = 0;
        int16_t Towards = 0;
    };

    size_t At(int32_t x, int32_t y) const {
        return static_cast<size_t>(y) * static_cast<size_t>(posts_.Width + 1) +
               static_cast<size_t>(x);
    }
    bool IsInside(const PostMarks& marked, int32_t x, int32_t y) const;
    // Of a ground at a corner: how much too near the kept corners are, at worst.
    Violation WorstViolation(int32_t x, int32_t y, int16_t ground) const;
    // Moves one corner, ground by ground, until it is near enough to the kept ones.
    void StepTowardsKept(int32_t x, int32_t y);
    void SpreadUnknown();
    // Moves corners until every post that changes has a tile, or none can be found.
    void Repair();
    bool IsBad(int32_t x, int32_t y) const;
    int BadRound(int32_t x, int32_t y) const;

    const LearnedLand& land_;
    const LandGrid& posts_;
    std::vector<int16_t> old_;
    std::vector<int16_t> new_;
    std::vector<Freedom> freedom_;
    PostMarks filled_; // posts that are to get a tile whether they change or not
};

} // namespace vardenix
