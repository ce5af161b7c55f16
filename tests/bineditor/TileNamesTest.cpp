#include "bineditor/TileNames.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

std::string Joined(const FamilyNames& names) {
    return names.HDay + " " + names.HNight + " " + names.MDay + " " + names.LDay + " " +
           names.MNight + " " + names.LNight + " " + names.NightSource;
}

TEST(TileNames, OneFamilyForANameWithItsHAndWithoutIt) {
    EXPECT_EQ(Joined(FamilyOf("1234.dds")),
              "H1234.dds H1234N.dds M1234.dds L1234.dds M1234N.dds L1234N.dds 1234N.dds");
    EXPECT_EQ(Joined(FamilyOf("H1234.dds")),
              "H1234.dds H1234N.dds M1234.dds L1234.dds M1234N.dds L1234N.dds "
              "H1234N.dds");
}

TEST(TileNames, ASmallHIsAnotherLetter) {
    EXPECT_EQ(Joined(FamilyOf("h12.dds")),
              "Hh12.dds Hh12N.dds Mh12.dds Lh12.dds Mh12N.dds Lh12N.dds h12N.dds");
}

TEST(TileNames, TheChosenExtensionStaysOnTheDayPictureAlone) {
    EXPECT_EQ(Joined(FamilyOf("12.a.DDS")),
              "H12.a.DDS H12.aN.dds M12.a.dds L12.a.dds M12.aN.dds L12.aN.dds 12.aN.dds");
}

TEST(TileNames, TheCatalogueHasTheHNameInUpperCase) {
    EXPECT_EQ(CatalogueName("Hab12.dds"), "HAB12.PCX");
    EXPECT_EQ(CatalogueName("H.dds"), "H.PCX");
}

TEST(TileNames, ATileProtectsSixNames) {
    std::string text;
    for (const std::string& name : WantedPictures("H1234.PCX"))
        text += name + " ";
    EXPECT_EQ(text, "H1234.dds H1234N.dds L1234.dds M1234.dds L1234N.dds M1234N.dds ");
}

} // namespace
} // namespace vardenix
