#include "support/CatalogueReader.h"

#include "support/TestFolder.h"

#include <algorithm>
#include <cstring>
#include <sstream>
#include <stdexcept>

namespace vardenix::tests {

namespace {

class Bytes {
public:
    explicit Bytes(std::string bytes) : bytes_(std::move(bytes)) {}

    int Int() {
        int value = 0;
        std::memcpy(&value, Take(4).data(), 4);
        return value;
    }
    std::string Record(int floats) {
        std::ostringstream text;
        text << Int();
        for (int i = 0; i < floats; ++i) {
            float value = 0;
            std::memcpy(&value, Take(4).data(), 4);
            text << (i == 0 ? ':' : ',') << value;
        }
        return text.str();
    }
    std::string Take(size_t count) {
        if (at_ + count > bytes_.size())
            throw std::runtime_error("the catalogue is cut");
        at_ += count;
        return bytes_.substr(at_ - count, count);
    }
    bool AtEnd() const { return at_ == bytes_.size(); }

private:
    std::string bytes_;
    size_t at_ = 0;
};

} // namespace

FoundCatalogue ReadCatalogue(const std::string& path) {
    Bytes bytes(Slurp(path));
    FoundCatalogue found;
    const int sets = bytes.Int();
    found.NumTiles = bytes.Int();
    for (int s = 0; s < sets; ++s) {
        FoundSet set;
        const int tiles = bytes.Int();
        set.Terrain = static_cast<unsigned char>(bytes.Take(1)[0]);
        for (int t = 0; t < tiles; ++t) {
            FoundTile tile;
            tile.Name = bytes.Take(20);
            std::replace(tile.Name.begin(), tile.Name.end(), '\0', ' ');
            tile.Name.erase(tile.Name.find_last_not_of(' ') + 1);
            const int areas = bytes.Int();
            const int paths = bytes.Int();
            for (int i = 0; i < areas; ++i)
                tile.Areas.push_back(bytes.Record(3));
            for (int i = 0; i < paths; ++i)
                tile.Paths.push_back(bytes.Record(5));
            set.Tiles.push_back(tile);
        }
        found.Sets.push_back(set);
    }
    if (!bytes.AtEnd())
        throw std::runtime_error("the catalogue goes on behind its sets");
    return found;
}

std::string FoundCatalogue::NameOf(int number) const {
    const auto set = static_cast<size_t>(number / 16);
    const auto slot = static_cast<size_t>(number % 16);
    return set < Sets.size() && slot < Sets[set].Tiles.size() ? Sets[set].Tiles[slot].Name
                                                              : "-";
}

std::string FoundCatalogue::Story() const {
    std::string text;
    for (const FoundSet& set : Sets) {
        text += (text.empty() ? "" : " ") + std::to_string(set.Terrain) + ":";
        for (size_t i = 0; i < set.Tiles.size(); ++i)
            text += (i == 0 ? "" : ",") + set.Tiles[i].Name;
    }
    return text;
}

} // namespace vardenix::tests
