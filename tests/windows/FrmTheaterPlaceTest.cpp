#include "world/windows/FrmTheaterPlace.h"

#include "platform/windows/PinkBox.h"
#include "windows/WindowTest.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>

#include <cmath>

namespace vardenix {
namespace {

class TheaterPlaceTest : public testing::Test {
protected:
    TheaterPlaceTest() {
        terrain_.MapWidth = 64;
        window_.ShowPlace({"EPSG:32632", 500000, 5200000, 1000, 900}, "told");
        window_.show();
    }
    QLineEdit& Box(const char* name) { return tests::Find<QLineEdit>(window_, name); }
    QString Label(const char* name) { return tests::Find<QLabel>(window_, name).text(); }
    void Click(const char* name) { tests::Find<QAbstractButton>(window_, name).click(); }

    Terrain terrain_;
    FrmTheaterPlace window_{terrain_};
};

TEST_F(TheaterPlaceTest, ShowsAPlaceAndGivesItBack) {
    EXPECT_EQ(Label("lblSource"), "told");
    EXPECT_EQ(Box("txtRight").text(), "564000");
    EXPECT_EQ(Box("txtTop").text(), "5257600");
    const TheaterPlace place{"EPSG:32632", 500000, 5200000, 1000, 900};
    EXPECT_EQ(window_.Place(), place);
    Click("optCorner");
    EXPECT_EQ(window_.Place(), place);
}

TEST_F(TheaterPlaceTest, IsToldByAPostOrByTheOppositeCorner) {
    EXPECT_FALSE(Box("txtRight").isEnabled());
    Box("txtPostWidth").setText("500");
    Box("txtPostHeight").clear();
    EXPECT_EQ(window_.Place().PostWidth, 500);
    EXPECT_EQ(window_.Place().PostHeight, 500); // as the width
    EXPECT_FALSE(IsPink(Box("txtPostHeight")));
    Click("optCorner");
    EXPECT_FALSE(Box("txtPostWidth").isEnabled());
    Box("txtRight").setText("506400");
    Box("txtTop").setText("5212800");
    EXPECT_EQ(window_.Place().PostWidth, 100);
    EXPECT_EQ(window_.Place().PostHeight, 200);
}

TEST_F(TheaterPlaceTest, WhatIsNoNumberIsPinkAndNoPlace) {
    Box("txtLeft").setText("here");
    EXPECT_TRUE(IsPink(Box("txtLeft")));
    EXPECT_TRUE(std::isnan(window_.Place().Left));
}

TEST_F(TheaterPlaceTest, CornersHoldUntilTheFieldsAreOthers) {
    window_.ShowCorners({{{1, 2}, {3, 4}, {-5, 6}, {7, -8}}});
    EXPECT_EQ(Label("lblSouthWest"), "South west:\n2.0000 N, 1.0000 E");
    EXPECT_EQ(Label("lblNorthWest"), "North west:\n6.0000 N, 5.0000 W");
    EXPECT_EQ(Label("lblNorthEast"), "North east:\n8.0000 S, 7.0000 E");
    Box("txtSystem").setText("EPSG:3035");
    EXPECT_EQ(Label("lblSouthWest"), "South west:\n");
}

TEST_F(TheaterPlaceTest, EnterSaves) {
    const QSignalSpy saved(&window_, &FrmTheaterPlace::SaveWanted);
    QTest::keyClick(&Box("txtLeft"), Qt::Key_Return);
    EXPECT_EQ(saved.count(), 1);
    const QSignalSpy shown(&window_, &FrmTheaterPlace::CornersWanted);
    Click("cmdCorners");
    EXPECT_EQ(shown.count(), 1);
}

} // namespace
} // namespace vardenix
