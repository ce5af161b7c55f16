#include "grounds/BrushFigures.h"

#include "grounds/TerrainBrush.h"

#include <algorithm>
#include <map>
#include <random>

namespace vardenix::tests {

namespace {

constexpr int Margin = 12;

// A part of the map with a margin round a window, to be worked on and put back.
struct Part {
    Part(const LandGrid& map, int left, int bottom, int across, int up)
        : X(left - Margin),
          Y(bottom - Margin), Posts{across + 2 * Margin, up + 2 * Margin, {}} {
        for (int y = 0; y < Posts.Height; ++y)
            for (int x = 0; x < Posts.Width; ++x)
                Posts.Tiles.push_back(map.Has(X + x, Y + y) ? map(X + x, Y + y) : -1);
        Marked.resize(Posts.Tiles.size());
    }
    void Mark(int x, int y) { Marked[Posts.At(x + Margin, y + Margin)] = 1; }
    void PutBack(LandGrid& map) const {
        for (int y = 0; y < Posts.Height; ++y)
            for (int x = 0; x < Posts.Width; ++x)
                if (map.Has(X + x, Y + y))
                    map(X + x, Y + y) = Posts(x, y);
    }
    PostPlace Origin() const { return {X, Y}; }

    int X;
    int Y;
    LandGrid Posts;
    std::vector<uint8_t> Marked;
};

bool IsTransition(const SampleLand& land, int32_t tile) {
    for (size_t corner = 1; corner < CornerCount; ++corner)
        if (land.Truth(tile, corner) != land.Truth(tile, 0))
            return true;
    return false;
}

bool HasTransitions(const SampleLand& land, int left, int bottom, int across, int up) {
    int transitions = 0;
    for (int y = bottom; y < bottom + up; ++y)
        for (int x = left; x < left + across; ++x)
            transitions += IsTransition(land, land.Map(x, y));
    return transitions * 10 >= across * up * 3;
}

class Chance {
public:
    explicit Chance(unsigned seed) : random_(seed) {}
    int Below(int count) {
        return static_cast<int>(random_() % static_cast<unsigned>(count));
    }

private:
    std::mt19937 random_;
};

} // namespace

BrushFigures HiddenWindows(const SampleLand& land, const LearnedLand& learned,
                           int windows, bool middle) {
    Chance chance(5);
    BrushFigures figures;
    while (figures.Windows < windows) {
        const int across = 3 + chance.Below(6);
        const int up = 3 + chance.Below(6);
        const int left = Margin + chance.Below(land.Map.Width - 2 * Margin - across);
        const int bottom = Margin + chance.Below(land.Map.Height - 2 * Margin - up);
        if (!HasTransitions(land, left, bottom, across, up))
            continue;
        Part part(land.Map, left, bottom, across, up);
        for (int y = 0; y < up; ++y)
            for (int x = 0; x < across; ++x) {
                const bool ring = x == 0 || y == 0 || x == across - 1 || y == up - 1;
                if (ring == middle)
                    continue;
                part.Mark(x, y);
                part.Posts(x + Margin, y + Margin) = -1;
            }
        MendGrid(learned, part.Posts, part.Marked, part.Origin(), {});
        LandGrid map = land.Map;
        part.PutBack(map);
        const int right = left + across - 1;
        const int top = bottom + up - 1;
        const int bad = land.BadSeams(map, left, bottom, right, top);
        figures.Seams += SampleLand::SeamsOf(map, left, bottom, right, top);
        figures.BadSeams += bad;
        figures.CleanWindows += bad == 0;
        ++figures.Windows;
    }
    return figures;
}

BrushFigures Paints(const SampleLand& land, const LearnedLand& learned, int paints,
                    bool inside) {
    Chance chance(9);
    BrushFigures figures;
    for (int paint = 0; paint < paints; ++paint) {
        const auto ground = static_cast<sample::Ground>(1 + paint % 11);
        const int side = 3 + chance.Below(6);
        int left = 0;
        int bottom = 0;
        do {
            left = Margin + chance.Below(land.Map.Width - 2 * Margin - side);
            bottom = Margin + chance.Below(land.Map.Height - 2 * Margin - side);
        } while (
            sample::IsWater(land.Truth(land.Map(left + side / 2, bottom + side / 2), 0)));
        Part part(land.Map, left, bottom, side, side);
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x)
                part.Mark(x, y);
        const LandGrid before = part.Posts;
        PaintGrid(learned, part.Posts, part.Marked, land.PlainTile(ground), part.Origin(),
                  {.Inside = inside});
        LandGrid map = land.Map;
        part.PutBack(map);
        // All that could have changed; of seams those of the square and its ring alone,
        // so that what stays does not hide what is bad.
        const int far = Margin - 1;
        figures.BadSeams += land.BadSeams(map, left - far, bottom - far,
                                          left + side + far - 1, bottom + side + far - 1);
        figures.Seams +=
            SampleLand::SeamsOf(map, left - 1, bottom - 1, left + side, bottom + side);
        for (int y = 0; y < part.Posts.Height; ++y)
            for (int x = 0; x < part.Posts.Width; ++x) {
                const size_t at = part.Posts.At(x, y);
                if (part.Marked[at] == 0) {
                    figures.ChangedOutside += part.Posts(x, y) != before(x, y);
                    continue;
                }
                ++figures.Posts;
                for (size_t corner = 0; corner < CornerCount; ++corner)
                    if (land.Truth(part.Posts(x, y), corner) != ground) {
                        ++figures.WrongGround;
                        break;
                    }
            }
    }
    return figures;
}

double RightCorners(const SampleLand& land, const LearnedLand& learned) {
    std::map<std::pair<int16_t, sample::Ground>, int> together;
    for (size_t tile = 0; tile < land.Tiles.Count(); ++tile)
        for (size_t corner = 0; corner < CornerCount; ++corner) {
            const auto index = static_cast<int32_t>(tile);
            ++together[{learned.GroundsOf(index)[corner], land.Truth(index, corner)}];
        }
    std::map<int16_t, std::pair<int, sample::Ground>> ofLearned;
    std::map<sample::Ground, std::pair<int, int16_t>> ofTrue;
    for (const auto& [pair, count] : together) {
        auto& learnedBest = ofLearned[pair.first];
        learnedBest = std::max(learnedBest, {count, pair.second});
        auto& trueBest = ofTrue[pair.second];
        trueBest = std::max(trueBest, {count, pair.first});
    }
    int right = 0;
    for (const auto& [pair, count] : together)
        if (ofLearned[pair.first].second == pair.second &&
            ofTrue[pair.second].second == pair.first)
            right += count;
    return right / (static_cast<double>(land.Tiles.Count()) * CornerCount);
}

} // namespace vardenix::tests
