#include "builder/RebuildWorld.h"

#include "support/PictureMaker.h"

#include <filesystem>
#include <random>

namespace fs = std::filesystem;

namespace vardenix::tests {

RebuildWorld::RebuildWorld(int width) : Level2(MadeLevel::Empty(width)) {
    Terrain.LFilename = PathOf("theater.L2");
    Terrain.OFilename = PathOf("theater.O2");
    Catalogue.BinPath = TexturePathOf("Texture.bin");
    Catalogue.DDSFolder = TexturePathOf("texture/");
    Folder.Write("texture/Texture.bin", "");
    for (int tile = 0; tile < Tiles; ++tile) {
        TileInfo info;
        info.DayFile = "HTILE" + std::to_string(tile) + ".dds";
        info.NightFile = "HTILE" + std::to_string(tile) + "N.dds";
        Catalogue.Lookup.push_back(info);
    }
    MakePictures(32);
    if (width >= 64)
        LandAt(17, 3, 10, 14, 1);
    TakeLevel2();
}

void RebuildWorld::LandAt(int left, int bottom, int wide, int high, unsigned seed) {
    std::mt19937 random(seed);
    const auto below = [&](int bound) {
        return static_cast<int>(random() % static_cast<unsigned>(bound));
    };
    for (int y = bottom; y < bottom + high; ++y)
        for (int x = left; x < left + wide; ++x)
            Level2.At(x, y) = {below(3) == 0 ? 0 : below(Tiles),
                               static_cast<int16_t>(below(4) == 0 ? 0 : below(4000)),
                               static_cast<uint8_t>(random()),
                               static_cast<uint8_t>(random()),
                               static_cast<uint8_t>(random())};
}

void RebuildWorld::TakeLevel2() {
    const PairBytes pair = ScatteredPair(Level2);
    Folder.Write("terrain/theater.L2", pair.L);
    Folder.Write("terrain/theater.O2", pair.O);
    Terrain.MapWidth = Level2.Width;
    Terrain.LxArr = PostArray(int64_t{Level2.Width} * Level2.Width);
    for (size_t i = 0; i < Level2.Posts.size(); ++i) {
        const MadePost& post = Level2.Posts[i];
        Terrain.LxArr.Values()[i] = {post.Tile, post.Elevation, post.Palette, post.X1,
                                     post.X2};
    }
}

int RebuildWorld::WidthOf(int level) const {
    return level >= 2 ? Level2.Width >> (level - 2) : Level2.Width << (2 - level);
}

const MadeLevel& RebuildWorld::OldLevel(int level) {
    auto& old = Old.at(static_cast<size_t>(level));
    old = MadeLevel::Random(WidthOf(level), 100 + static_cast<unsigned>(level));
    // Half of it is sea level, so that blocks may be blank.
    for (size_t i = 0; i < old.Posts.size() / 2; ++i)
        old.Posts[i].Elevation = 0;
    const PairBytes pair = ScatteredPair(old);
    Folder.Write("terrain/theater.L" + std::to_string(level), pair.L);
    Folder.Write("terrain/theater.O" + std::to_string(level), pair.O);
    return old;
}

void RebuildWorld::MakePictures(int side) {
    std::mt19937 random(7);
    for (int tile = 0; tile < Tiles; ++tile)
        for (const bool night : {false, true}) {
            std::string bytes = DdsHeader(static_cast<uint32_t>(side),
                                          static_cast<uint32_t>(side), {"DXT1"});
            for (int i = 0; i < side * side / 2; ++i)
                bytes += static_cast<char>(random());
            Folder.Write(fs::relative(PicturePathOf(tile, night), Folder.Path()).string(),
                         bytes);
        }
}

std::string RebuildWorld::PicturePathOf(int tile, bool night) const {
    const TileInfo& info = Catalogue.Lookup.at(static_cast<size_t>(tile));
    return TexturePathOf("texture/" + (night ? info.NightFile : info.DayFile));
}

std::map<std::string, std::string> RebuildWorld::Files() const {
    std::map<std::string, std::string> files;
    for (const char* folder : {"terrain", "texture"})
        for (const auto& entry : fs::directory_iterator(Folder.File(folder)))
            if (entry.is_regular_file())
                files[entry.path().filename()] = Slurp(entry.path());
    return files;
}

std::map<std::string, std::string> RebuildWorld::PlayedFiles() const {
    auto files = Files();
    files.erase("fartiles.index");
    return files;
}

int RebuildWorld::ErrorOf(const RebuildOptions& options) {
    try {
        Rebuild(options);
    } catch (const RuntimeError& error) {
        Detail = error.Detail();
        return error.NumberValue();
    }
    return 0;
}

RebuildOptions WithFarTiles(int farSize, unsigned threads) {
    RebuildOptions options;
    options.MakeL3 = true;
    options.FarSize = farSize;
    options.Threads = threads;
    return options;
}

} // namespace vardenix::tests
