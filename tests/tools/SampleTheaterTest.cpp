#include "make_sample_theater/SampleTheater.h"

#include "make_sample_theater/World.h"
#include "texts/RuntimeError.h"

#include <FreeImage.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <vector>

namespace vardenix::sample {
namespace {

// Of a grid `width` across, row by row.
std::size_t IndexOf(int x, int y, int width) {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
           static_cast<std::size_t>(x);
}

namespace fs = std::filesystem;
using Bytes = std::vector<char>;

Bytes ReadAll(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

template <class Number>
Number At(const Bytes& bytes, std::size_t offset) {
    Number number{};
    if (offset + sizeof number > bytes.size())
        throw std::out_of_range("the file ends at " + std::to_string(bytes.size()));
    std::memcpy(&number, &bytes[offset], sizeof number);
    return number;
}

fs::path NewFolder(const char* name) {
    return fs::temp_directory_path() /
           ("sample theater " + std::to_string(std::random_device{}()) + " " + name);
}

// One theater of 64 posts a side serves all tests that only read.
class SampleTheater : public testing::Test {
protected:
    static void SetUpTestSuite() {
        install_ = NewFolder("a");
        Make(install_, 7);
    }
    static void TearDownTestSuite() { fs::remove_all(install_); }
    static void Make(const fs::path& out, uint32_t seed, bool force = false) {
        SampleOptions options;
        options.Out = out;
        options.Seed = seed;
        options.Posts = 64;
        options.Force = force;
        MakeSampleTheater(options, [](const std::string&) {});
    }
    static fs::path Theater() { return install_ / "terrdata" / "sorrelund"; }
    static fs::path Terrain(const std::string& name) {
        return Theater() / "terrain" / name;
    }

    static inline fs::path install_;
};

struct Path {
    int32_t Type;
    float Width, StartUp, StartRight, EndUp, EndRight;
};
struct CatalogueTile {
    std::string Name;
    int Terrain = 0;
    std::vector<int32_t> AreaTypes;
    std::vector<Path> Paths;
};

// Reads the catalogue by the format alone; tiles by number.
std::map<int, CatalogueTile> ReadCatalogue(const fs::path& path) {
    const Bytes bytes = ReadAll(path);
    std::map<int, CatalogueTile> tiles;
    std::size_t at = 8;
    for (int set = 0; set < At<int32_t>(bytes, 0); ++set) {
        const auto count = At<int32_t>(bytes, at);
        const int terrain = At<uint8_t>(bytes, at + 4);
        at += 5;
        EXPECT_LE(count, 16);
        for (int slot = 0; slot < count; ++slot) {
            CatalogueTile tile;
            tile.Terrain = terrain;
            tile.Name = std::string(&bytes.at(at), strnlen(&bytes.at(at), 20));
            const auto areas = At<int32_t>(bytes, at + 20);
            const auto paths = At<int32_t>(bytes, at + 24);
            at += 28;
            for (int i = 0; i < areas; ++i, at += 16)
                tile.AreaTypes.push_back(At<int32_t>(bytes, at));
            for (int i = 0; i < paths; ++i, at += 24)
                tile.Paths.push_back(At<Path>(bytes, at));
            tiles[set * 16 + slot] = tile;
        }
    }
    EXPECT_EQ(at, bytes.size());
    EXPECT_EQ(static_cast<int>(tiles.size()), At<int32_t>(bytes, 4));
    return tiles;
}

struct PostRecord {
    int32_t Tile;
    int16_t Elevation;
    uint8_t Palette, X1, X2;
};

// Posts of a level, row by row from the south.
std::vector<PostRecord> ReadLevel(const fs::path& terrain, int level, int width) {
    const Bytes heap = ReadAll(terrain / ("theater.L" + std::to_string(level)));
    const Bytes offsets = ReadAll(terrain / ("theater.O" + std::to_string(level)));
    std::vector<PostRecord> posts(static_cast<std::size_t>(width * width));
    for (int y = 0; y < width; ++y) {
        for (int x = 0; x < width; ++x) {
            const int segment = y / 16 * (width / 16) + x / 16;
            const auto block =
                At<int32_t>(offsets, static_cast<std::size_t>(segment) * 4);
            const auto at =
                static_cast<std::size_t>(block) + IndexOf(x % 16, y % 16, 16) * 9;
            posts[IndexOf(x, y, width)] = {
                At<int32_t>(heap, at), At<int16_t>(heap, at + 4),
                At<uint8_t>(heap, at + 6), At<uint8_t>(heap, at + 7),
                At<uint8_t>(heap, at + 8)};
        }
    }
    return posts;
}

TEST_F(SampleTheater, LaysFilesOutLikeAnInstalledGame) {
    EXPECT_EQ(fs::file_size(Terrain("theater.map")), 1112u);
    const std::map<int, std::size_t> segments = {{0, 16}, {1, 8}, {2, 4},
                                                 {3, 2},  {4, 1}, {5, 0}};
    for (const auto& [level, side] : segments) {
        EXPECT_EQ(fs::file_size(Terrain("theater.O" + std::to_string(level))),
                  side * side * 4);
        const auto heap = fs::file_size(Terrain("theater.L" + std::to_string(level)));
        EXPECT_EQ(heap % 2304, 0u);
        EXPECT_LE(heap, side * side * 2304);
    }
    for (const char* kind : {"Airports", "Cities", "Coasts", "Labels", "Rivers", "Roads"})
        EXPECT_TRUE(fs::exists(Theater() / "features" / (std::string(kind) + ".tdf")))
            << kind;
    EXPECT_FALSE(fs::exists(install_ / "terrdata" / "objects"));

    const Bytes list = ReadAll(install_ / "theater.lst");
    const std::string text(list.begin(), list.end());
    EXPECT_EQ(text.front(), '#');
    EXPECT_NE(text.find("\r\nterrdata\\sorrelund\\sorrelund.tdf\r\n"), std::string::npos);
    const Bytes description = ReadAll(Theater() / "sorrelund.tdf");
    const std::string keys(description.begin(), description.end());
    EXPECT_NE(keys.find("NAME Sorrelund\r\n"), std::string::npos);
    EXPECT_NE(keys.find("TERRAINDIR terrdata\\sorrelund\r\n"), std::string::npos);
}

TEST_F(SampleTheater, TellsTheSizesOfItsLevelsInTheMapFile) {
    const Bytes map = ReadAll(Terrain("theater.map"));
    EXPECT_FLOAT_EQ(At<float>(map, 0), 820.21F);
    EXPECT_EQ(At<int32_t>(map, 4), 8); // one value for 8 posts
    EXPECT_EQ(At<int32_t>(map, 16), 6);
    EXPECT_EQ(At<int32_t>(map, 1052), 16);
    EXPECT_EQ(At<int32_t>(map, 1068), 4);
    EXPECT_EQ(At<int32_t>(map, 1072), 4);
}

TEST_F(SampleTheater, HasEveryTileThatThePostsUse) {
    const auto tiles = ReadCatalogue(Theater() / "texture" / "Texture.bin");
    std::set<int32_t> used;
    for (const PostRecord& post : ReadLevel(Theater() / "terrain", 2, 64))
        used.insert(post.Tile);
    EXPECT_GT(used.size(), 60u);
    for (const int32_t number : used)
        EXPECT_TRUE(tiles.contains(number)) << number;
}

TEST_F(SampleTheater, HasEveryPictureInSixForms) {
    const fs::path folder = Theater() / "texture" / "texture";
    const auto tiles = ReadCatalogue(Theater() / "texture" / "Texture.bin");
    const std::map<std::string, unsigned> sides = {{"H", 128}, {"M", 64}, {"L", 32}};
    std::set<std::string> names;
    for (const auto& [number, tile] : tiles) {
        ASSERT_LE(tile.Name.size(), 20u);
        ASSERT_TRUE(tile.Name.starts_with("H") && tile.Name.ends_with(".PCX"))
            << tile.Name;
        EXPECT_TRUE(names.insert(tile.Name).second) << tile.Name;
        const std::string stem = tile.Name.substr(1, tile.Name.size() - 5);
        for (const auto& [size, side] : sides) {
            for (const char* ending : {".dds", "N.dds"}) {
                const fs::path picture = folder / (size + stem + ending);
                ASSERT_TRUE(fs::exists(picture)) << picture;
                EXPECT_EQ(fs::file_size(picture), 128 + side * side / 2) << picture;
            }
        }
    }
    EXPECT_EQ(static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {})),
              names.size() * 6);
}

TEST_F(SampleTheater, HasSetsOfAllTerrainClasses) {
    std::set<int> classes;
    for (const auto& [number, tile] :
         ReadCatalogue(Theater() / "texture" / "Texture.bin"))
        classes.insert(tile.Terrain);
    EXPECT_EQ(classes, (std::set<int>{1, 3, 4, 5, 6, 7, 8, 9}));
}

TEST_F(SampleTheater, SharesOneBlockForAllOpenSeaOfALevel) {
    const std::map<int, int32_t> seaTiles = {{0, 8192}, {1, 4096}, {2, 0}};
    for (const auto& [level, seaTile] : seaTiles) {
        const int width = 64 << (2 - level);
        const auto posts = ReadLevel(Theater() / "terrain", level, width);
        const Bytes offsets = ReadAll(Terrain("theater.O" + std::to_string(level)));
        std::set<int32_t> seaBlocks;
        std::set<int32_t> landBlocks;
        std::size_t landSegments = 0;
        for (int segment = 0; segment < width * width / 256; ++segment) {
            const int across = width / 16;
            bool sea = true;
            for (int i = 0; i < 256; ++i) {
                const int x = segment % across * 16 + i % 16;
                const int y = segment / across * 16 + i / 16;
                const PostRecord& post = posts[IndexOf(x, y, width)];
                sea = sea && post.Tile == seaTile && post.Elevation == 0;
            }
            const auto block =
                At<int32_t>(offsets, static_cast<std::size_t>(segment) * 4);
            (sea ? seaBlocks : landBlocks).insert(block);
            landSegments += !sea;
        }
        EXPECT_EQ(seaBlocks.size(), level == 2 ? seaBlocks.size() : 1u)
            << "level " << level;
        EXPECT_LE(seaBlocks.size(), 1u) << "level " << level;
        EXPECT_EQ(landBlocks.size(), landSegments) << "level " << level;
        EXPECT_EQ(fs::file_size(Terrain("theater.L" + std::to_string(level))),
                  (seaBlocks.size() + landSegments) * 2304);
    }
}

TEST_F(SampleTheater, ShowsInTheFineLevelsTheTilesOfLevelTwo) {
    const auto coarse = ReadLevel(Theater() / "terrain", 2, 64);
    for (const int level : {0, 1}) {
        const int factor = level == 0 ? 4 : 2;
        const int width = 64 * factor;
        const auto fine = ReadLevel(Theater() / "terrain", level, width);
        for (int y = 0; y < width; ++y) {
            for (int x = 0; x < width; ++x) {
                const PostRecord& from = coarse[IndexOf(x / factor, y / factor, 64)];
                const PostRecord& post = fine[IndexOf(x, y, width)];
                ASSERT_EQ(post.Tile, from.Tile + 2048 * factor);
                ASSERT_EQ(post.Palette, from.Palette);
            }
        }
    }
}

TEST_F(SampleTheater, NumbersFarTilesOnFromLevelToLevel) {
    const auto three = ReadLevel(Theater() / "terrain", 3, 32);
    const auto four = ReadLevel(Theater() / "terrain", 4, 16);
    std::set<int32_t> numbers;
    for (const PostRecord& post : three)
        numbers.insert(post.Tile);
    EXPECT_EQ(*numbers.begin(), 0);
    EXPECT_EQ(*numbers.rbegin(), static_cast<int32_t>(numbers.size()) - 1);
    const auto lowest = std::min_element(
        four.begin(), four.end(), [](auto& a, auto& b) { return a.Tile < b.Tile; });
    EXPECT_EQ(lowest->Tile, static_cast<int32_t>(numbers.size()));
}

// Follows each river and road out of its post: the neighbour's tile has a path of the
// same kind that begins or ends in the middle of the common edge.
TEST_F(SampleTheater, RunsRiversAndRoadsOnFromPostToPost) {
    constexpr float side = 3280.84F;
    const auto tiles = ReadCatalogue(Theater() / "texture" / "Texture.bin");
    const auto posts = ReadLevel(Theater() / "terrain", 2, 64);
    const auto near = [](float a, float b) { return std::abs(a - b) < 1; };
    const auto reaches = [&](int x, int y, int32_t type, float up, float right) {
        const auto& paths = tiles.at(posts[IndexOf(x, y, 64)].Tile).Paths;
        return std::any_of(paths.begin(), paths.end(), [&](const Path& path) {
            return path.Type == type &&
                   ((near(path.StartUp, up) && near(path.StartRight, right)) ||
                    (near(path.EndUp, up) && near(path.EndRight, right)));
        });
    };
    int rivers = 0;
    int roads = 0;
    for (int y = 0; y < 63; ++y) {
        for (int x = 0; x < 63; ++x) {
            for (const int32_t type : {2, 10, 11}) {
                const bool east = reaches(x, y, type, side / 2, side);
                EXPECT_EQ(east, reaches(x + 1, y, type, side / 2, 0)) << x << " " << y;
                const bool north = reaches(x, y, type, side, side / 2);
                EXPECT_EQ(north, reaches(x, y + 1, type, 0, side / 2)) << x << " " << y;
                rivers += type == 2 && (east || north);
                roads += type == 10 && (east || north);
            }
        }
    }
    EXPECT_GT(rivers, 8);
    EXPECT_GT(roads, 8);
}

TEST_F(SampleTheater, IsDarkAtNight) {
    const fs::path folder = Theater() / "texture" / "texture";
    const auto brightest = [&](const char* name) {
        FIBITMAP* bitmap = FreeImage_Load(FIF_DDS, (folder / name).c_str(), 0);
        int most = -1;
        for (unsigned y = 0; bitmap != nullptr && y < FreeImage_GetHeight(bitmap); ++y) {
            for (unsigned x = 0; x < FreeImage_GetWidth(bitmap); ++x) {
                RGBQUAD quad;
                FreeImage_GetPixelColor(bitmap, x, y, &quad);
                most = std::max(
                    {most, int{quad.rgbRed}, int{quad.rgbGreen}, int{quad.rgbBlue}});
            }
        }
        FreeImage_Unload(bitmap);
        return most;
    };
    EXPECT_GE(brightest("HWATR001N.dds"), 0);
    EXPECT_LT(brightest("HWATR001N.dds"), 20);
    EXPECT_GT(brightest("HTOWN001N.dds"), 100);
}

TEST_F(SampleTheater, GivesTheSameBytesForTheSameSeed) {
    const fs::path again = NewFolder("b");
    Make(again, 7);
    int files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(install_)) {
        if (!entry.is_regular_file())
            continue;
        ++files;
        const fs::path other = again / fs::relative(entry.path(), install_);
        ASSERT_EQ(ReadAll(entry.path()), ReadAll(other)) << other;
    }
    EXPECT_GT(files, 1000);
    Make(again, 8, true);
    EXPECT_NE(ReadAll(Terrain("theater.L2")),
              ReadAll(again / "terrdata" / "sorrelund" / "terrain" / "theater.L2"));
    fs::remove_all(again);
}

