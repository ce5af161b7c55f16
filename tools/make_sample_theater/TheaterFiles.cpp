#include "make_sample_theater/TheaterFiles.h"

#include "make_sample_theater/Files.h"
#include "make_sample_theater/Names.h"
#include "make_sample_theater/TileMarks.h"

#include <algorithm>
#include <cctype>

namespace vardenix::sample {
namespace {

constexpr std::size_t NameBytes = 20;

void AddName(std::vector<uint8_t>& bytes, std::string name) {
    name.resize(NameBytes, '\0');
    bytes.insert(bytes.end(), name.begin(), name.end());
}

void AddTile(std::vector<uint8_t>& bytes, const Tile& tile) {
    AddName(bytes, "H" + tile.Stem + ".PCX");
    const TileMarks marks = MarksOf(tile);
    AddLong(bytes, static_cast<int32_t>(marks.Areas.size()));
    AddLong(bytes, static_cast<int32_t>(marks.Paths.size()));
    for (const AreaMark& area : marks.Areas) {
        AddLong(bytes, area.Type);
        AddFloat(bytes, area.Radius);
        AddFloat(bytes, area.Up);
        AddFloat(bytes, area.Right);
    }
    for (const PathMark& path : marks.Paths) {
        AddLong(bytes, path.Type);
        AddFloat(bytes, path.Width);
        AddFloat(bytes, path.StartUp);
        AddFloat(bytes, path.StartRight);
        AddFloat(bytes, path.EndUp);
        AddFloat(bytes, path.EndRight);
    }
}

} // namespace

void WriteCatalogue(const Catalogue& catalogue, const std::filesystem::path& path) {
    std::vector<uint8_t> bytes;
    AddLong(bytes, static_cast<int32_t>(catalogue.Sets().size()));
    AddLong(bytes, catalogue.TileCount());
    for (const TileSet& set : catalogue.Sets()) {
        AddLong(bytes, static_cast<int32_t>(set.Tiles.size()));
        AddByte(bytes, set.Terrain);
        for (const Tile& tile : set.Tiles)
            AddTile(bytes, tile);
    }
    WriteFile(path, bytes);
}

void WriteMapFile(int posts, const Palette& palette, const std::filesystem::path& path) {
    constexpr int levels = 6;
    constexpr int lastNear = 2;
    constexpr int lastFar = 5;
    constexpr int postsPerMeaValue = 8;
    constexpr float longitude = -41.25F; // open ocean
    constexpr float latitude = 37.5F;
    std::vector<uint8_t> bytes;
    AddFloat(bytes, static_cast<float>(FeetPerPost / 4));
    AddLong(bytes, posts / postsPerMeaValue);
    AddLong(bytes, posts / postsPerMeaValue);
    AddFloat(bytes, static_cast<float>(FeetPerPost * postsPerMeaValue));
    AddLong(bytes, levels);
    AddLong(bytes, lastNear);
    AddLong(bytes, lastFar);
    for (const PaletteEntry& entry : palette) {
        AddByte(bytes, entry.Red);
        AddByte(bytes, entry.Green);
        AddByte(bytes, entry.Blue);
        AddByte(bytes, 0);
    }
    for (int level = 0; level < levels; ++level) {
        const int segments = posts * 4 / (16 << level);
        AddLong(bytes, segments);
        AddLong(bytes, segments);
    }
    AddLong(bytes, 0); // flags
    AddFloat(bytes, longitude);
    AddFloat(bytes, latitude);
    WriteFile(path, bytes);
}

void WriteTheaterList(const std::filesystem::path& install) {
    const std::string name = TheaterName;
    const std::string folder = std::string("terrdata\\") + TheaterFolder;
    WriteFile(install / "theater.lst",
              "# The theaters of this install, one description a line\r\n" + folder +
                  "\\" + TheaterFolder + ".tdf\r\n");
    const std::string text =
        "# Description of the theater " + name + "\r\n" + "NAME " + name + "\r\n" +
        "DESC " + TheaterDescription + "\r\n" + "BITMAP art\\" + TheaterFolder +
        ".tga\r\n" + "CAMPAIGNDIR campaign\\" + TheaterFolder + "\r\n" + "TERRAINDIR " +
        folder + "\r\n" + "ARTDIR art\\" + TheaterFolder + "\r\n" + "MOVIEDIR movies\\" +
        TheaterFolder + "\r\n" + "UISOUNDDIR sounds\\" + TheaterFolder + "\r\n" +
        "OBJECTDIR terrdata\\objects\r\n" + "MISCTEXDIR terrdata\\misctex\r\n" +
        "3DDATADIR terrdata\\objects\r\n" + "SOUNDDIR sounds\r\n" + "MINTACAN 70\r\n";
    WriteFile(install / "terrdata" / TheaterFolder /
                  (std::string(TheaterFolder) + ".tdf"),
              text);
}

} // namespace vardenix::sample
