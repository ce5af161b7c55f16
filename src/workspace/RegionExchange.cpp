#include "workspace/RegionExchange.h"

#include "companion/Vardenix.h"
#include "files/BinaryReader.h"
#include "files/FileNames.h"
#include "files/StagedFile.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <cstring>

namespace vardenix {

namespace {

constexpr const char* Filter = "Export Files | *.exp";
constexpr const char* NothingOnTerrain =
    "The region lies outside the terrain. Nothing was changed.";
constexpr const char* PastTheEdge = "The region reaches past the edge of the terrain. "
                                    "Import only the part that fits?";

constexpr uint64_t HeaderBytes = 2 * sizeof(int32_t);

std::string PostText(int32_t x, int32_t y) {
    return std::to_string(x) + ", " + std::to_string(y);
}

void RequireOnTerrain(const PostBox& ordered, int32_t mapWidth) {
    if (!LiesOnGrid(ordered, mapWidth))
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange,
                           "posts " + PostText(ordered.X1, ordered.Y1) + " to " +
                               PostText(ordered.X2, ordered.Y2) + " of 0 to " +
                               std::to_string(mapWidth - 1));
}

[[noreturn]] void RefuseSize(const std::string& path, const std::string& expected,
                             uint64_t size) {
    throw RuntimeError(ErrorNumber::InputPastEnd, path + ": expected " + expected +
                                                      ", found a file of " +
                                                      std::to_string(size) + " bytes");
}

void RequireTileNumbers(const TileRegion& region, const std::string& path) {
    const auto negative = std::ranges::find_if(region.TileNumbers,
                                               [](int32_t number) { return number < 0; });
    if (negative == region.TileNumbers.end())
        return;
    const auto index = negative - region.TileNumbers.begin();
    throw RuntimeError(
        ErrorNumber::SubscriptOutOfRange,
        path + ": the entry at offset " +
            std::to_string(HeaderBytes + static_cast<uint64_t>(index) * sizeof(int32_t)) +
            " is the tile number " + std::to_string(*negative) + "; expected 0 or more");
}

// The posts of row `y`, from 0, between two columns, both included.
template <typename AnyTerrain>
auto PostsOf(AnyTerrain& terrain, int32_t y, int32_t left, int32_t right) {
    const auto first = static_cast<size_t>(y) * static_cast<size_t>(terrain.MapWidth) +
                       static_cast<size_t>(left);
    return terrain.LxArr.Values().subspan(first, static_cast<size_t>(right - left) + 1);
}

} // namespace

void WriteRegion(const Terrain& terrain, const PostBox& box, const std::string& path,
                 Progress& progress) {
    const auto [left, bottom, right, top] = Ordered(box);
    RequireOnTerrain({left, bottom, right, top}, terrain.MapWidth);
    const int32_t height = top - bottom + 1;
    const ShownBar bar(progress);
    StagedFile file(path);
    file.WriteInt32(right - left + 1);
    file.WriteInt32(height);
    for (int32_t y = bottom; y <= top; ++y) {
        for (const TerrainPost& post : PostsOf(terrain, y, left, right))
            file.WriteInt32(post.TileOffset);
        progress.SetBar(Percent(int64_t{y} + bottom + 1, height));
        progress.LetEventsThrough();
    }
    file.Commit();
}

TileRegion ParseRegion(std::span<const std::byte> bytes, const std::string& path) {
    BinaryReader reader(bytes, path);
    TileRegion region;
    region.RegionWidth = reader.Int32();
    region.RegionHeight = reader.Int32();
    const std::string sides = std::to_string(region.RegionWidth) + " by " +
                              std::to_string(region.RegionHeight) + " tile numbers";
    if (region.RegionWidth < 1 || region.RegionHeight < 1)
        RefuseSize(path, "sides of at least 1, not " + sides, bytes.size());
    const uint64_t entries = static_cast<uint64_t>(region.RegionWidth) *
                             static_cast<uint64_t>(region.RegionHeight);
    if (entries != reader.Remaining() / sizeof(int32_t) ||
        reader.Remaining() % sizeof(int32_t) != 0)
        RefuseSize(path,
                   sides + ", " +
                       std::to_string(HeaderBytes + entries * sizeof(int32_t)) + " bytes",
                   bytes.size());
    region.TileNumbers.resize(entries);
    for (int32_t& number : region.TileNumbers)
        number = reader.Int32();
    RequireTileNumbers(region, path);
    return region;
}

TileRegion ReadRegion(const std::string& path) {
    constexpr uint64_t most =
        HeaderBytes + uint64_t{MaxGridWidth} * MaxGridWidth * sizeof(int32_t);
    const uint64_t size = FileLength(path);
    if (size > most)
        RefuseSize(path, "at most " + std::to_string(most) + " bytes", size);
    const FileBytes file = ReadWholeFile(path, most);
    return ParseRegion(file.Span(), path);
}

