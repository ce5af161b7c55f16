#include "search/TileSearch.h"

#include "support/RecordingProgress.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <vector>

namespace vardenix {
namespace {

Terrain Flat(int32_t width) {
    Terrain terrain;
    terrain.MapWidth = width;
    terrain.LxArr = PostArray(int64_t{width} * width);
    return terrain;
}

// "3 7" of the serials 3 and 7.
std::string Hits(const Terrain& terrain, const SearchPattern& pattern) {
    NoProgress progress;
    SearchResults results{5, 6};
    SearchTiles(terrain, pattern, progress, results);
    EXPECT_EQ(results.at(0), 0);
    std::string text;
    for (size_t i = 1; i < results.size(); ++i)
        text += (i == 1 ? "" : " ") + std::to_string(results[i]);
    return text;
}

SearchPattern Tile(const std::string& text, size_t cell = 0) {
    SearchPattern pattern;
    pattern[cell].CellTile = text;
    return pattern;
}

TEST(CellOffset, CellsGoRoundClockwiseFromAbove) {
    const std::array<int, 9> across{0, 0, 1, 1, 1, 0, -1, -1, -1};
    const std::array<int, 9> up{0, 1, 1, 0, -1, -1, -1, 0, 1};
    for (int cell = 0; cell < 9; ++cell) {
        EXPECT_EQ(CellOffset(cell, true), across[static_cast<size_t>(cell)]) << cell;
        EXPECT_EQ(CellOffset(cell, false), up[static_cast<size_t>(cell)]) << cell;
    }
}

TEST(NumberCounted, IsOfTextsThatAreNoNumber) {
    for (const char* number : {"", "0", "12", "!12", "<-5", ">+7", "-5", "!", "<-"})
        EXPECT_EQ(NumberCounted(number), std::nullopt) << number;
    EXPECT_EQ(NumberCounted("HTHNE003"), 0.0);
    EXPECT_EQ(NumberCounted("!x"), 0.0);
    EXPECT_EQ(NumberCounted("12a"), 12.0);
    EXPECT_EQ(NumberCounted(">-3 m"), -3.0);
    EXPECT_EQ(NumberCounted("--5"), 0.0);
    EXPECT_EQ(NumberCounted("!!5"), 0.0);
    EXPECT_EQ(NumberCounted("2.5"), 2.5);
}

TEST(LabelOfText, FollowsTheFirstCharacter) {
    EXPECT_EQ(LabelOfText(""), "");
    EXPECT_EQ(LabelOfText("12"), "12");
    EXPECT_EQ(LabelOfText("007x"), "7");
    EXPECT_EQ(LabelOfText("2.5"), "2");
    EXPECT_EQ(LabelOfText("!12"), "!12");
    EXPECT_EQ(LabelOfText("<-5"), "<-5");
    EXPECT_EQ(LabelOfText(">1>2"), ">1");
    EXPECT_EQ(LabelOfText("-5"), "-5");
    EXPECT_EQ(LabelOfText("abc"), "a0");
    EXPECT_EQ(LabelOfText("!"), "");
    EXPECT_EQ(LabelOfText("<"), "");
    EXPECT_EQ(LabelOfText("x"), "");
    // One character each, of several bytes.
    EXPECT_EQ(LabelOfText("\xC3\xA9"), "");
    EXPECT_EQ(LabelOfText("\xE2\x82\xAC"
                          "12"),
              "\xE2\x82\xAC"
              "12");
}

TEST(SearchTiles, AnEmptyPatternMatchesEveryPost) {
    EXPECT_EQ(Hits(Flat(2), {}), "1 2 3 4");
}

TEST(SearchTiles, FindsOneTile) {
    Terrain terrain = Flat(16);
    terrain.LxArr(17).TileOffset = 5;
    terrain.LxArr(256).TileOffset = 5;
    EXPECT_EQ(Hits(terrain, Tile("5")), "17 256");
    EXPECT_EQ(Hits(terrain, Tile("6")), "");
    EXPECT_EQ(Hits(terrain, Tile(">4")), "17 256");
    EXPECT_EQ(Hits(terrain, Tile("<5")).size(), Hits(terrain, Tile("!5")).size());
}

TEST(SearchTiles, EveryFieldHasItsOwnConditions) {
    Terrain terrain = Flat(2);
    terrain.LxArr(1).TileOffset = 1;
    terrain.LxArr(2).Elevation = -7;
    terrain.LxArr(3).Palette = 200;
    terrain.LxArr(4).X1 = 3;
    terrain.LxArr(4).X2 = 4;
    SearchPattern pattern;
    pattern[0].CellElevation = "<0";
    EXPECT_EQ(Hits(terrain, pattern), "2");
    pattern[0] = {.CellPalette = ">199"};
    EXPECT_EQ(Hits(terrain, pattern), "3");
    pattern[0] = {.CellX1 = "3", .CellX2 = "4"};
    EXPECT_EQ(Hits(terrain, pattern), "4");
    pattern[0] = {.CellX1 = "3", .CellX2 = "!4"};
    EXPECT_EQ(Hits(terrain, pattern), "");
}

TEST(SearchTiles, NeighboursOutsideTheMapFail) {
    const Terrain terrain = Flat(2);
    EXPECT_EQ(Hits(terrain, Tile("0", 1)), "1 2"); // something above
    EXPECT_EQ(Hits(terrain, Tile("0", 5)), "3 4"); // below
    EXPECT_EQ(Hits(terrain, Tile("0", 3)), "1 3"); // right
    EXPECT_EQ(Hits(terrain, Tile("0", 7)), "2 4"); // left
    EXPECT_EQ(Hits(terrain, Tile("!99", 2)), "1"); // no condition too weak for it
    EXPECT_EQ(Hits(Flat(1), Tile("0", 3)), "");
}

TEST(SearchTiles, TextsThatNoFieldCanMeetOrMiss) {
    const Terrain terrain = Flat(1);
    SearchPattern pattern;
    for (const char* met : {"!300", "<256", ">-1", "<1e999", "!-1", "!0.5"}) {
        pattern[0].CellPalette = met;
        EXPECT_EQ(Hits(terrain, pattern), "1") << met;
    }
    for (const char* missed : {"300", ">255", "<0", "-1", "<-1e999", "0.5", "!0"}) {
        pattern[0].CellPalette = missed;
        EXPECT_EQ(Hits(terrain, pattern), "") << missed;
    }
}

TEST(SearchTiles, LettersAreZero) {
    Terrain terrain = Flat(2);
    terrain.LxArr(1).TileOffset = 9;
    EXPECT_EQ(Hits(terrain, Tile("abc")), "2 3 4");
    EXPECT_EQ(Hits(terrain, Tile("!abc")), "1");
}

TEST(SearchTiles, TheBarMovesAndEventsPassOnceARow) {
    tests::RecordingProgress progress;
    SearchResults results;
    SearchTiles(Flat(4), {}, progress, results);
    EXPECT_EQ(progress.Story(),
              "show|bar 25|events|bar 50|events|bar 75|events|bar 100|events|hide");
}

TEST(SearchTiles, ResultsChangeOnlyAtTheEnd) {
    const Terrain terrain = Flat(2);
    tests::RecordingProgress progress;
    SearchResults results{0, 77};
    progress.OnEvents = [&] { EXPECT_EQ(results, (SearchResults{0, 77})); };
    SearchTiles(terrain, Tile("1"), progress, results);
    EXPECT_EQ(results, SearchResults{0});
}

// Post by post and text by text, as it is described.
class SlowSearch {
public:
    SlowSearch(const Terrain& terrain, const SearchPattern& pattern)
        : terrain_(terrain), pattern_(pattern) {}

