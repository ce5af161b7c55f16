#include "builder/FartileKeys.h"

#include "pictures/Dxt1Writer.h"
#include "pictures/ImageLayer.h"
#include "platform/ForEachInParallel.h"

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

KnownPictures::KnownPictures(const TileFiles& files)
    : files_(files), digests_(files.Count()) {}

bool KnownPictures::Require(const std::vector<int32_t>& tiles,
                            const std::function<bool()>& stop, unsigned threads) {
    std::vector<int32_t> missing;
    for (const int32_t tile : tiles)
        if (!digests_[static_cast<size_t>(tile)])
            missing.push_back(tile);
    std::vector<TileDigests> read(missing.size());
    const bool whole = ForEachInParallel(
        2 * missing.size(),
        [&](size_t item) {
            const auto when = static_cast<DayOrNight>(item % 2);
            read[item / 2][item % 2] = DigestOf(files_.Read(missing[item / 2], when));
        },
        stop, threads);
    if (!whole)
        return false;
    for (size_t i = 0; i < missing.size(); ++i)
        digests_[static_cast<size_t>(missing[i])] = read[i];
    return true;
}

} // namespace vardenix
