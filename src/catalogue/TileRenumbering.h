#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vardenix {

// Where an edit of the catalogue leaves each tile number, so that whatever holds numbers
// (the posts of level 2, their undo steps) keeps its pictures. Sets count from 1, slots
// from 0; set s owns the numbers (s - 1) * 16 to (s - 1) * 16 + 15, whether it has tiles
// there or not.
class TileRenumbering {
public:
    // Everything stays.
    TileRenumbering() = default;

    // A set comes in before the one that begins at `firstNumber`: that number and all
    // above it go up by 16. `numbers` is how many the catalogue has beforehand. A number
    // that would leave 32 bits stays.
    static TileRenumbering SetInserted(int32_t firstNumber, int32_t numbers);
    // The set that begins at `firstNumber` goes: its 16 numbers become 0, those above go
    // down by 16.
    static TileRenumbering SetDeleted(int32_t firstNumber, int32_t numbers);
    // A tile goes: its number becomes 0, those above it go down by 1 as far as its own
    // set reaches.
    static TileRenumbering TileDeleted(int32_t number);
    // Set s is afterwards at newPlaces[s]; element 0 is not used. Numbers above the
    // catalogue stay.
    static TileRenumbering SetsMoved(const std::vector<int32_t>& newPlaces);

    int32_t Of(int32_t number) const {
        if (number < 0)
            return number;
        if (static_cast<size_t>(number) < to_.size())
            return to_[static_cast<size_t>(number)];
        return number > highest_ ? number : number + beyond_;
    }

    // Whether every number stays what it is.
    bool MovesNone() const;

    // Whether the edit has taken that number's tile out of the catalogue.
    bool TakesAway(int32_t number) const {
        return number >= firstTaken_ && number < firstTaken_ + taken_;
    }

private:
    std::vector<int32_t> to_;     // by number
    int32_t beyond_ = 0;          // added to the numbers above these
    int32_t highest_ = INT32_MAX; // that it can be added to
    int32_t firstTaken_ = 0;
    int32_t taken_ = 0;
};

// Told of every pass over level 2, after it; app/ has the map's undo steps follow.
class RenumberingFollower {
public:
    RenumberingFollower() = default;
    RenumberingFollower(const RenumberingFollower&) = delete;
    RenumberingFollower& operator=(const RenumberingFollower&) = delete;
    virtual ~RenumberingFollower() = default;

    virtual void TilesRenumbered(const TileRenumbering& numbers) = 0;
};

} // namespace vardenix