    std::string Hits() const {
        std::string text;
        for (int y = 1; y <= terrain_.MapWidth; ++y)
            for (int x = 1; x <= terrain_.MapWidth; ++x)
                if (Matches(x, y))
                    text += (text.empty() ? "" : " ") +
                            std::to_string((y - 1) * terrain_.MapWidth + x);
        return text;
    }

private:
    bool Matches(int x, int y) const {
        const int dx[] = {0, 0, 1, 1, 1, 0, -1, -1, -1};
        const int dy[] = {0, 1, 1, 0, -1, -1, -1, 0, 1};
        for (size_t cell = 0; cell < 9; ++cell)
            if (!CellHolds(x + dx[cell], y + dy[cell], pattern_[cell]))
                return false;
        return true;
    }
    bool CellHolds(int x, int y, const SearchCell& cell) const {
        const std::string texts[] = {cell.CellTile, cell.CellElevation, cell.CellPalette,
                                     cell.CellX1, cell.CellX2};
        const int width = terrain_.MapWidth;
        const bool inside = x >= 1 && y >= 1 && x <= width && y <= width;
        for (int i = 0; i < 5; ++i) {
            if (texts[i].empty())
                continue;
            if (!inside)
                return false;
            const TerrainPost post = terrain_.LxArr((y - 1) * width + x);
            const double values[] = {double(post.TileOffset), double(post.Elevation),
                                     double(post.Palette), double(post.X1),
                                     double(post.X2)};
            if (!Holds(values[i], texts[i]))
                return false;
        }
        return true;
    }
    static bool Holds(double value, const std::string& text) {
        const double behind = std::strtod(text.c_str() + 1, nullptr);
        return text[0] == '!'   ? value != behind
               : text[0] == '<' ? value < behind
               : text[0] == '>' ? value > behind
                                : value == std::strtod(text.c_str(), nullptr);
    }

