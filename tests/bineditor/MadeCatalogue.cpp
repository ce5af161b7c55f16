#include "bineditor/MadeCatalogue.h"

namespace vardenix::tests {

namespace {

void Join(std::string& text, const std::string& word) {
    text += (text.empty() ? "" : " ") + word;
}

std::string Shown(const std::string& name) {
    const size_t end = name.find_last_not_of(' ');
    return end == std::string::npos ? "-" : name.substr(0, end + 1);
}

} // namespace

Catalogue CatalogueOf(const std::vector<int>& counts, const std::string& ddsFolder) {
    Catalogue catalogue;
    catalogue.DDSFolder = ddsFolder;
    catalogue.BinPath = ddsFolder + "texture.bin";
    catalogue.Lookup.resize(counts.size() * 16);
    for (size_t s = 0; s < counts.size(); ++s) {
        TileSet set;
        set.Terrain = 4;
        set.TileCount = counts[s];
        for (int i = 0; i < counts[s]; ++i) {
            TileRecord tile;
            const std::string name =
                std::to_string(s + 1) + static_cast<char>('A' + i) + ".PCX";
            tile.TileName = name + std::string(20 - name.size(), ' ');
            set.Tiles.push_back(tile);
            if (s * 16 + static_cast<size_t>(i) < catalogue.Lookup.size()) {
                TileInfo& info = catalogue.Lookup[s * 16 + static_cast<size_t>(i)];
                info.Name = name;
                info.Terrain = 4;
                info.UseCount = 0;
            }
        }
        catalogue.Bin.Sets.push_back(set);
        ++catalogue.Bin.NumSets;
        catalogue.Bin.NumTiles += counts[s];
    }
    return catalogue;
}

std::string NamesByLookup(const Catalogue& catalogue, size_t numbers) {
    std::string text;
    for (size_t i = 0; i < (numbers == 0 ? catalogue.Lookup.size() : numbers); ++i) {
        const TileInfo& info = catalogue.Lookup.at(i);
        Join(text, info.Terrain == -1 ? "-" : Shown(info.Name));
    }
    return text;
}

std::string NamesBySets(const TextureBin& bin) {
    std::string text;
    for (size_t set = 1; set < bin.Sets.size(); ++set)
        for (size_t slot = 1; slot <= 16; ++slot)
            Join(text, slot < bin.Sets[set].Tiles.size()
                           ? Shown(bin.Sets[set].Tiles[slot].TileName)
                           : "-");
    return text;
}

std::string Uses(const Catalogue& catalogue, size_t numbers) {
    std::string text;
    for (size_t i = 0; i < numbers; ++i)
        Join(text,
             std::to_string(i) + ":" + std::to_string(catalogue.Lookup.at(i).UseCount));
    return text;
}

Terrain TerrainOf(int width, const std::vector<int32_t>& numbers) {
    Terrain terrain;
    terrain.MapWidth = width;
    terrain.LxArr = PostArray(int64_t{width} * width);
    size_t k = 0;
    for (TerrainPost& post : terrain.LxArr.Values()) {
        post.TileOffset = numbers[k % numbers.size()];
        post.Elevation = static_cast<int16_t>(k % 999);
        post.Palette = static_cast<uint8_t>(k % 251);
        ++k;
    }
    return terrain;
}

std::vector<int32_t> NumbersOfPosts(const Terrain& terrain) {
    std::vector<int32_t> numbers;
    for (const TerrainPost& post : terrain.LxArr.Values())
        numbers.push_back(post.TileOffset);
    return numbers;
}

} // namespace vardenix::tests
