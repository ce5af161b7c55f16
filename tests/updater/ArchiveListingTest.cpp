#include "updater/ArchiveListing.h"

#include "support/RunProgram.h"
#include "support/TestFolder.h"
#include "updater/Archives.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace vardenix {
namespace {

std::string Shown(const ArchiveListing& listing) {
    std::string text = listing.Type + ":";
    for (const ArchivedFile& file : listing.Files)
        text += " " + file.Name + " " + std::to_string(file.Size) +
                (file.IsPlain ? "" : " not plain");
    return text;
}

TEST(ArchiveListing, OfARealArchiveSaysWhatItHolds) {
    const tests::TestFolder folder;
    folder.Write("in/a b.txt", "hello");
    folder.Write("in/sub/c", "");
    std::filesystem::create_symlink("/etc/passwd", folder.File("in/link"));
    tests::RunProgram({"/usr/bin/env", "7zz", "a", "-snl", folder.File("u.7z"),
                       folder.File("in") + "/*"});
    const auto listing = ZipList(folder.File("u.7z"));
    ASSERT_TRUE(listing.has_value());
    EXPECT_EQ(listing->Type, "7z");
    std::map<std::string, std::pair<uint64_t, bool>> files;
    for (const ArchivedFile& file : listing->Files)
        files[file.Name] = {file.Size, file.IsPlain};
    EXPECT_EQ(files["a b.txt"], std::pair(uint64_t{5}, true));
    EXPECT_EQ(files["sub/c"], std::pair(uint64_t{0}, true));
    EXPECT_FALSE(files["sub"].second);
    EXPECT_FALSE(files["link"].second);
    EXPECT_EQ(files.size(), 4U);
}

TEST(ArchiveListing, OfWhatIsNoArchiveIsNone) {
    const tests::TestFolder folder;
    EXPECT_FALSE(ZipList(folder.Write("u.7z", "garbage")).has_value());
    EXPECT_FALSE(ZipList(folder.File("none")).has_value());
}

TEST(ArchiveListing, WhatIsNotSaidCountsAgainstAFile) {
    const std::string head = "Type = 7z\n----------\nPath = a\n";
    EXPECT_EQ(Shown(ParseArchiveListing(head + "Size = 7\nAttributes = A -rw-r--r--\n")),
              "7z: a 7");
    EXPECT_EQ(Shown(ParseArchiveListing(head + "Size = 7\nAttributes = A\n")), "7z: a 7");
    EXPECT_EQ(Shown(ParseArchiveListing(head + "Size = 7\n")), "7z: a 7 not plain");
    for (const char* kind : {"D", "AL", "A lrwxrwxrwx", "drwxr-xr-x", "D_ drwxr-xr-x",
                             "A crw-rw-rw-", "prw-r--r--"})
        EXPECT_EQ(
            Shown(ParseArchiveListing(head + "Size = 7\nAttributes = " + kind + "\n")),
            "7z: a 7 not plain")
            << kind;
    for (const char* line : {"Symbolic Link = x", "Hard Link = y", "Folder = +"})
        EXPECT_EQ(Shown(ParseArchiveListing(head + "Size = 7\nMode = -rw-r--r--\n" +
                                            line + "\n")),
                  "7z: a 7 not plain")
            << line;
    EXPECT_EQ(ParseArchiveListing(head + "Size =\nAttributes = A\n").Files[0].Size,
              UINT64_MAX);
    EXPECT_EQ(ParseArchiveListing(head + "Size = 99999999999999999999\nAttributes = A\n")
                  .Files[0]
                  .Size,
              UINT64_MAX);
    EXPECT_EQ(Shown(ParseArchiveListing("")), ":");
}

} // namespace
} // namespace vardenix
