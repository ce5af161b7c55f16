#include "program/ReportDetails.h"

#include "program/ProgramVersion.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

TEST(ReportDetails, TellTheVersionTheTheaterAndWhatWasDoneLast) {
    ProgramState state;
    EXPECT_EQ(ReportDetails(state),
              "Vardenix " + ProgramVersion() + "\nNothing was changed\n");
    state.Terrain.LFilename = "/a/THEATER.L2";
    state.Terrain.MapWidth = 64;
    for (int i = 0; i < 12; ++i) {
        Change change{.Name = "Paint " + std::to_string(i)};
        change.MapFile = {0, {}, {std::byte{1}}};
        state.Changes.Add(change);
    }
    const std::string text = ReportDetails(state);
    EXPECT_NE(text.find("\nTheater: /a/THEATER.L2, 64 posts a side\nChanged last:\n"),
              std::string::npos)
        << text;
    EXPECT_EQ(text.find("Paint 1\n"), std::string::npos) << text;
    EXPECT_NE(text.find(" Paint 2\n"), std::string::npos) << text;
    EXPECT_TRUE(text.ends_with(" Paint 11\n")) << text;
    EXPECT_EQ(text.find("taken back"), std::string::npos) << text;
}

TEST(ReportDetails, TellWhatWasTakenBackAsSuch) {
    ProgramState state;
    {
        const Recording made(state.Changes, {Paper::MapFile}, "Colour 7");
        state.MapFileRecord.Palette[7].Red = 1;
    }
    state.Changes.Back();
    EXPECT_TRUE(ReportDetails(state).ends_with(" Colour 7 (taken back)\n"))
        << ReportDetails(state);
}

} // namespace
} // namespace vardenix
