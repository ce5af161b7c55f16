#include "support/TheaterMaker.h"

#include "support/TestFolder.h"

#include <bit>
#include <cmath>
#include <random>

namespace vardenix::tests {

namespace {

size_t Size(int value) { return static_cast<size_t>(value); }

int IntAt(const std::string& bytes, size_t at) {
    unsigned value = 0;
    for (size_t i = 0; i < 4; ++i)
        value |= static_cast<unsigned>(static_cast<unsigned char>(bytes.at(at + i)))
                 << (8 * i);
    return static_cast<int>(value);
}

MadePost PostAt(const std::string& bytes, size_t at) {
    const auto byte = [&](size_t i) { return static_cast<uint8_t>(bytes.at(at + i)); };
    return {IntAt(bytes, at), static_cast<int16_t>(byte(4) | byte(5) << 8), byte(6),
            byte(7), byte(8)};
}

std::string FloatBytes(float value) { return Int32Bytes(std::bit_cast<int>(value)); }

} // namespace

bool operator==(const MadePost& a, const MadePost& b) {
    return PostBytes(a) == PostBytes(b);
}

MadeLevel MadeLevel::Empty(int width) {
    return {width, std::vector<MadePost>(Size(width) * Size(width))};
}

MadeLevel MadeLevel::Random(int width, unsigned seed) {
    std::mt19937 random(seed);
    MadeLevel level = Empty(width);
    const int segments = width / 16;
    for (int y = 1; y <= width; ++y)
        for (int x = 1; x <= width; ++x) {
            const int segment = (y - 1) / 16 * segments + (x - 1) / 16;
            if (segment == 0 || segment == segments * segments - 1)
                continue;
            level.At(x, y) = {static_cast<int32_t>(random() % 4000),
                              static_cast<int16_t>(random() % 9000 - 200),
                              static_cast<uint8_t>(random()),
                              static_cast<uint8_t>(random()),
                              static_cast<uint8_t>(random())};
        }
    return level;
}

std::string PostBytes(const MadePost& post) {
    std::string bytes = Int32Bytes(post.Tile) + Int16Bytes(post.Elevation);
    for (const uint8_t value : {post.Palette, post.X1, post.X2})
        bytes += static_cast<char>(value);
    return bytes;
}

PairBytes ScatteredPair(const MadeLevel& level) {
    const int segments = level.Width / 16;
    std::vector<int> offsets(Size(segments) * Size(segments));
    PairBytes pair;
    for (int segment = segments * segments - 1; segment >= 0; --segment) {
        pair.L += std::string(Size(segment % 7 + 1), '\x7F');
        offsets[Size(segment)] = static_cast<int>(pair.L.size());
        for (int j = 0; j < 16; ++j)
            for (int i = 0; i < 16; ++i)
                pair.L += PostBytes(
                    level.Posts.at(Size(segment / segments * 16 + j) * Size(level.Width) +
                                   Size(segment % segments * 16 + i)));
    }
    for (const int offset : offsets)
        pair.O += Int32Bytes(offset);
    return pair;
}

MadeLevel ReadPair(const std::string& pathL, const std::string& pathO) {
    const std::string fileL = Slurp(pathL);
    const std::string fileO = Slurp(pathO);
    const auto segments = static_cast<size_t>(
        std::lround(std::sqrt(static_cast<double>(fileO.size()) / 4)));
    MadeLevel level = MadeLevel::Empty(static_cast<int>(segments) * 16);
    for (size_t y = 0; y < segments * 16; ++y)
        for (size_t x = 0; x < segments * 16; ++x) {
            const int offset = IntAt(fileO, (y / 16 * segments + x / 16) * 4);
            level.Posts[y * segments * 16 + x] =
                PostAt(fileL, Size(offset) + (y % 16 * 16 + x % 16) * 9);
        }
    return level;
}

std::string CatalogueBytes(const std::vector<MadeSet>& sets) {
    int tiles = 0;
    float running = 0.5F;
    std::string body;
    for (const MadeSet& set : sets) {
        body += Int32Bytes(static_cast<int>(set.Tiles.size()));
        body += static_cast<char>(set.Terrain);
        for (const MadeTile& tile : set.Tiles) {
            ++tiles;
            std::string name = tile.Name;
            name.resize(20, '\0');
            body += name + Int32Bytes(tile.Areas) + Int32Bytes(tile.Paths);
            for (int i = 0; i < tile.Areas; ++i) {
                body += Int32Bytes(7);
                for (int field = 0; field < 3; ++field)
                    body += FloatBytes(running += 0.1F);
            }
            for (int i = 0; i < tile.Paths; ++i) {
                body += Int32Bytes(10);
                for (int field = 0; field < 5; ++field)
                    body += FloatBytes(running += 0.1F);
            }
        }
    }
    return Int32Bytes(static_cast<int>(sets.size())) + Int32Bytes(tiles) + body;
}

} // namespace vardenix::tests
