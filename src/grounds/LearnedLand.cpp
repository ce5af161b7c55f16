#include "grounds/LearnedLand.h"

#include "catalogue/PictureNames.h"
#include "catalogue/TileCheck.h"
#include "catalogue/TileNumbers.h"
#include "platform/ForEachInParallel.h"

#include <array>
#include <cmath>
#include <utility>

namespace vardenix {

namespace {

// A map that is explained worse than this has no order that could be learned, or one
// that four grounds at the corners do not tell.
constexpr double LeastExplained = 0.75;
constexpr double LeastFitting = 0.75;
// Where nearly everything goes beside everything, nothing has been learned.
constexpr double MostPrior = 0.5;

std::vector<int32_t> NumbersToLearn(const Terrain& terrain, const TileLookup& lookup) {
    const std::vector<int32_t> uses =
        CountTileNumbers(terrain.LxArr.Values(), lookup.size());
    std::vector<int32_t> all;
    std::vector<int32_t> used;
    for (size_t number = 0; number < lookup.size(); ++number) {
        if (lookup[number].Terrain == -1)
            continue;
        all.push_back(static_cast<int32_t>(number));
        if (uses[number] != 0)
            used.push_back(static_cast<int32_t>(number));
    }
    return all.size() > MostLearnedTiles ? used : all;
}

// Where the corner of a post lies, from its south western one.
constexpr std::array<std::pair<int32_t, int32_t>, CornerCount> CornerPlaces{
    {{0, 0}, {1, 0}, {0, 1}, {1, 1}}};

} // namespace

LearnedTiles TilesToLearn(const Terrain& terrain, const Catalogue& catalogue) {
    LearnedTiles tiles;
    tiles.Numbers = NumbersToLearn(terrain, catalogue.Lookup);
    tiles.Indices.assign(catalogue.Lookup.size(), -1);
    tiles.Sides.resize(tiles.Count());
    for (size_t i = 0; i < tiles.Count(); ++i) {
        const int32_t number = tiles.Numbers[i];
        tiles.Indices[static_cast<size_t>(number)] = static_cast<int32_t>(i);
        const TilePlace place = PlaceOfNumber(number);
        tiles.Ways.push_back(WaysOf(TileAt(catalogue.Bin, place.Set, place.Slot)));
    }
    ForEachInParallel(tiles.Count(), [&](size_t i) {
        const auto number = static_cast<size_t>(tiles.Numbers[i]);
        tiles.Sides[i] = SidesOfFile(
            TilePicturePath(catalogue.DDSFolder, catalogue.Lookup[number].DayFile));
    });
    return tiles;
}

LandGrid GridOf(const Terrain& terrain, const LearnedTiles& tiles) {
    LandGrid grid{terrain.MapWidth, terrain.MapWidth, {}};
    grid.Tiles.reserve(terrain.LxArr.Values().size());
    for (const TerrainPost& post : terrain.LxArr.Values())
        grid.Tiles.push_back(tiles.IndexOf(post.TileOffset));
    return grid;
}

LearnedLand::LearnedLand(LearnedTiles tiles, const LandGrid& map)
    : tiles_(std::move(tiles)), countsEastward_(map, tiles_.Count(), Meeting::Eastward),
      countsNorthward_(map, tiles_.Count(), Meeting::Northward),
      eastward_(tiles_, countsEastward_, Meeting::Eastward),
      northward_(tiles_, countsNorthward_, Meeting::Northward),
      grounds_(GroundsFrom(tiles_, countsEastward_, countsNorthward_)) {
    countsEastward_ = {};
    countsNorthward_ = {};
    CountUses(map);
    steps_ = GroundSteps(grounds_, uses_);
    for (size_t tile = 0; tile < tiles_.Count(); ++tile)
        byGrounds_[grounds_.Tiles[tile]].push_back(static_cast<int32_t>(tile));
    Judge(map);
}

void LearnedLand::CountUses(const LandGrid& map) {
    uses_.assign(tiles_.Count(), 0);
    for (const int32_t tile : map.Tiles)
        if (tile >= 0)
            ++uses_[static_cast<size_t>(tile)];
    const double all =
        static_cast<double>(map.Tiles.size()) + 0.5 * static_cast<double>(tiles_.Count());
    for (const int32_t use : uses_)
        costs_.push_back(static_cast<float>(-0.005 * std::log((use + 0.5) / all)));
}

const std::vector<int32_t>& LearnedLand::TilesWith(const GroundsOfTile& grounds) const {
    static const std::vector<int32_t> none;
    const auto at = byGrounds_.find(grounds);
    return at == byGrounds_.end() ? none : at->second;
}

void LearnedLand::Judge(const LandGrid& map) {
    const std::vector<int16_t> voted = VotedGrounds(*this, map);
    int64_t corners = 0;
    int64_t explained = 0;
    int64_t seams = 0;
    int64_t fitting = 0;
    for (int32_t y = 0; y < map.Height; ++y)
        for (int32_t x = 0; x < map.Width; ++x) {
            const int32_t tile = map(x, y);
            if (tile < 0)
                continue;
            for (size_t corner = 0; corner < CornerCount; ++corner) {
                const auto [dx, dy] = CornerPlaces[corner];
                const size_t at =
                    static_cast<size_t>(y + dy) * static_cast<size_t>(map.Width + 1) +
                    static_cast<size_t>(x + dx);
                ++corners;
                explained += voted[at] == GroundsOf(tile)[corner] ? 1 : 0;
            }
            for (const Meeting meeting : {Meeting::Eastward, Meeting::Northward}) {
                const int32_t nextX = meeting == Meeting::Eastward ? x + 1 : x;
                const int32_t nextY = meeting == Meeting::Eastward ? y : y + 1;
                const int32_t next = map.Has(nextX, nextY) ? map(nextX, nextY) : -1;
                if (next < 0)
                    continue;
                ++seams;
                fitting += Fits(meeting).Fit(static_cast<size_t>(tile),
                                             static_cast<size_t>(next))
                               ? 1
                               : 0;
            }
        }
    const auto share = [](int64_t part, int64_t whole) {
        return whole == 0 ? 0 : static_cast<double>(part) / static_cast<double>(whole);
    };
    explainedCorners_ = share(explained, corners);
    fittingSeams_ = share(fitting, seams);
    if (GroundCount() < 2)
        refusal_ = "cannot learn what fits here: the map shows no two grounds apart";
    else if (explainedCorners_ < LeastExplained)
        refusal_ = "cannot learn what fits here: tiles meet without order";
    else if (fittingSeams_ < LeastFitting)
        refusal_ = "cannot learn what fits here: most seams of the map fit no rule";
    else if (std::max(eastward_.Prior(), northward_.Prior()) > MostPrior)
        refusal_ = "cannot learn what fits here: everything stands beside everything";
}

std::vector<int16_t> VotedGrounds(const LearnedLand& land, const LandGrid& posts) {
    const auto width = static_cast<size_t>(posts.Width) + 1;
    std::vector<int16_t> voted(width * (static_cast<size_t>(posts.Height) + 1), -1);
    for (int32_t y = 0; y <= posts.Height; ++y)
        for (int32_t x = 0; x <= posts.Width; ++x) {
            std::array<int16_t, CornerCount> seen{};
            size_t count = 0;
            for (size_t corner = 0; corner < CornerCount; ++corner) {
                // The post that has its `corner` here.
                const auto [dx, dy] = CornerPlaces[corner];
                if (posts.Has(x - dx, y - dy) && posts(x - dx, y - dy) >= 0)
                    seen[count++] = land.GroundsOf(posts(x - dx, y - dy))[corner];
            }
            int best = 0;
            for (size_t i = 0; i < count; ++i) {
                const auto votes = static_cast<int>(std::count(
                    seen.begin(), seen.begin() + static_cast<ptrdiff_t>(count), seen[i]));
                int16_t& ground =
                    voted[static_cast<size_t>(y) * width + static_cast<size_t>(x)];
                if (votes > best || (votes == best && seen[i] < ground)) {
                    best = votes;
                    ground = seen[i];
                }
            }
        }
    return voted;
}

} // namespace vardenix