std::vector<std::byte> BytesOf(const TileRegion& region) {
    std::vector<std::byte> bytes(HeaderBytes +
                                 region.TileNumbers.size() * sizeof(int32_t));
    std::memcpy(bytes.data(), &region.RegionWidth, sizeof(int32_t));
    std::memcpy(&bytes[sizeof(int32_t)], &region.RegionHeight, sizeof(int32_t));
    if (!region.TileNumbers.empty())
        std::memcpy(&bytes[HeaderBytes], region.TileNumbers.data(),
                    region.TileNumbers.size() * sizeof(int32_t));
    return bytes;
}

TileRegion RegionOf(const PostClip& clip) {
    TileRegion region{clip.Width, clip.Height, {}};
    region.TileNumbers.reserve(clip.Posts.size());
    for (const TerrainPost& post : clip.Posts)
        region.TileNumbers.push_back(int32_t{post.TileOffset});
    return region;
}

PostClip ClipOf(const TileRegion& region) {
    PostClip clip{region.RegionWidth, region.RegionHeight, {}, {}};
    clip.Posts.resize(region.TileNumbers.size());
    clip.Selected.assign(region.TileNumbers.size(), 1);
    for (size_t i = 0; i < clip.Posts.size(); ++i)
        clip.Posts[i].TileOffset = region.TileNumbers[i];
    return clip;
}

bool RegionFits(const TileRegion& region, int32_t x, int32_t y, int32_t mapWidth) {
    return x >= 0 && y >= 0 && int64_t{x} + region.RegionWidth <= mapWidth &&
           int64_t{y} + region.RegionHeight <= mapWidth;
}

int64_t StampRegion(Terrain& terrain, const TileRegion& region, int32_t x, int32_t y,
                    Progress& progress, const Selection* bounds) {
    const ShownBar bar(progress);
    // The columns of the region that lie on the terrain.
    const int32_t first = std::max(0, -x);
    const auto last = static_cast<int32_t>(
        std::min<int64_t>(region.RegionWidth, int64_t{terrain.MapWidth} - x) - 1);
    int64_t count = 0;
    for (int32_t r = 0; r < region.RegionHeight; ++r) {
        const int64_t row = int64_t{y} + r;
        if (row >= 0 && row < terrain.MapWidth && first <= last) {
            const int32_t* number =
                &region.TileNumbers[static_cast<size_t>(r) *
                                        static_cast<size_t>(region.RegionWidth) +
                                    static_cast<size_t>(first)];
            const auto posts =
                PostsOf(terrain, static_cast<int32_t>(row), x + first, x + last);
            PostPlace place{x + first, static_cast<int32_t>(row)};
            for (TerrainPost& post : posts) {
                if (bounds == nullptr || bounds->Has(place)) {
                    post.TileOffset = *number;
                    ++count;
                }
                ++number;
                ++place.X;
            }
        }
        progress.SetBar(Percent(r + 1, region.RegionHeight));
        progress.LetEventsThrough();
    }
    return count;
}

std::optional<std::string> ExportTiles(const Terrain& terrain, const PostBox& box,
                                       Dialogs& dialogs, Progress& progress) {
    const PostBox kept = CutToGrid(box, terrain.MapWidth);
    if (kept.X1 > kept.X2 || kept.Y1 > kept.Y2) {
        dialogs.Notice(NothingOnTerrain, {}, BoxIcon::Information);
        return std::nullopt;
    }
    std::string path;
    try {
        path =
            dialogs.SaveFile({.Title = "Save Export file as...", .Filter = Filter}).Path;
    } catch (const RuntimeError& error) {
        if (error.Number() == ErrorNumber::Cancelled)
            return std::nullopt;
        throw;
    }
    WriteRegion(terrain, kept, path, progress);
    return path;
}

std::optional<TileRegion> AskForRegion(Dialogs& dialogs) {
    try {
        return ReadRegion(
            dialogs.OpenFile({.Title = "Open file to import...", .Filter = Filter}).Path);
    } catch (const RuntimeError& error) {
        if (error.Number() != ErrorNumber::Cancelled)
            dialogs.Notice(TrapText(error), "Error...", BoxIcon::Critical);
        return std::nullopt;
    }
}

std::optional<TileRegion> RegionOfFile(const std::string& path, Dialogs& dialogs) {
    try {
        return ReadRegion(path);
    } catch (const RuntimeError& error) {
        dialogs.Notice(TrapText(error), "Error...", BoxIcon::Critical);
        return std::nullopt;
    }
}

bool ImportTiles(Terrain& terrain, const TileRegion& region, int32_t x, int32_t y,
                 Dialogs& dialogs, Progress& progress, const Selection* bounds) {
    const auto beyond = [&](int32_t from, int32_t length) {
        return from >= terrain.MapWidth || int64_t{from} + length <= 0;
    };
    if (beyond(x, region.RegionWidth) || beyond(y, region.RegionHeight)) {
        dialogs.Notice(NothingOnTerrain, {}, BoxIcon::Information);
        return false;
    }
    if (!RegionFits(region, x, y, terrain.MapWidth) &&
        dialogs.MessageBox(PastTheEdge, {}, BoxIcon::Question, BoxButtons::YesNo) !=
            BoxAnswer::Yes)
        return false;
    StampRegion(terrain, region, x, y, progress, bounds);
    return true;
}

} // namespace vardenix