TEST_F(SampleTheater, NeverOverwritesATheaterUnasked) {
    const Bytes before = ReadAll(Terrain("theater.L2"));
    EXPECT_THROW(Make(install_, 8), RuntimeError);
    EXPECT_EQ(ReadAll(Terrain("theater.L2")), before);
}

TEST(SampleLand, FindsATileForEveryPostWhateverTheSeed) {
    const Catalogue catalogue;
    for (uint32_t seed = 20; seed < 28; ++seed) {
        World world(MakeLandscape(128, seed));
        DigRivers(world, seed);
        FoundTowns(world, seed);
        LayRoads(world, seed);
        BuildAirfields(world);
        EXPECT_NO_THROW(ChooseTiles(world, catalogue, seed)) << seed;
    }
}

TEST(SampleLand, HasTownsWithRoadsAndBridgesOverItsRivers) {
    World world(MakeLandscape(256, 3));
    DigRivers(world, 3);
    FoundTowns(world, 3);
    LayRoads(world, 3);
    BuildAirfields(world);
    EXPECT_GE(world.Towns.size(), 5u);
    EXPECT_GE(world.RiverCourses.size(), 5u);
    EXPECT_GE(world.RoadCourses.size(), 5u);
    EXPECT_GE(world.RailCourses.size(), 1u);
    EXPECT_GE(world.Airfields.size(), 1u);
    int bridges = 0;
    for (int y = 0; y < 256; ++y) {
        for (int x = 0; x < 256; ++x)
            bridges += world.Rivers.At(x, y) && world.Roads.At(x, y);
    }
    EXPECT_GE(bridges, 1);
}

