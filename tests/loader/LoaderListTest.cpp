#include "loader/LoaderList.h"

#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace vardenix {
namespace {

using tests::Slurp;
using tests::TestFolder;

std::string Steps(const char* text) {
    std::string shown;
    for (const LoaderStep& step : ReadLoaderList(text))
        shown += (step.What == LoaderStep::Kind::Replace ? "replace " : "delete ") +
                 step.Name + "|";
    return shown;
}

TEST(LoaderList, NamesWhatReplacesAndWhatGoes) {
    EXPECT_EQ(Steps("vardenix$\r\n*\r\nold file.dll*\r\n\r\n"),
              "replace vardenix|delete old file.dll|");
    EXPECT_EQ(Steps(""), "");
    EXPECT_EQ(Steps("a$$\nb$"), "replace a$|replace b|");
}

TEST(LoaderList, AnyOtherLineSpoilsItWhole) {
    for (const char* text : {"a$\n../b$", "/etc/passwd*", "a", "$", "a\\b$", "a:b*",
                             "..*", "a\tb$", "a$\n ..$"})
        EXPECT_THROW(ReadLoaderList(text), RuntimeError) << text;
}

// What the folder's log says, without the time in front of each line.
std::string Log(const TestFolder& folder) {
    const std::string log = Slurp(folder.File("Update.log"));
    std::string told;
    for (size_t at = 0; at < log.size();) {
        const size_t end = log.find("\r\n", at);
        const std::string line = log.substr(at, end - at);
        told += line.substr(line.find("> ") + 2) + "|";
        at = end + 2;
    }
    return told;
}

TEST(FinishUpdate, PutsTheWaitingFilesInTheirPlacesAndDeletesTheOthers) {
    const TestFolder folder;
    folder.Write("vardenix", "old");
    folder.Write("vardenix$", "new");
    folder.Write("old.dll", "to go");
    folder.Write("Loader.lst", "vardenix$\r\nold.dll*\r\nnever there*\r\n");
    FinishUpdate(folder.Path());
    EXPECT_EQ(Slurp(folder.File("vardenix")), "new");
    EXPECT_EQ(Log(folder), "The loader has finished the update|");
    EXPECT_EQ(folder.Names(), "Update.log vardenix");
}

TEST(FinishUpdate, LeavesAFolderWithoutAListAlone) {
    const TestFolder folder;
    folder.Write("vardenix$", "new");
    FinishUpdate(folder.Path());
    EXPECT_EQ(folder.Names(), "vardenix$");
}

TEST(FinishUpdate, DoesNothingOfAListWithANameElsewhere) {
    const TestFolder folder;
    folder.Write("outside", "stays");
    folder.Write("program/vardenix", "old");
    folder.Write("program/vardenix$", "new");
    folder.Write("program/Loader.lst", "vardenix$\n../outside*\n");
    FinishUpdate(folder.File("program"));
    EXPECT_EQ(Slurp(folder.File("program/vardenix")), "old");
    EXPECT_EQ(Slurp(folder.File("outside")), "stays");
    EXPECT_EQ(Slurp(folder.File("program/vardenix$")), "new");
}

TEST(FinishUpdate, PutsBackWhatWasKeptWhenAFileIsMissing) {
    const TestFolder folder;
    folder.Write("a", "old a");
    folder.Write("a$", "new a");
    folder.Write("b", "half new b");
    folder.Write("UpdateKept/1", "old a");
    folder.Write("UpdateKept/2", "old b");
    folder.Write("UpdateKept/kept.lst", "+a\n+b\n-made\n");
    folder.Write("made", "by the update");
    folder.Write("Loader.lst", "a$\nb$\n");
    FinishUpdate(folder.Path());
    EXPECT_EQ(Slurp(folder.File("a")), "old a");
    EXPECT_EQ(Slurp(folder.File("b")), "old b");
    EXPECT_EQ(folder.Names().find("made"), std::string::npos);
    EXPECT_EQ(folder.Names().find("UpdateKept"), std::string::npos);
    EXPECT_TRUE(Log(folder).starts_with("The loader could not finish the update. "));
    EXPECT_TRUE(Log(folder).ends_with("The files are the old ones|"));
}

} // namespace
} // namespace vardenix