    const Terrain& terrain_;
    const SearchPattern& pattern_;
};

TEST(SearchTiles, FindsWhatASlowSearchFinds) {
    std::mt19937 random(7);
    const auto below = [&](unsigned bound) { return static_cast<int>(random() % bound); };
    const auto text = [&](int least, unsigned values) {
        const char* signs[] = {"", "", "!", "<", ">"};
        return signs[below(5)] + std::to_string(least + below(values));
    };
    for (int round = 0; round < 400; ++round) {
        const int width = 1 + below(21);
        Terrain terrain = Flat(width);
        for (TerrainPost& post : terrain.LxArr.Values()) {
            post.TileOffset = below(3);
            post.Elevation = static_cast<int16_t>(below(3) - 1);
            post.Palette = static_cast<uint8_t>(below(2));
            post.X1 = static_cast<uint8_t>(253 + below(3));
            post.X2 = static_cast<uint8_t>(below(2));
        }
        SearchPattern pattern;
        for (int i = 1 + below(4); i > 0; --i) {
            SearchCell& cell = pattern[static_cast<size_t>(below(9))];
            switch (below(5)) {
            case 0:
                cell.CellTile = text(-1, 5);
                break;
            case 1:
                cell.CellElevation = text(-2, 5);
                break;
            case 2:
                cell.CellPalette = text(-1, 4);
                break;
            case 3:
                cell.CellX1 = text(252, 5);
                break;
            default:
                cell.CellX2 = text(0, 3);
            }
        }
        ASSERT_EQ(Hits(terrain, pattern), SlowSearch(terrain, pattern).Hits()) << round;
    }
}

TEST(FindPosts, LeavesThoseWhoseTileIsNamed) {
    Terrain terrain;
    terrain.MapWidth = 16;
    terrain.LxArr = PostArray(256);
    terrain.LxArr(5) = {2, 100, 0, 0, 0};
    terrain.LxArr(6) = {2, 0, 0, 0, 0};
    terrain.LxArr(7) = {0, 100, 0, 0, 0};
    TileLookup lookup(16);
    lookup[2].Name = "Caf\xE9"; // as the catalogue has it
    lookup[2].Terrain = 4;
    NoProgress quiet;
    SearchPattern high;
    high[0].CellElevation = "100";
    SearchResults hits;
    FindPosts(terrain, lookup, {high, "caf\xC3\xA9"}, quiet, hits);
    EXPECT_EQ(hits, (SearchResults{0, 5}));
    FindPosts(terrain, lookup, {{}, "plain"}, quiet, hits);
    EXPECT_EQ(hits, (SearchResults{0, 5, 6}));
    FindPosts(terrain, lookup, {high, ""}, quiet, hits);
    EXPECT_EQ(hits, (SearchResults{0, 5, 7}));
}

TEST(RememberQuery, TheNewestStandsFirstAndNoneTwice) {
    SearchState search;
    for (const char* text : {"1", "2", "1"}) {
        search.Pattern = Tile(text);
        RememberQuery(search);
    }
    ASSERT_EQ(search.History.size(), 2U);
    EXPECT_EQ(search.History[0].Pattern, Tile("1"));
    EXPECT_EQ(search.History[1].Pattern, Tile("2"));
    for (int i = 0; i < 50; ++i) {
        search.Pattern = Tile(std::to_string(i));
        RememberQuery(search);
    }
    EXPECT_EQ(search.History.size(), 20U);
    EXPECT_EQ(search.History.back().Pattern, Tile("30"));
}

} // namespace
} // namespace vardenix