int ExitCodeOf(const std::string& arguments) {
    const std::string command =
        std::string("'") + SAMPLE_PROGRAM + "' " + arguments + " >/dev/null 2>&1";
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(SampleProgram, EndsWithACodeThatTellsArgumentsFromDisk) {
    const fs::path out = NewFolder("d");
    const std::string quoted = "'" + out.string() + "'";
    EXPECT_EQ(ExitCodeOf(""), 2);
    EXPECT_EQ(ExitCodeOf(quoted + " --posts 100"), 2);
    EXPECT_EQ(ExitCodeOf(quoted + " --posts many"), 2);
    EXPECT_EQ(ExitCodeOf(quoted + " --posts 4096"), 2);
    EXPECT_EQ(ExitCodeOf("/proc/nowhere"), 3);
    EXPECT_FALSE(fs::exists(out));
}

TEST(SampleProgram, WritesTheRegistryOnlyWhereThereIsNone) {
    const fs::path out = NewFolder("e");
    const fs::path registry = out / "reg istry.ini";
    const std::string arguments =
        "'" + out.string() + "' --posts 16 --registry '" + registry.string() + "'";
    ASSERT_EQ(ExitCodeOf(arguments), 0);
    const Bytes bytes = ReadAll(registry);
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()),
              "[SOFTWARE\\Microprose\\Falcon\\4.0]\r\nbaseDir=" + out.string() +
                  "\r\ncurTheater=Sorrelund\r\n");
    std::ofstream(registry) << "mine";
    ASSERT_EQ(ExitCodeOf(arguments + " --force"), 0);
    EXPECT_EQ(ReadAll(registry).size(), 4u);
    fs::remove_all(out);
}

} // namespace
} // namespace vardenix::sample
