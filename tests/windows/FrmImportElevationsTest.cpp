#include "world/windows/FrmImportElevations.h"

#include "platform/windows/PinkBox.h"
#include "windows/WindowTest.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>

namespace vardenix {
namespace {

class ImportElevationsTest : public testing::Test {
protected:
    ImportElevationsTest() {
        terrain_.MapWidth = 16;
        window_.show();
    }
    template <typename Control>
    Control& The(const char* name) {
        return tests::Find<Control>(window_, name);
    }
    bool Can(const char* button) { return The<QPushButton>(button).isEnabled(); }

    Terrain terrain_;
    FrmImportElevations window_{terrain_};
};

TEST_F(ImportElevationsTest, WithoutAMapNothingIsPossible) {
    EXPECT_FALSE(Can("cmdPreview"));
    EXPECT_FALSE(Can("cmdImport"));
    window_.SetMap("/maps/a b.tif");
    EXPECT_TRUE(Can("cmdPreview"));
    EXPECT_TRUE(Can("cmdImport"));
    EXPECT_EQ(window_.Wish().Map, "/maps/a b.tif");
}

TEST_F(ImportElevationsTest, BeginsWithMetresThroughThePlaceIntoLevelTwo) {
    const HeightsWish wish = window_.Wish();
    EXPECT_FALSE(wish.Over.has_value());
    EXPECT_EQ(wish.Into, Layer::Posts);
    EXPECT_EQ(wish.How, Resampling::Bilinear);
    EXPECT_TRUE(wish.Units.Metres);
    EXPECT_EQ(wish.Units.Scale, 1);
    EXPECT_EQ(wish.Units.Offset, 0);
    EXPECT_EQ(wish.Without, WithoutData::Leave);
    EXPECT_FALSE(wish.NoData.has_value());
    EXPECT_FALSE(The<QRadioButton>("optHeights").isEnabled());
    EXPECT_FALSE(The<QSpinBox>("spnX1").isEnabled());
}

TEST_F(ImportElevationsTest, FieldsSayWhatIsWanted) {
    The<QLineEdit>("txtMapSystem").setText(" EPSG:4326 ");
    EXPECT_EQ(window_.Wish().MapSystem, "EPSG:4326");
    The<QComboBox>("cmbUnit").setCurrentIndex(1);
    The<QComboBox>("cmbHow").setCurrentIndex(2);
    The<QComboBox>("cmbWithout").setCurrentIndex(1);
    The<QLineEdit>("txtScale").setText("0.5");
    The<QLineEdit>("txtOffset").setText("-12.25");
    The<QLineEdit>("txtNoData").setText("-9999");
    The<QRadioButton>("optStretch").click();
    The<QSpinBox>("spnX1").setValue(9);
    The<QSpinBox>("spnX2").setValue(3);
    The<QSpinBox>("spnY1").setValue(2);
    const HeightsWish wish = window_.Wish();
    EXPECT_EQ(wish.How, Resampling::Average);
    EXPECT_FALSE(wish.Units.Metres);
    EXPECT_EQ(wish.Units.Scale, 0.5);
    EXPECT_EQ(wish.Units.Offset, -12.25);
    EXPECT_EQ(wish.Without, WithoutData::Zero);
    EXPECT_EQ(wish.NoData, -9999);
    ASSERT_TRUE(wish.Over.has_value());
    EXPECT_EQ(wish.Over->X1, 3);
    EXPECT_EQ(wish.Over->X2, 9);
    EXPECT_EQ(wish.Over->Y1, 2);
    EXPECT_EQ(wish.Over->Y2, 15);
    EXPECT_EQ(wish.MapSystem, ""); // of no use then
}

TEST_F(ImportElevationsTest, ANumberThatIsNoneIsPink) {
    window_.SetMap("a.tif");
    The<QLineEdit>("txtScale").setText("much");
    EXPECT_TRUE(IsPink(The<QLineEdit>("txtScale")));
    EXPECT_FALSE(Can("cmdImport"));
    The<QLineEdit>("txtScale").setText("2");
    EXPECT_FALSE(IsPink(The<QLineEdit>("txtScale")));
    EXPECT_FALSE(IsPink(The<QLineEdit>("txtNoData"))); // may be empty
    EXPECT_TRUE(Can("cmdImport"));
}

TEST_F(ImportElevationsTest, TheBoxIsThatOfTheSelectionOrTheWholeTheater) {
    The<QRadioButton>("optStretch").click();
    EXPECT_FALSE(Can("cmdSelection"));
    window_.SetSelection(PostBox{1, 2, 3, 4});
    The<QPushButton>("cmdSelection").click();
    EXPECT_EQ(window_.Wish().Over->X1, 1);
    EXPECT_EQ(window_.Wish().Over->Y2, 4);
    The<QPushButton>("cmdWhole").click();
    EXPECT_EQ(window_.Wish().Over->X1, 0);
    EXPECT_EQ(window_.Wish().Over->Y2, 15);
    // Another theater has other boxes.
    window_.hide();
    terrain_.MapWidth = 32;
    window_.show();
    EXPECT_EQ(window_.Wish().Over->X2, 31);
}

TEST_F(ImportElevationsTest, LoadedHeightsCanBeChosen) {
    window_.hide();
    terrain_.Elevations.EMapWidth = 64;
    window_.show();
    The<QRadioButton>("optHeights").click();
    EXPECT_EQ(window_.Wish().Into, Layer::Heights);
}

TEST_F(ImportElevationsTest, WhatWasToldHoldsUntilTheWishIsAnother) {
    const QSignalSpy changed(&window_, &FrmImportElevations::WishChanged);
    window_.Tell("3 heights");
    EXPECT_EQ(The<QLabel>("lblTold").text(), "3 heights");
    The<QComboBox>("cmbUnit").setCurrentIndex(1);
    EXPECT_EQ(The<QLabel>("lblTold").text(), "");
    EXPECT_EQ(changed.count(), 1);
    window_.hide();
    EXPECT_EQ(changed.count(), 2);
}

TEST_F(ImportElevationsTest, EscStopsTheWorkBeforeItClosesTheWindow) {
    window_.SetMap("a.tif");
    window_.SetWorking(true);
    EXPECT_TRUE(The<QProgressBar>("barWork").isVisible());
    EXPECT_FALSE(Can("cmdImport"));
    EXPECT_FALSE(The<QLineEdit>("txtMap").isEnabled());
    EXPECT_FALSE(window_.IsStopped());
    QTest::keyClick(&window_, Qt::Key_Escape);
    EXPECT_TRUE(window_.IsStopped());
    EXPECT_TRUE(window_.isVisible());
    window_.SetWorking(false);
    EXPECT_FALSE(The<QProgressBar>("barWork").isVisible());
    EXPECT_TRUE(Can("cmdImport"));
    EXPECT_FALSE(The<QSpinBox>("spnX1").isEnabled());
    QTest::keyClick(&window_, Qt::Key_Escape);
    EXPECT_FALSE(window_.isVisible());
}

} // namespace
} // namespace vardenix
