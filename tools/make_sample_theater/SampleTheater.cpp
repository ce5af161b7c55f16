#include "make_sample_theater/SampleTheater.h"

#include "make_sample_theater/Features.h"
#include "make_sample_theater/Files.h"
#include "make_sample_theater/Layers.h"
#include "make_sample_theater/Levels.h"
#include "make_sample_theater/Names.h"
#include "make_sample_theater/TheaterFiles.h"
#include "pictures/Dxt1Writer.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vardenix::sample {
namespace {

constexpr int HighSide = 128; // pixels; medium is half of it, low half of medium

void MakeFolder(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
        ThrowSystemError(error.value(), "making the folder", folder.string());
}

void WriteDds(const std::filesystem::path& path, const Picture& picture) {
    WriteFile(path,
              Dxt1File(picture.Rgba(), picture.Side(), picture.Side(), {Dxt1Fit::Range}));
}

void WriteFamily(const std::filesystem::path& folder, const std::string& stem,
                 const std::string& ending, Picture picture) {
    for (const char* size : {"H", "M", "L"}) {
        std::string name = size;
        name += stem;
        name += ending;
        WriteDds(folder / name, picture);
        picture = picture.Half();
    }
}

// Paints all tiles and gives their mean colours, by tile number; numbers without a tile
// get that of the sea.
std::vector<Colour> PaintTiles(const Catalogue& catalogue,
                               const std::filesystem::path& folder) {
    std::vector<Colour> means(catalogue.Sets().size() * 16);
    for (std::size_t set = 0; set < catalogue.Sets().size(); ++set) {
        const TileSet& tiles = catalogue.Sets()[set];
        for (std::size_t slot = 0; slot < 16; ++slot) {
            Colour& mean = means[set * 16 + slot];
            if (slot >= tiles.Tiles.size()) {
                mean = means[0];
                continue;
            }
            TilePictures pictures = PaintTile(tiles.Tiles[slot], HighSide);
            mean = pictures.Day.Mean();
            WriteFamily(folder, tiles.Tiles[slot].Stem, ".dds", std::move(pictures.Day));
            WriteFamily(folder, tiles.Tiles[slot].Stem, "N.dds",
                        std::move(pictures.Night));
        }
    }
    return means;
}

int16_t ElevationOf(const World& world, int x, int y) {
    const Grid<Ground>& corners = world.Land.Corners;
    int water = 0;
    int swamp = 0;
    for (int i = 0; i < 4; ++i) {
        const Ground corner = corners.At(x + (i & 1), y + (i >> 1));
        water += IsWater(corner);
        swamp += corner == Ground::Swamp;
    }
    if (water == 4)
        return 0;
    const auto height = static_cast<double>(HeightOfPost(world.Land, x, y));
    if (swamp == 4) // the heart of a swamp lies a little under the sea
        return static_cast<int16_t>(-2 - std::nearbyint(std::fmod(height, 9)));
    return static_cast<int16_t>(std::nearbyint(std::clamp(height, 2.0, 15000.0)));
}

// X1: the direction in which the ground falls, 0 to 255 around; X2: how steeply.
void AddSlope(Post& post, const Landscape& land, int x, int y) {
    const double eastward =
        static_cast<double>(land.Height.At(x + 1, y) - land.Height.At(x, y));
    const double northward =
        static_cast<double>(land.Height.At(x, y + 1) - land.Height.At(x, y));
    const double turn = std::atan2(-northward, -eastward) / (2 * std::numbers::pi) + 1;
    post.X1 = static_cast<uint8_t>(static_cast<int>(turn * 256) & 255);
    post.X2 = static_cast<uint8_t>(std::min(255.0, std::hypot(eastward, northward) / 8));
}

Grid<Post> MakePosts(const World& world, const Grid<int32_t>& tiles,
                     const std::vector<uint8_t>& entries) {
    Grid<Post> posts(world.Posts());
    for (int y = 0; y < world.Posts(); ++y) {
        for (int x = 0; x < world.Posts(); ++x) {
            Post& post = posts.At(x, y);
            post.Tile = tiles.At(x, y);
            post.Elevation = ElevationOf(world, x, y);
            post.Palette = entries[static_cast<std::size_t>(post.Tile)];
            if (!post.IsSea())
                AddSlope(post, world.Land, x, y);
        }
    }
    return posts;
}

void WriteRegistry(const SampleOptions& options) {
    if (options.Registry.empty() || std::filesystem::exists(options.Registry))
        return;
    WriteFile(options.Registry, "[SOFTWARE\\Microprose\\Falcon\\4.0]\r\nbaseDir=" +
                                    std::filesystem::absolute(options.Out).string() +
                                    "\r\ncurTheater=" + TheaterName + "\r\n");
}

std::string Count(std::size_t number, const char* what) {
    return std::to_string(number) + " " + what;
}

} // namespace

void MakeSampleTheater(const SampleOptions& options,
                       const std::function<void(const std::string&)>& say) {
    if (options.Posts < 16 || options.Posts > 2048 || options.Posts % 16 != 0)
        throw RuntimeError(
            ErrorNumber::InvalidCall,
            std::to_string(options.Posts) +
                " posts a side cannot be; it must be a multiple of 16 up to 2048",
            "");
    const std::filesystem::path theater = options.Out / "terrdata" / TheaterFolder;
    if (!options.Force && std::filesystem::exists(options.Out / "theater.lst")) {
        if (!options.Registry.empty()) {
            WriteRegistry(options);
            say("The theater was there already and stays as it is");
            return;
        }
        throw RuntimeError(ErrorNumber::PathFileAccess,
                           options.Out.string() +
                               " holds a theater already; --force writes over it",
                           "");
    }
    const std::filesystem::path pictures = theater / "texture" / "texture";
    for (const auto& folder : {theater / "terrain", pictures, theater / "features"})
        MakeFolder(folder);

    const Catalogue catalogue;
    const std::vector<Colour> means = PaintTiles(catalogue, pictures);
    say("Painted " + std::to_string(catalogue.TileCount()) + " tiles, day and night");
    WriteCatalogue(catalogue, theater / "texture" / "Texture.bin");
    say("Wrote the catalogue of " + Count(catalogue.Sets().size(), "sets"));

    World world(MakeLandscape(options.Posts, options.Seed));
    DigRivers(world, options.Seed);
    FoundTowns(world, options.Seed);
    LayRoads(world, options.Seed);
    BuildAirfields(world);
    const Grid<int32_t> tiles = ChooseTiles(world, catalogue, options.Seed);
    say("Raised the island: " + Count(world.RiverCourses.size(), "rivers, ") +
        Count(world.Towns.size(), "towns, ") + Count(world.RoadCourses.size(), "roads"));

    const Palette palette = MakePalette(means);
    std::vector<uint8_t> entries;
    entries.reserve(means.size());
    for (const Colour& mean : means)
        entries.push_back(NearestEntry(palette, mean));
    WriteMapFile(options.Posts, palette, theater / "terrain" / "theater.map");
    WriteLevels(MakePosts(world, tiles, entries), theater / "terrain");
    say("Wrote the six levels");
    WriteFeatures(world, theater / "features");
    WriteTheaterList(options.Out);
    WriteRegistry(options);
    say("Wrote the features and the theater list");
}

} // namespace vardenix::sample
