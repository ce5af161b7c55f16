#include "support/TestFolder.h"

#include <QRegularExpression>
#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <string>
#include <vector>

namespace vardenix {
namespace {

const std::string Folder = MANUAL_FOLDER;

std::string Manual() { return tests::Slurp(Folder + "/manual.md"); }

// What the expression's group takes, wherever the manual matches.
std::vector<std::string> AllOf(const char* expression) {
    std::vector<std::string> found;
    auto matches =
        QRegularExpression(expression).globalMatch(QString::fromStdString(Manual()));
    while (matches.hasNext())
        found.push_back(matches.next().captured(1).toStdString());
    return found;
}

TEST(Manual, ShowsPicturesThatThereAre) {
    const auto pictures = AllOf(R"(!\[[^\]]+\]\(([^)]+)\))");
    const std::filesystem::path folder = Folder;
    for (const std::string& picture : pictures)
        EXPECT_TRUE(std::filesystem::exists(folder / picture)) << picture;
    EXPECT_GE(pictures.size(), 9u); // one of each window
}

// Headings become anchors: small letters and digits, blanks as hyphens, nothing else.
TEST(Manual, LinksToSectionsThatThereAre) {
    std::string anchors;
    for (const std::string& heading : AllOf("\n#+ ([^\n]+)")) {
        anchors += "#";
        for (const char letter : heading)
            if (std::isalnum(static_cast<unsigned char>(letter)) != 0)
                anchors +=
                    static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
            else if (letter == ' ' || letter == '-')
                anchors += '-';
        anchors += "\n";
    }
    const auto links = AllOf(R"(\]\((#[^)]+)\))");
    for (const std::string& link : links)
        EXPECT_NE(anchors.find(link + "\n"), std::string::npos) << link;
    EXPECT_FALSE(links.empty());
}

} // namespace
} // namespace vardenix
