#include "builder/SmallTiles.h"

#include "pictures/ImageLayer.h"
#include "platform/ForEachInParallel.h"

#include <algorithm>
#include <utility>

namespace vardenix {

namespace {

// Pictures of more different sizes than any catalogue has.
constexpr size_t MostShrinkers = 16;

RgbaPicture RgbaOf(const Bitmap& bitmap) {
    const Raster raster = BitmapToHBitmap(bitmap);
    RgbaPicture picture;
    picture.Side = raster.Width();
    for (int32_t y = 0; y < raster.Height(); ++y)
        for (int32_t x = 0; x < raster.Width(); ++x) {
            const uint32_t pixel = raster.Row(y)[x];
            for (const int shift : {16, 8, 0})
                picture.Pixels.push_back(static_cast<uint8_t>(pixel >> shift));
            picture.Pixels.push_back(255);
        }
    return picture;
}

} // namespace

SmallTiles::SmallTiles(TileFiles& files, const FartileShape& shape, size_t memoryBound)
    : files_(files), shape_(shape), tiles_(files.Count()) {
    size_t bytes = 0; // of a tile's pictures by day and night
    for (int32_t level = FirstFarLevel; level < FirstFarLevel + 3; ++level) {
        const auto side = static_cast<size_t>(shape.PixelsOfTile(level));
        bytes += side * side * (shape.InWholeBlocks(level) ? 1 : 8);
    }
    const auto most = static_cast<size_t>(FartileShape::TilesAlong(5)) *
                      static_cast<size_t>(FartileShape::TilesAlong(5));
    tilesAtOnce_ = std::max(most, memoryBound / std::max<size_t>(bytes, 1));
}

std::vector<int32_t> SmallTiles::MissingOf(const std::vector<int32_t>& tiles) const {
    std::vector<int32_t> missing;
    for (const int32_t tile : tiles)
        if (!tiles_[static_cast<size_t>(tile)])
            missing.push_back(tile);
    return missing;
}

void SmallTiles::MakeRoomFor(const std::vector<int32_t>& tiles) {
    if (kept_ + MissingOf(tiles).size() <= tilesAtOnce_)
        return;
    for (auto& tile : tiles_)
        tile.reset();
    kept_ = 0;
}

bool SmallTiles::Require(const std::vector<int32_t>& tiles,
                         const std::function<bool()>& stop, unsigned threads) {
    const std::vector<int32_t> missing = MissingOf(tiles);
    std::vector<std::unique_ptr<SmallTilePair>> made(missing.size());
    for (auto& pair : made)
        pair = std::make_unique<SmallTilePair>();
    const bool whole = ForEachInParallel(
        2 * missing.size(),
        [&](size_t item) {
            const auto when = static_cast<DayOrNight>(item % 2);
            TileFiles::Read read = files_.ReadFile(missing[item / 2], when);
            made[item / 2]->Digests[item % 2] = read.Digest;
            made[item / 2]->Tiles[item % 2] = Make(std::move(read.File));
        },
        stop, threads);
    if (!whole)
        return false;
    for (size_t i = 0; i < missing.size(); ++i)
        tiles_[static_cast<size_t>(missing[i])] = std::move(made[i]);
    kept_ += missing.size();
    return true;
}

std::array<SmallTile, FarLevels> SmallTiles::Make(PictureFile file) {
    std::vector<RgbaPicture> pictures = Scaled(ImageDecodeEx(std::move(file)));
    std::array<SmallTile, FarLevels> tiles;
    for (size_t i = 0; i < FarLevels; ++i) {
        if (shape_.InWholeBlocks(FirstFarLevel + static_cast<int32_t>(i)))
            tiles[i].Blocks =
                CompressDxt1(pictures[i].Pixels, pictures[i].Side, pictures[i].Side);
        else
            tiles[i].Pixels = std::move(pictures[i]);
    }
    return tiles;
}

// For all far levels: by the quick way where it leads there, else by the image library.
std::vector<RgbaPicture> SmallTiles::Scaled(const Bitmap& bitmap) {
    std::vector<RgbaPicture> pictures(FarLevels);
    if (const auto square = SquareOf(bitmap)) {
        const auto shrinker = ShrinkerFor(square->Side);
        for (RgbaPicture& picture : shrinker->Shrink(*square))
            for (size_t i = 0; i < FarLevels; ++i)
                if (picture.Side ==
                    shape_.PixelsOfTile(FirstFarLevel + static_cast<int32_t>(i)))
                    pictures[i] = picture;
    }
    for (size_t i = 0; i < FarLevels; ++i) {
        const int32_t side = shape_.PixelsOfTile(FirstFarLevel + static_cast<int32_t>(i));
        if (pictures[i].Pixels.empty())
            pictures[i] = RgbaOf(ImageRescaleEx(bitmap, {side, side}));
    }
    return pictures;
}

std::shared_ptr<const SquareShrinker> SmallTiles::ShrinkerFor(int32_t side) {
    const std::lock_guard lock(mutex_);
    auto& shrinker = shrinkers_[side];
    if (!shrinker) {
        std::vector<int32_t> smaller;
        for (size_t i = 0; i < FarLevels; ++i) {
            const int32_t to =
                shape_.PixelsOfTile(FirstFarLevel + static_cast<int32_t>(i));
            if (to < side)
                smaller.push_back(to);
        }
        shrinker = std::make_shared<SquareShrinker>(side, smaller);
    }
    auto result = shrinker;
    if (shrinkers_.size() > MostShrinkers)
        shrinkers_.clear();
    return result;
}

} // namespace vardenix
