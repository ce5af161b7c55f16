#include "catalogue/TileRenumbering.h"

#include "catalogue/TextureBin.h"

#include <limits>
#include <numeric>

namespace vardenix {

namespace {

std::vector<int32_t> Unchanged(int32_t numbers) {
    std::vector<int32_t> to(static_cast<size_t>(numbers));
    std::iota(to.begin(), to.end(), 0);
    return to;
}

} // namespace

TileRenumbering TileRenumbering::SetInserted(int32_t firstNumber, int32_t numbers) {
    TileRenumbering result;
    result.to_ = Unchanged(numbers);
    for (auto number = static_cast<size_t>(firstNumber); number < result.to_.size();
         ++number)
        result.to_[number] += TilesPerSet;
    result.beyond_ = TilesPerSet;
    result.highest_ = std::numeric_limits<int32_t>::max() - TilesPerSet;
    return result;
}

TileRenumbering TileRenumbering::SetDeleted(int32_t firstNumber, int32_t numbers) {
    TileRenumbering result;
    result.to_ = Unchanged(numbers);
    const auto first = static_cast<size_t>(firstNumber);
    for (size_t number = first; number < result.to_.size(); ++number)
        result.to_[number] =
            number < first + TilesPerSet ? 0 : result.to_[number] - TilesPerSet;
    result.beyond_ = -TilesPerSet;
    result.firstTaken_ = firstNumber;
    result.taken_ = TilesPerSet;
    return result;
}

TileRenumbering TileRenumbering::TileDeleted(int32_t number) {
    TileRenumbering result;
    const int32_t end = number - number % TilesPerSet + TilesPerSet;
    result.to_ = Unchanged(end);
    result.to_[static_cast<size_t>(number)] = 0;
    for (int32_t above = number + 1; above < end; ++above)
        result.to_[static_cast<size_t>(above)] = above - 1;
    result.firstTaken_ = number;
    result.taken_ = 1;
    return result;
}

TileRenumbering TileRenumbering::SetsMoved(const std::vector<int32_t>& newPlaces) {
    TileRenumbering result;
    if (newPlaces.empty())
        return result;
    result.to_.reserve((newPlaces.size() - 1) * TilesPerSet);
    for (size_t set = 1; set < newPlaces.size(); ++set)
        for (int32_t slot = 0; slot < TilesPerSet; ++slot)
            result.to_.push_back((newPlaces[set] - 1) * TilesPerSet + slot);
    return result;
}

bool TileRenumbering::MovesNone() const {
    for (size_t number = 0; number < to_.size(); ++number)
        if (to_[number] != static_cast<int32_t>(number))
            return false;
    return beyond_ == 0;
}

} // namespace vardenix
