#include "builder/SlowRebuild.h"

#include "support/TestFolder.h"

#include <FreeImage.h>
#include <squish.h>

#include <cmath>
#include <map>
#include <stdexcept>

namespace vardenix::tests {

namespace {

int Power(int exponent) { return 1 << exponent; }

// A block under way and the two files that it goes to.
struct SlowPair {
    PairBytes Bytes;
    int Shared = -1;

    void Store(const std::vector<MadePost>& block, bool blank) {
        int offset = Shared;
        if (!blank || Shared == -1) {
            offset = static_cast<int>(Bytes.L.size());
            for (const MadePost& post : block)
                Bytes.L += PostBytes(post);
            if (blank)
                Shared = offset;
        }
        Bytes.O += Int32Bytes(offset);
    }
};

using MakePost = std::function<MadePost(int x, int y, int i, int j, bool& blank)>;

// x, y, i and j from 1; i is the row and j the column of a block's post.
PairBytes EveryBlock(int width, const MakePost& makePost) {
    SlowPair pair;
    for (int y = 1; y <= width / 16; ++y)
        for (int x = 1; x <= width / 16; ++x) {
            bool blank = true;
            std::vector<MadePost> block;
            for (int i = 1; i <= 16; ++i)
                for (int j = 1; j <= 16; ++j)
                    block.push_back(makePost(x, y, i, j, blank));
            pair.Store(block, blank);
        }
    return pair.Bytes;
}

MadePost AtSerial(const MadeLevel& level, int serial) {
    return level.Posts.at(static_cast<size_t>(serial) - 1);
}

int Serial(int x, int y, int width) { return (y - 1) * width + x; }

int WidthOf(const MadeLevel& level2, int level) {
    return level >= 2 ? level2.Width / Power(level - 2) : level2.Width * Power(2 - level);
}

MadePost OldPost(const MadeLevel& old, int x, int y, int i, int j) {
    return AtSerial(old, Serial((x - 1) * 16 + j, (y - 1) * 16 + i, old.Width));
}

std::vector<int> SerialsUnder(const MadeLevel& level2, int level, int x, int y, int i,
                              int j) {
    const int n = Power(level - 2);
    std::vector<int> serials;
    for (int k = 1; k <= n * n; ++k) {
        const int sx = (k - 1) % n + n * 16 * (x - 1) + n * (j - 1) + 1;
        const int sy = (k - 1) / n + n * 16 * (y - 1) + n * (i - 1) + 1;
        serials.push_back(Serial(sx, sy, level2.Width));
    }
    return serials;
}

// A picture scaled by the library, 3 bytes a pixel (red first), rows from the top.
std::string Scaled(const std::string& path, int side) {
    FIBITMAP* loaded = FreeImage_Load(FIF_DDS, path.c_str(), 0);
    if (loaded == nullptr)
        throw std::runtime_error(path);
    FIBITMAP* scaled = FreeImage_Rescale(loaded, side, side, FILTER_BICUBIC);
    FIBITMAP* plain = FreeImage_ConvertTo24Bits(scaled);
    std::string pixels;
    for (int y = 0; y < side; ++y) {
        const BYTE* row = FreeImage_GetScanLine(plain, side - 1 - y);
        for (int x = 0; x < side; ++x)
            for (const int colour : {FI_RGBA_RED, FI_RGBA_GREEN, FI_RGBA_BLUE})
                pixels += static_cast<char>(row[x * 3 + colour]);
    }
    FreeImage_Unload(plain);
    FreeImage_Unload(scaled);
    FreeImage_Unload(loaded);
    return pixels;
}

// The whole picture of one far tile, black where nothing is painted.
std::string Painted(const MadeLevel& level2, const SlowFartile& fartile, int farSize,
                    const std::function<const std::string&(int tile, int side)>& scaled) {
    const int n = Power(fartile.Level - 2);
    const int p = static_cast<int>(std::nearbyint(static_cast<double>(farSize) / n));
    std::string canvas(static_cast<size_t>(farSize * farSize * 3), '\0');
    for (int k = 1; k <= n * n; ++k) {
        const int serial = fartile.Serials.at(static_cast<size_t>(k) - 1);
        const std::string& tile = scaled(AtSerial(level2, serial).Tile, p);
        const int c = (k - 1) % n;
        const int r = n - (k - 1) / n - 1;
        for (int y = 0; y < p; ++y)
            for (int x = 0; x < p; ++x) {
                const int toX = c * p + x;
                const int toY = r * p + y;
                if (toX < farSize && toY < farSize)
                    canvas.replace(
                        (static_cast<size_t>(toY) * static_cast<size_t>(farSize) +
                         static_cast<size_t>(toX)) *
                            3,
                        3, tile,
                        (static_cast<size_t>(y) * static_cast<size_t>(p) +
                         static_cast<size_t>(x)) *
                            3,
                        3);
            }
    }
    return canvas;
}

std::string Compressed(const std::string& canvas, int farSize) {
    std::string blocks;
    for (int blockY = 0; blockY < farSize; blockY += 4)
        for (int blockX = 0; blockX < farSize; blockX += 4) {
            std::vector<squish::u8> pixels;
            for (int y = blockY; y < blockY + 4; ++y)
                for (int x = blockX; x < blockX + 4; ++x) {
                    const int at =
                        (std::min(y, farSize - 1) * farSize + std::min(x, farSize - 1)) *
                        3;
                    for (int colour = 0; colour < 3; ++colour)
                        pixels.push_back(static_cast<squish::u8>(canvas.at(
                            static_cast<size_t>(at) + static_cast<size_t>(colour))));
                    pixels.push_back(255);
                }
            std::string block(8, '\0');
            squish::Compress(pixels.data(), block.data(),
                             squish::kDxt1 | squish::kColourClusterFit);
            blocks += block;
        }
    return blocks.substr(0, static_cast<size_t>(farSize * farSize / 2));
}

} // namespace

PairBytes SlowFineLevel(const MadeLevel& level2, int level, const MadeLevel* old) {
    const int f = 4 / (level + 1);
    const int base = 2048 * (4 / (level + 1));
    return EveryBlock(
        WidthOf(level2, level), [&](int x, int y, int i, int j, bool& blank) {
            const int sx = (j - 1) / f + (level + 1) * 4 * (x - 1) + 1;
            const int sy = (i - 1) / f + (level + 1) * 4 * (y - 1) + 1;
            const MadePost source = AtSerial(level2, Serial(sx, sy, level2.Width));
            MadePost post = old != nullptr ? OldPost(*old, x, y, i, j) : source;
            post.Tile = source.Tile + base;
            blank = blank && post.Tile == base && post.Elevation == 0;
            return post;
        });
}

PairBytes SlowFarLevel(const MadeLevel& level2, int level, const MadeLevel& old,
                       std::vector<SlowFartile>& fartiles) {
    int firstBlankFartile = -1;
    return EveryBlock(WidthOf(level2, level), [&](int x, int y, int i, int j,
                                                  bool& blank) {
        const std::vector<int> serials = SerialsUnder(level2, level, x, y, i, j);
        bool postEmpty = true;
        for (const int serial : serials) {
            const MadePost source = AtSerial(level2, serial);
            if (source.Elevation != 0 || source.Tile != 0)
                blank = false;
            if (source.Tile != 0)
                postEmpty = false;
        }
        if (!postEmpty || firstBlankFartile == -1) {
            if (postEmpty)
                firstBlankFartile = static_cast<int>(fartiles.size());
            fartiles.push_back({serials, level});
        }
        MadePost post = OldPost(old, x, y, i, j);
        post.Tile = postEmpty ? firstBlankFartile : static_cast<int>(fartiles.size()) - 1;
        return post;
    });
}

std::string SlowContainer(const MadeLevel& level2,
                          const std::vector<SlowFartile>& fartiles, int farSize,
                          const std::function<std::string(int tile)>& pictureOf) {
    std::string file = Int32Bytes(124) + Int32Bytes(528391) + Int32Bytes(farSize) +
                       Int32Bytes(farSize) + Int32Bytes(farSize * farSize / 2) +
                       std::string(52, '\0') + Int32Bytes(32) + Int32Bytes(4) + "DXT1" +
                       std::string(20, '\0') + Int32Bytes(4096) + std::string(16, '\0');
    // The same pictures and far tiles come again and again.
    std::map<std::pair<int, int>, std::string> pictures;
    std::map<std::string, std::string> known;
    const auto scaled = [&](int tile, int side) -> const std::string& {
        auto& picture = pictures[{tile, side}];
        if (picture.empty())
            picture = Scaled(pictureOf(tile), side);
        return picture;
    };
    for (const SlowFartile& fartile : fartiles) {
        const std::string canvas = Painted(level2, fartile, farSize, scaled);
        auto& bytes = known[canvas];
        if (bytes.empty())
            bytes = Compressed(canvas, farSize);
        file += bytes;
    }
    return file;
}

std::vector<int16_t> SlowHalved(const std::vector<int16_t>& grid, int width, int method) {
    std::vector<int16_t> half;
    for (int y = 1; y <= width / 2; ++y)
        for (int x = 1; x <= width / 2; ++x) {
            long long sum = 0;
            long long squares = 0;
            long long largest = -40000;
            for (const int sy : {2 * y - 1, 2 * y})
                for (const int sx : {2 * x - 1, 2 * x}) {
                    const long long value =
                        grid.at(static_cast<size_t>(Serial(sx, sy, width)) - 1);
                    sum += value;
                    squares += value * value;
                    largest = std::max(largest, value);
                }
            const double result = method == 1   ? std::sqrt(double(squares) / 4)
                                  : method == 2 ? double(sum) / 4
                                                : double(largest);
            half.push_back(
                static_cast<int16_t>(std::min(std::nearbyint(result), 32767.0)));
        }
    return half;
}

PairBytes SlowLevelElevations(const MadeLevel& level2, int level, const MadeLevel* old,
                              const std::vector<int16_t>& heights) {
    const int width = WidthOf(level2, level);
    const double base = 2048 * (4.0 / (level + 1));
    return EveryBlock(width, [&](int x, int y, int i, int j, bool& blank) {
        MadePost post;
        if (old != nullptr) {
            post = OldPost(*old, x, y, i, j);
        } else {
            const int f = 4 / (level + 1);
            post = AtSerial(level2, Serial((j - 1) / f + (level + 1) * 4 * (x - 1) + 1,
                                           (i - 1) / f + (level + 1) * 4 * (y - 1) + 1,
                                           level2.Width));
            post.Tile += static_cast<int>(base);
        }
        post.Elevation = heights.at(
            static_cast<size_t>(Serial((x - 1) * 16 + j, (y - 1) * 16 + i, width)) - 1);
        blank = blank && post.Tile == base && post.Elevation == 0;
        return post;
    });
}

PairBytes SlowFarLevelElevations(const MadeLevel& level2, int level, const MadeLevel& old,
                                 const std::vector<int16_t>& heights) {
    const int width = WidthOf(level2, level);
    return EveryBlock(width, [&](int x, int y, int i, int j, bool& blank) {
        for (const int serial : SerialsUnder(level2, level, x, y, i, j)) {
            const MadePost source = AtSerial(level2, serial);
            if (source.Elevation != 0 || source.Tile != 0)
                blank = false;
        }
        MadePost post = OldPost(old, x, y, i, j);
        post.Elevation = heights.at(
            static_cast<size_t>(Serial((x - 1) * 16 + j, (y - 1) * 16 + i, width)) - 1);
        return post;
    });
}

} // namespace vardenix::tests
