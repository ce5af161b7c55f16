#include "search/windows/FrmVXStatistics.h"

#include "windows/WindowTest.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include <string>
#include <vector>

namespace vardenix {
namespace {

class StatisticsWindowTest : public testing::Test {
protected:
    // Two tiles of water, the first on 200 posts, and one of plains on 56.
    StatisticsWindowTest() {
        state_.Catalogue.Lookup.resize(32);
        for (const size_t tile : {0U, 1U, 16U}) {
            state_.Catalogue.Lookup[tile].Name = "T" + std::to_string(tile);
            state_.Catalogue.Lookup[tile].Terrain = tile == 16 ? 4 : 1;
        }
        state_.Terrain.MapWidth = 16;
        state_.Terrain.LxArr = PostArray(256);
        for (int32_t serial = 201; serial <= 256; ++serial)
            state_.Terrain.LxArr(serial).TileOffset = 16;
        QObject::connect(
            &window_, &FrmVXStatistics::RowWanted,
            [this](const StatisticsRow& row) { wanted_.push_back(row.What); });
        window_.show();
    }

    QTreeWidget& List() { return tests::Find<QTreeWidget>(window_, "lstRows"); }
    QTreeWidgetItem& Group(const QString& title) {
        for (int i = 0; i < List().topLevelItemCount(); ++i)
            if (List().topLevelItem(i)->text(0).startsWith(title))
                return *List().topLevelItem(i);
        throw std::runtime_error("no group " + title.toStdString());
    }
    void ClickOn(QTreeWidgetItem& item) {
        List().scrollToItem(&item);
        QTest::mouseClick(List().viewport(), Qt::LeftButton, {},
                          List().visualItemRect(&item).center());
    }

    ProgramState state_;
    std::optional<int64_t> seams_;
    FrmVXStatistics window_{state_, [this] { return seams_; }};
    std::vector<std::string> wanted_;
};

TEST_F(StatisticsWindowTest, CountsWhenItComesUp) {
    EXPECT_EQ(window_.windowTitle(), "Theater Statistics");
    EXPECT_EQ(Group("Kinds").text(0), "Kinds (2)");
    const QTreeWidgetItem& water = *Group("Kinds").child(0);
    EXPECT_EQ(water.text(0) + " " + water.text(1) + " " + water.text(2),
              "Water 200 78.1 %");
    EXPECT_TRUE(
        tests::Find<QLabel>(window_, "lblSummary").text().startsWith("256 posts"));
    EXPECT_TRUE(Group("Kinds").isExpanded());
    EXPECT_FALSE(Group("Tiles by use").isExpanded());
}

TEST_F(StatisticsWindowTest, AClickOnARowFindsItAndATitleDoesNot) {
    ClickOn(*Group("Kinds").child(1));
    EXPECT_EQ(wanted_, (std::vector<std::string>{"Plains"}));
    ClickOn(Group("Sets"));
    EXPECT_EQ(wanted_.size(), 1U);
    List().setCurrentItem(Group("Unused tiles").child(0));
    QTest::keyClick(&List(), Qt::Key_Return);
    EXPECT_EQ(wanted_.back(), "1 T1");
}

TEST_F(StatisticsWindowTest, CountsAgainAndKeepsItsGroupsAsTheyAre) {
    Group("Kinds").setExpanded(false);
    Group("Sets").setExpanded(true);
    state_.Terrain.LxArr(256).TileOffset = 1;
    tests::Find<QPushButton>(window_, "cmdCount").click();
    EXPECT_EQ(Group("Kinds").child(0)->text(1), "201");
    EXPECT_FALSE(Group("Kinds").isExpanded());
    EXPECT_TRUE(Group("Sets").isExpanded());
    EXPECT_EQ(Group("Unused tiles").childCount(), 0);
}

TEST_F(StatisticsWindowTest, SeamsAreCountedOnceTheLandIsLearned) {
    const QTreeWidgetItem* seams = Group("Seams").child(0);
    EXPECT_EQ(seams->text(1), "");
    ClickOn(*Group("Seams").child(0));
    EXPECT_EQ(wanted_, (std::vector<std::string>{"Posts at seams that do not fit"}));
    seams_ = 64;
    window_.CountAnew();
    seams = Group("Seams").child(0);
    EXPECT_EQ(seams->text(1) + " " + seams->text(2), "64 25.0 %");
}

} // namespace
} // namespace vardenix
