// The examples of docs/updates.md are what the program reads.
#include "support/TestFolder.h"
#include "updater/UpdateList.h"
#include "updater/VersionReply.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

// What stands between the fences of the first example behind a heading.
std::string ExampleOf(const std::string& heading) {
    const std::string page = tests::Slurp(UPDATES_PAGE);
    const size_t section = page.find("## " + heading + "\n");
    const size_t fence = page.find("```", section);
    const size_t from = page.find('\n', fence) + 1;
    if (section == std::string::npos || fence == std::string::npos)
        return {};
    return page.substr(from, page.find("```", from) - from);
}

TEST(UpdatesPage, ItsPageIsRead) {
    const VersionReply reply = ReadVersionReply(WithCrLf(ExampleOf("The page")));
    EXPECT_EQ(reply.What, VersionReply::Answer::MinorUpdate);
    EXPECT_EQ(reply.Url, "http://www.vardenix.example/files/patch-3.1.0.7z");
    EXPECT_EQ(reply.Version, "v3.1.0");
}

TEST(UpdatesPage, ItsListIsRead) {
    const auto entries = ReadUpdateList(ExampleOf("The list"));
    EXPECT_EQ(WhyListRefused(entries), "");
    std::string commands;
    for (const UpdateListEntry& entry : entries)
        commands += entry.Command + " " + entry.FileName + entry.Param + "|";
    EXPECT_EQ(commands, "COPY vardenix|COPY news.txt|MSG The palette has moved to the "
                        "right.|MSGYN Do you want to read what is new?|README "
                        "news.txt|DELETE old-tool|");
    ASSERT_FALSE(entries.empty());
    EXPECT_EQ(entries[0].Hash, "900150983CD24FB0D6963F7D28E17F72");
}

} // namespace
} // namespace vardenix
