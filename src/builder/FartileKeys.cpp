#include "builder/FartileKeys.h"

#include "pictures/Dxt1Writer.h"
#include "pictures/ImageLayer.h"

#include <algorithm>
#include <string>

namespace vardenix {

namespace {

// Raised whenever the same pictures come to make other far tiles.
constexpr const char* KeysVersion = "far tiles 1";

constexpr int32_t ProbeSide = 16;

// The compressor does not tell its version; what it makes of some pixels does.
std::vector<uint8_t> CompressedProbe() {
    std::vector<uint8_t> pixels;
    uint32_t noise = 1;
    for (int i = 0; i < ProbeSide * ProbeSide * 4; ++i) {
        noise = noise * 1664525 + 1013904223;
        pixels.push_back(static_cast<uint8_t>(noise >> 24));
    }
    return CompressDxt1(pixels, ProbeSide, ProbeSide);
}

} // namespace

FartileKeys::FartileKeys(const FartileShape& shape) : making_() {
    const std::string words = std::string(KeysVersion) + "\n" + ImageLibraryVersion() +
                              "\n" + std::to_string(shape.FarSize());
    const std::vector<uint8_t> probe = CompressedProbe();
    making_ =
        DigestOf({std::as_bytes(std::span(words)), std::as_bytes(std::span(probe))});
}

Digest FartileKeys::KeyOf(int32_t level, std::span<const TileDigests> pictures) const {
    return DigestOf({std::as_bytes(std::span(making_)),
                     std::as_bytes(std::span(&level, 1)), std::as_bytes(pictures)});
}

PictureDigests::PictureDigests(TileFiles& files, SmallTiles& tiles)
    : files_(files), tiles_(tiles), digests_(files.Count()) {}

bool PictureDigests::Recall(int32_t tile) {
    const auto day = files_.Recall(tile, DayOrNight::Day);
    const auto night = files_.Recall(tile, DayOrNight::Night);
    if (!day || !night)
        return false;
    digests_[static_cast<size_t>(tile)] = {*day, *night};
    return true;
}

bool PictureDigests::Require(const std::vector<int32_t>& tiles,
                             const std::function<bool()>& stop, unsigned threads) {
    std::vector<int32_t> unknown;
    for (const int32_t tile : tiles)
        if (!digests_[static_cast<size_t>(tile)] && !Recall(tile))
            unknown.push_back(tile);
    for (size_t first = 0; first < unknown.size();) {
        const size_t last = std::min(unknown.size(), first + tiles_.TilesAtOnce());
        const std::vector<int32_t> some(
            unknown.begin() + static_cast<std::ptrdiff_t>(first),
            unknown.begin() + static_cast<std::ptrdiff_t>(last));
        tiles_.MakeRoomFor(some);
        if (!tiles_.Require(some, stop, threads))
            return false;
        for (const int32_t tile : some)
            digests_[static_cast<size_t>(tile)] = tiles_.Of(tile).Digests;
        first = last;
    }
    return true;
}

} // namespace vardenix
