#include "builder/DiskRoom.h"

#include "builder/FartileIndex.h"
#include "builder/LevelReader.h"
#include "builder/LevelRewriting.h"
#include "builder/PostsUnder.h"
#include "platform/FileNames.h"

#include <cerrno>
#include <map>
#include <set>
#include <sys/stat.h>
#include <sys/statvfs.h>

namespace vardenix {

namespace {

uint64_t BytesOfPair(const LevelGeometry& geometry, uint64_t blocks) {
    return blocks * BlockBytes + static_cast<uint64_t>(geometry.AllBlocks()) * 4;
}

// Calls visit(y, x, empty, blank) for every post of a far level that lies in a whole
// block.
template <typename Visit>
void ForEachFarPost(const Terrain& terrain, const LevelGeometry& geometry, Visit visit) {
    PostsUnder posts(terrain, geometry);
    const int32_t side = geometry.Blocks * SegmentSide;
    for (int32_t y = 0; y < side; ++y)
        for (int32_t x = 0; x < side; ++x) {
            posts.Look(x, y);
            visit(y, x, posts);
        }
}

// Whether the level 2 posts under fine block (x, y) have a tile.
bool HasTile(const Terrain& terrain, const LevelGeometry& geometry, int32_t y, int32_t x,
             bool countElevation) {
    const int32_t side = SegmentSide / geometry.Finer;
    const auto posts = terrain.LxArr.Values();
    for (int32_t row = y * side; row < (y + 1) * side; ++row)
        for (int32_t column = x * side; column < (x + 1) * side; ++column) {
            const TerrainPost& post =
                posts[static_cast<size_t>(int64_t{row} * terrain.MapWidth + column)];
            if (post.TileOffset != 0 || (countElevation && post.Elevation != 0))
                return true;
        }
    return false;
}

} // namespace

FreeRoom FreeRoomAt(const std::string& folder) {
    const std::string path = RealPath(folder).string();
    struct statvfs room {};
    struct stat place {};
    if (::statvfs(path.c_str(), &room) != 0 || ::stat(path.c_str(), &place) != 0)
        ThrowSystemError(errno, "looking for room in", folder);
    return {place.st_dev, uint64_t{room.f_bavail} * room.f_frsize};
}

void RequireRoom(const std::vector<RoomNeeded>& needs, const AskFreeRoom& ask) {
    struct Total {
        std::string Folder;
        uint64_t Free = 0;
        uint64_t Needed = 0;
    };
    std::map<uint64_t, Total> byDevice;
    for (const RoomNeeded& need : needs) {
        const FreeRoom room = ask(need.Folder);
        Total& total = byDevice.try_emplace(room.Device).first->second;
        total.Folder = total.Folder.empty() ? need.Folder : total.Folder;
        total.Free = room.Bytes;
        total.Needed += need.Bytes;
    }
    for (const auto& [device, total] : byDevice)
        if (total.Needed > total.Free)
            throw RuntimeError(
                ErrorNumber::DiskFull,
                "the new files need " + std::to_string(total.Needed) +
                    " bytes beside the old ones, and " + std::to_string(total.Free) +
                    " are free on the disk of " + total.Folder + "; nothing has changed");
}

uint64_t BytesOfFineLevel(const Terrain& terrain, const std::string& folder,
                          int32_t level) {
    const LevelGeometry geometry = GeometryOf(level, terrain.MapWidth);
    const bool notExists = LevelNotExists(folder, level);
    std::set<int32_t> others; // blocks of the old level that may hold elevations
    std::vector<int32_t> offsets;
    if (!notExists && geometry.Blocks > 0) {
        const LevelReader reader(PairOfLevel(folder, level), geometry.Blocks);
        offsets.assign(reader.Offsets().begin(), reader.Offsets().end());
    }
    uint64_t blocks = 0;
    for (int32_t y = 0; y < geometry.Blocks; ++y)
        for (int32_t x = 0; x < geometry.Blocks; ++x) {
            if (HasTile(terrain, geometry, y, x, notExists))
                ++blocks;
            else
                others.insert(
                    notExists
                        ? 0
                        : offsets[static_cast<size_t>(int64_t{y} * geometry.Blocks + x)]);
        }
    // An offset met twice with an elevation in its block is written twice; files that a
    // save or rebuild has written share blocks only where there is none.
    return BytesOfPair(geometry, blocks + others.size());
}

uint64_t BytesOfFarLevel(const Terrain& terrain, int32_t level) {
    const LevelGeometry geometry = GeometryOf(level, terrain.MapWidth);
    std::set<int64_t> full;
    ForEachFarPost(terrain, geometry, [&](int32_t y, int32_t x, const PostsUnder& posts) {
        if (!posts.Blank())
            full.insert(int64_t{y / SegmentSide} * geometry.Blocks + x / SegmentSide);
    });
    const auto all = static_cast<uint64_t>(geometry.AllBlocks());
    return BytesOfPair(geometry, full.size() + (full.size() < all ? 1 : 0));
}

uint64_t BytesOfWholeLevel(int32_t mapWidth, int32_t level) {
    const LevelGeometry geometry = GeometryOf(level, mapWidth);
    return BytesOfPair(geometry, static_cast<uint64_t>(geometry.AllBlocks()));
}

FartileTotals CountFartiles(const Terrain& terrain) {
    FartileTotals totals;
    for (int32_t level = 3; level <= 5; ++level) {
        const LevelGeometry geometry = GeometryOf(level, terrain.MapWidth);
        bool empty = false;
        uint64_t count = 0;
        ForEachFarPost(terrain, geometry, [&](int32_t, int32_t, const PostsUnder& posts) {
            count += posts.Empty() && empty ? 0 : 1;
            empty = empty || posts.Empty();
        });
        totals.Count += count;
        totals.Serials += count * static_cast<uint64_t>(geometry.Coarser) *
                          static_cast<uint64_t>(geometry.Coarser);
    }
    return totals;
}

uint64_t BytesOfFartiles(uint64_t count, const FartileShape& shape) {
    return 2 * (FartileShape::HeaderBytes + count * shape.LinearSize()) +
           BytesOfIndex(count);
}

} // namespace vardenix
