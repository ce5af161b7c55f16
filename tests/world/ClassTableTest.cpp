#include "world/ClassTable.h"

#include "texts/RuntimeError.h"
#include "world/TilesIn.h"

#include <gtest/gtest.h>

namespace vardenix::tests {
namespace {

std::string RefusalOf(std::string_view text) {
    try {
        ParseClassTable(text, "cover.table");
    } catch (const RuntimeError& error) {
        return error.Detail();
    }
    return "";
}

TEST(ClassTable, HasALineForEachClass) {
    const ClassTable table = ParseClassTable(
        "# classes\r\n10 ground 80 # forest\n\n 20\ttile  3\n-1 leave", "cover.table");
    ASSERT_EQ(table.size(), 3U);
    EXPECT_EQ(table.at(10).How, ClassRule::Way::Ground);
    EXPECT_EQ(table.at(10).Tile, 80);
    EXPECT_EQ(table.at(20).How, ClassRule::Way::Tile);
    EXPECT_EQ(table.at(20).Tile, 3);
    EXPECT_EQ(table.at(-1).How, ClassRule::Way::Leave);
}

TEST(ClassTable, NamesTheLineThatIsWrong) {
    for (const char* line : {"ten ground 1", "10 ground", "10 ground -1", "10 paint 3",
                             "10 tile 3 4", "10 leave 3", "10 tile 99999999999", "10"}) {
        const std::string refusal = RefusalOf("1 tile 0\n" + std::string(line));
        EXPECT_NE(refusal.find("cover.table, line 2: "), std::string::npos) << refusal;
        EXPECT_NE(refusal.find(line), std::string::npos) << refusal;
    }
    EXPECT_EQ(RefusalOf("1 tile 0\n1 tile 2"),
              "cover.table, line 2: class 1 was told before");
    EXPECT_EQ(RefusalOf("# nothing\n"), "cover.table tells of no class");
}

TEST(TilesIn, ClassesAreTakenApartRowByRow) {
    constexpr int32_t none = WorldNumbers::None;
    const WorldNumbers classes{4, 2, {1, 1, 2, 1, none, 7, 1, 1}};
    std::vector<int32_t> unknown;
    const auto found = PostsByClass(classes, {10, 20},
                                    ParseClassTable("1 leave\n2 tile 5", ""), unknown);
    EXPECT_EQ(unknown, std::vector<int32_t>{7});
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].Class, 1);
    EXPECT_EQ(found[0].Posts,
              (std::vector<RowSpan>{{20, 10, 11}, {20, 13, 13}, {21, 12, 13}}));
    EXPECT_EQ(found[1].Rule.Tile, 5);
    EXPECT_EQ(found[1].Posts, (std::vector<RowSpan>{{20, 12, 12}}));
}

TEST(TilesIn, TenNumbersAreNamedAndTheOthersCounted) {
    EXPECT_EQ(SomeOf({1, 2}), "1, 2");
    EXPECT_EQ(SomeOf({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}),
              "1, 2, 3, 4, 5, 6, 7, 8, 9, 10 and 2 more");
}

} // namespace
} // namespace vardenix::tests
