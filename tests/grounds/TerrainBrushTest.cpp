#include "grounds/TerrainBrush.h"

#include "grounds/SampleLand.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <random>

namespace vardenix::tests {
namespace {

struct Figures {
    int Seams = 0, Bad = 0, Windows = 0, Clean = 0;
};

TEST(TerrainBrush, Windows) {
    const SampleLand land(256, 1, 64);
    const LearnedLand learned(land.Tiles, land.Map);
    for (int middle = 0; middle < 2; ++middle) {
        std::mt19937 random(5);
        Figures f;
        auto t0 = std::chrono::steady_clock::now();
        while (f.Windows < 200) {
            const int w = 3 + int(random() % 6), h = 3 + int(random() % 6);
            const int x0 = 12 + int(random() % (256 - 24 - w)), y0 = 12 + int(random() % (256 - 24 - h));
            int transitions = 0;
            for (int y = y0; y < y0 + h; ++y)
                for (int x = x0; x < x0 + w; ++x) {
                    int t = land.Map(x, y);
                    for (size_t c = 1; c < 4; ++c)
                        if (land.Truth(t, c) != land.Truth(t, 0)) {
                            ++transitions;
                            break;
                        }
                }
            if (transitions * 10 < w * h * 3)
                continue;
            // a window with margin
            const int M = 8;
            TileGrid part{w + 2 * M, h + 2 * M, {}};
            for (int y = y0 - M; y < y0 + h + M; ++y)
                for (int x = x0 - M; x < x0 + w + M; ++x)
                    part.Tiles.push_back(land.Map.Has(x, y) ? land.Map(x, y) : -1);
            std::vector<uint8_t> marked(part.Tiles.size());
            for (int y = 0; y < h; ++y)
                for (int x = 0; x < w; ++x) {
                    bool ring = x == 0 || y == 0 || x == w - 1 || y == h - 1;
                    if (ring != (middle == 1)) {
                        marked[part.At(x + M, y + M)] = 1;
                        part(x + M, y + M) = -1;
                    }
                }
            MendGrid(learned, part, marked, {x0 - M, y0 - M}, {});
            TileGrid whole = land.Map;
            for (int y = 0; y < part.Height; ++y)
                for (int x = 0; x < part.Width; ++x)
                    if (whole.Has(x0 - M + x, y0 - M + y))
                        whole(x0 - M + x, y0 - M + y) = part(x, y);
            const int bad = land.BadSeams(whole, x0, y0, x0 + w - 1, y0 + h - 1);
            f.Bad += bad;
            f.Seams += SampleLand::SeamsOf(whole, x0, y0, x0 + w - 1, y0 + h - 1);
            f.Clean += bad == 0;
            ++f.Windows;
        }
        auto t1 = std::chrono::steady_clock::now();
        std::printf("middle %d: fit %.4f clean %.3f  %.1f ms each\n", middle,
                    1 - double(f.Bad) / f.Seams, double(f.Clean) / f.Windows,
                    std::chrono::duration<double>(t1 - t0).count() * 1000 / f.Windows);
    }
}

TEST(TerrainBrush, Paints) {
    const SampleLand land(256, 1, 64);
    const LearnedLand learned(land.Tiles, land.Map);
    for (int inside = 0; inside < 2; ++inside) {
        std::mt19937 random(9);
        int bad = 0, seams = 0, wrong = 0, posts = 0, outside = 0, unf = 0, badBefore = 0;
        double worst = 0;
        for (int n = 0; n < 66; ++n) {
            const auto ground = sample::Ground(n % 11 + (n % 11 >= 0 ? 1 : 0));
            const int s = 3 + int(random() % 6);
            int x0, y0;
            do {
                x0 = 12 + int(random() % (256 - 24 - s));
                y0 = 12 + int(random() % (256 - 24 - s));
            } while (land.Truth(land.Map(x0 + s / 2, y0 + s / 2), 0) <= sample::Ground::Shallow);
            TileGrid whole = land.Map;
            const int M = 12;
            TileGrid part{s + 2 * M, s + 2 * M, {}};
            for (int y = y0 - M; y < y0 + s + M; ++y)
                for (int x = x0 - M; x < x0 + s + M; ++x)
                    part.Tiles.push_back(land.Map.Has(x, y) ? land.Map(x, y) : -1);
            std::vector<uint8_t> marked(part.Tiles.size());
            for (int y = 0; y < s; ++y)
                for (int x = 0; x < s; ++x)
                    marked[part.At(x + M, y + M)] = 1;
            BrushOptions o;
            o.Inside = inside;
            auto t0 = std::chrono::steady_clock::now();
            const int64_t unfilled = PaintGrid(learned, part, marked, land.PlainTile(ground), {x0 - M, y0 - M}, o);
            double ms = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0)
                            .count() * 1000;
            worst = std::max(worst, ms);
            unf += int(unfilled);
            for (int y = 0; y < part.Height; ++y)
                for (int x = 0; x < part.Width; ++x) {
                    if (!whole.Has(x0 - M + x, y0 - M + y))
                        continue;
                    auto& t = whole(x0 - M + x, y0 - M + y);
                    if (!marked[part.At(x, y)] && t != part(x, y))
                        ++outside;
                    t = part(x, y);
                }
            for (int y = 0; y < s; ++y)
                for (int x = 0; x < s; ++x) {
                    if (inside && (x == 0 || y == 0 || x == s - 1 || y == s - 1)) continue;
                    ++posts;
                    for (size_t c = 0; c < 4; ++c)
                        if (land.Truth(whole(x0 + x, y0 + y), c) != ground) {
                            ++wrong;
                            break;
                        }
                }
            const int b = land.BadSeams(whole, std::max(x0 - M,0), std::max(0,y0 - M), std::min(255,x0 + s + M-1), std::min(255,y0 + s + M-1));
            bad += b;
            badBefore += land.BadSeams(land.Map, std::max(x0 - M,0), std::max(0,y0 - M), std::min(255,x0 + s + M-1), std::min(255,y0 + s + M-1));
            // seams of the area and those of changed
            seams += SampleLand::SeamsOf(whole, x0 - 2, y0 - 2, x0 + s + 1, y0 + s + 1);
            if (b && std::getenv("WHY")) {
                int corner=0, way=0;
                for (int y = std::max(0,y0-M); y <= std::min(254,y0+s+M-1); ++y)
                    for (int x = std::max(0,x0-M); x <= std::min(254,x0+s+M-1); ++x)
                        for (auto m : {Meeting::Eastward, Meeting::Northward}) {
                            int a = whole(x,y), c = m==Meeting::Eastward ? whole(x+1,y) : whole(x,y+1);
                            if (land.Fit(m,a,c)) continue;
                            bool e = m==Meeting::Eastward;
                            bool cm = land.Truth(a, e?1:2) != land.Truth(c,0) || land.Truth(a,3) != land.Truth(c,e?2:1);
                            (cm?corner:way)++;
                            if (!cm && (n == 10 || n == 8)) {
                                auto& wa = land.Tiles.Ways[size_t(a)]; auto& wc = land.Tiles.Ways[size_t(c)];
                                std::printf("     (%d,%d) %s tiles %d %d wasA %d wasC %d ways r%d/%d ro%d/%d ra%d/%d fit %d cost %.3f\n", x-x0,y-y0, e?"E":"N", land.Tiles.Numbers[size_t(a)], land.Tiles.Numbers[size_t(c)],
                                   land.Map(x,y), e?land.Map(x+1,y):land.Map(x,y+1), wa.Rivers, wc.Rivers, wa.Roads, wc.Roads, wa.Rails, wc.Rails, learned.Fits(m).Fit(size_t(a),size_t(c)), double(learned.Fits(m).Cost(size_t(a),size_t(c))));
                            }
                        }
                std::printf("   corner %d way %d\n", corner, way);
            }
            if (b) std::printf("  n %d ground %d size %d: bad %d unfilled %ld ms %.1f\n", n, int(ground), s, b, long(unfilled), ms);
        }
        std::printf("inside %d: bad %d (before %d) of %d fit %.4f right %.4f outside %d unfilled %d worst ms %.1f\n", inside, bad, badBefore,
                    seams, 1 - double(bad) / seams, 1 - double(wrong) / posts, outside, unf, worst);
    }
}

} // namespace
} // namespace vardenix::tests
