#pragma once

#include "pictures/Dxt1Writer.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace vardenix::bench {

// A folder of tiles of 512 pixels, "H0.dds" with the night picture "H0N.dds" and so on,
// gone at the end of the run. A few pictures under many names: what a name costs is
// decoding, whatever it shows.
class TileFolder {
public:
    static constexpr int Count = 512;

    TileFolder() {
        folder_ = std::filesystem::temp_directory_path() / "vardenix bench tiles";
        std::filesystem::create_directories(folder_);
        for (int seed = 0; seed < Pictures; ++seed) {
            const auto bytes = TileFile(seed * 40);
            for (int i = seed; i < Count; i += Pictures)
                for (const char* suffix : {".dds", "N.dds"})
                    std::ofstream(Path(i, suffix), std::ios::binary)
                        .write(reinterpret_cast<const char*>(bytes.data()),
                               static_cast<std::streamsize>(bytes.size()));
        }
    }
    TileFolder(const TileFolder&) = delete;
    TileFolder& operator=(const TileFolder&) = delete;
    ~TileFolder() {
        std::error_code error;
        std::filesystem::remove_all(folder_, error);
    }

    std::string Folder() const { return folder_.string() + "/"; }
    std::string Path(int i, const char* suffix = ".dds") const {
        return Folder() + "H" + std::to_string(i) + suffix;
    }

private:
    static constexpr int Pictures = 8;
    static constexpr int TileSide = 512;

    static std::vector<uint8_t> TileFile(int seed) {
        std::vector<uint8_t> rgba;
        rgba.reserve(size_t{4} * TileSide * TileSide);
        for (int y = 0; y < TileSide; ++y)
            for (int x = 0; x < TileSide; ++x)
                for (const int part : {x * 3 + seed, y * 5, (x ^ y) * 2, 255})
                    rgba.push_back(static_cast<uint8_t>(part));
        return Dxt1File(rgba, TileSide, TileSide, {Dxt1Fit::Range});
    }

    std::filesystem::path folder_;
};

// Made at the first call.
inline const TileFolder& Tiles() {
    static const TileFolder folder;
    return folder;
}

} // namespace vardenix::bench
