#include "updater/UpdateList.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

std::string Shown(const std::vector<UpdateListEntry>& entries) {
    std::string text;
    for (const UpdateListEntry& entry : entries)
        text += entry.Command + "|" + entry.FileName + "|" + entry.Hash + "|" +
                entry.Param + "\n";
    return text;
}

TEST(UpdateList, HasACommandALine) {
    EXPECT_EQ(Shown(ReadUpdateList("COPY*a.txt*00FF\r\n"
                                   "MSG*Hello there\r\n"
                                   "\r\n"
                                   "   \r\n"
                                   "msgyn*Sure?\n"
                                   "README*readme.txt\r"
                                   "DELETE*old.dll")),
              "COPY|a.txt|00FF|\n"
              "MSG|||Hello there\n"
              "MSGYN|||Sure?\n"
              "README|||readme.txt\n"
              "DELETE|||old.dll\n");
}

TEST(UpdateList, LinesAreTrimmedAndTheirFirstFieldAndTheNameOfACopy) {
    EXPECT_EQ(Shown(ReadUpdateList("  copy * a b.txt * 00ff *more  \n"
                                   " Msg * two words \n")),
              "COPY|a b.txt| 00ff |\n"
              "MSG||| two words\n");
}

TEST(UpdateList, LinesWithoutASecondFieldArePassedOver) {
    EXPECT_EQ(Shown(ReadUpdateList("COPY\nnothing\nMSG*\n*x\nCOPY*a\nDANCE*x*y")),
              "MSG|||\n|||x\nCOPY|a||\nDANCE|||x\n");
}

TEST(UpdateList, TextsAreWindows1252) {
    EXPECT_EQ(Shown(ReadUpdateList("MSG*\xE4\x80")), "MSG|||\xC3\xA4\xE2\x82\xAC\n");
}

TEST(UpdateList, NamesMustBeThoseOfFilesInTheFolder) {
    for (const auto& [line, why] :
         {std::pair{"COPY*../a*00", "holds a slash"},
          {"COPY*a\\b*00", "holds a slash"},
          {"COPY*C:a*00", "holds a colon"},
          {"COPY*..*00", "holds \"..\""},
          {"COPY*a..b*00", "holds \"..\""},
          {"COPY**00", "is empty"},
          {"COPY*.*00", "is a folder's"},
          {"COPY*a\tb*00", "holds a control character"},
          {"README*/etc/passwd", "holds a slash"},
          {"DELETE*../a", "holds a slash"},
          {"DELETE*", "is empty"},
          {"COPY*loader.LST*00", "is that of the loader's own list"}}) {
        const std::string refused =
            WhyListRefused(ReadUpdateList(std::string("MSG*x\nCOPY*fine*00\n") + line));
        EXPECT_TRUE(refused.starts_with("The name \"")) << line << refused;
        EXPECT_TRUE(refused.ends_with(std::string(" in update.lst ") + why + "."))
            << refused;
    }
    EXPECT_NE(WhyListRefused(ReadUpdateList("COPY*" + std::string(256, 'a') + "*00")),
              "");
    // Texts are no names.
    EXPECT_EQ(WhyListRefused(ReadUpdateList("COPY*a b.(1)$*00\nMSG*../x\nMSGYN*/\nX*/")),
              "");
}

} // namespace
} // namespace vardenix
