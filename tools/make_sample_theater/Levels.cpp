#include "make_sample_theater/Levels.h"

#include "make_sample_theater/Files.h"
#include "make_sample_theater/Noise.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace vardenix::sample {
namespace {

// Level 3 has half the posts of level 2 a side, and so on. Where the map is too small for
// whole segments the count of segments is rounded, halves to the even number.
int SegmentsOf(double posts) { return static_cast<int>(std::nearbyint(posts / 16)); }

void AddPost(std::vector<uint8_t>& block, const Post& post) {
    AddLong(block, post.Tile);
    AddShort(block, post.Elevation);
    AddByte(block, post.Palette);
    AddByte(block, post.X1);
    AddByte(block, post.X2);
}

// `postAt(x, y)` gives a post of the level, asked for in the order of the file: segments
// row by row from the south, posts of a segment likewise. `isSea(post)` says whether a
// post is that of the open sea.
template <class PostAt, class IsSea>
void WriteLevel(const std::filesystem::path& folder, int level, int segments,
                PostAt postAt, IsSea isSea) {
    OutFile heap(folder / ("theater.L" + std::to_string(level)));
    std::vector<uint8_t> offsets;
    std::vector<uint8_t> block;
    int32_t seaBlock = -1;
    for (int segY = 0; segY < segments; ++segY) {
        for (int segX = 0; segX < segments; ++segX) {
            block.clear();
            bool sea = true;
            for (int j = 0; j < 16; ++j) {
                for (int i = 0; i < 16; ++i) {
                    const int x = segX * 16 + i;
                    const int y = segY * 16 + j;
                    const Post post = postAt(x, y);
                    sea = sea && isSea(post, x, y);
                    AddPost(block, post);
                }
            }
            if (sea && seaBlock >= 0) {
                AddLong(offsets, seaBlock);
                continue;
            }
            const auto at = static_cast<int32_t>(heap.Written());
            if (sea)
                seaBlock = at;
            AddLong(offsets, at);
            heap.Put(block);
        }
    }
    heap.Finish();
    WriteFile(folder / ("theater.O" + std::to_string(level)), offsets);
}

// Heights between the posts of level 2. The open sea stays flat.
int16_t HeightBetween(const Grid<Post>& posts, int x, int y, int factor) {
    if (posts.At(x / factor, y / factor).IsSea())
        return 0;
    const double px = (x + 0.5) / factor - 0.5;
    const double py = (y + 0.5) / factor - 0.5;
    const auto at = [&](int cx, int cy) {
        const int last = posts.Side() - 1;
        return static_cast<double>(
            posts.At(std::clamp(cx, 0, last), std::clamp(cy, 0, last)).Elevation);
    };
    const int left = static_cast<int>(std::floor(px));
    const int bottom = static_cast<int>(std::floor(py));
    const double height =
        Mix(Mix(at(left, bottom), at(left + 1, bottom), px - left),
            Mix(at(left, bottom + 1), at(left + 1, bottom + 1), px - left), py - bottom);
    return static_cast<int16_t>(std::nearbyint(height));
}

// A finer level shows the same tiles, numbered from a base of its own.
void WriteFineLevel(const Grid<Post>& posts, const std::filesystem::path& folder,
                    int level) {
    const int factor = level == 0 ? 4 : 2;
    const int32_t base = 2048 * factor;
    WriteLevel(
        folder, level, SegmentsOf(posts.Side() * factor),
        [&](int x, int y) {
            Post post = posts.At(x / factor, y / factor);
            post.Tile += base;
            post.Elevation = HeightBetween(posts, x, y, factor);
            return post;
        },
        [&](const Post& post, int, int) {
            return post.Tile == base && post.Elevation == 0;
        });
}

// Each post the mean of the four posts under it; everything but the height is that of the
// south-western one.
Grid<Post> Halve(const Grid<Post>& fine) {
    Grid<Post> coarse(fine.Side() / 2);
    for (int y = 0; y < coarse.Side(); ++y) {
        for (int x = 0; x < coarse.Side(); ++x) {
            int sum = 0;
            for (int i = 0; i < 4; ++i)
                sum += fine.At(2 * x + (i & 1), 2 * y + (i >> 1)).Elevation;
            coarse.At(x, y) = fine.At(2 * x, 2 * y);
            coarse.At(x, y).Elevation = static_cast<int16_t>(std::nearbyint(sum / 4.0));
        }
    }
    return coarse;
}

// The tiles of a coarser level are far tiles: one for each post, numbered on from level
// to level in the order of the file, and one for all posts of open sea of a level.
void WriteFarLevel(const Grid<Post>& posts, const Grid<Post>& coarse,
                   const std::filesystem::path& folder, int level, int32_t& nextFarTile) {
    const int factor = 1 << (level - 2);
    const auto all = [&](int x, int y, auto test) {
        for (int dy = 0; dy < factor; ++dy) {
            for (int dx = 0; dx < factor; ++dx) {
                const int px = x * factor + dx;
                const int py = y * factor + dy;
                if (posts.Has(px, py) && !test(posts.At(px, py)))
                    return false;
            }
        }
        return true;
    };
    int32_t seaTile = -1;
    WriteLevel(
        folder, level, SegmentsOf(static_cast<double>(posts.Side()) / factor),
        [&](int x, int y) {
            Post post = coarse.Has(x, y) ? coarse.At(x, y) : Post{};
            if (!all(x, y, [](const Post& fine) { return fine.Tile == 0; })) {
                post.Tile = nextFarTile++;
                return post;
            }
            if (seaTile < 0)
                seaTile = nextFarTile++;
            post.Tile = seaTile;
            return post;
        },
        [&](const Post&, int x, int y) {
            return all(x, y, [](const Post& fine) { return fine.IsSea(); });
        });
}

} // namespace

void WriteLevels(const Grid<Post>& posts, const std::filesystem::path& folder) {
    WriteFineLevel(posts, folder, 0);
    WriteFineLevel(posts, folder, 1);
    WriteLevel(
        folder, 2, SegmentsOf(posts.Side()), [&](int x, int y) { return posts.At(x, y); },
        [](const Post& post, int, int) { return post.IsSea(); });
    Grid<Post> coarse = posts;
    int32_t nextFarTile = 0;
    for (int level = 3; level <= 5; ++level) {
        coarse = Halve(coarse);
        WriteFarLevel(posts, coarse, folder, level, nextFarTile);
    }
}

} // namespace vardenix::sample
