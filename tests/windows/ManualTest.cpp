#include "support/TestFolder.h"
#include "workspace/windows/Actions.h"

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <regex>
#include <string>

namespace vardenix {
namespace {

const std::string Folder = MANUAL_FOLDER;

std::string Manual() { return tests::Slurp(Folder + "/manual.md"); }

std::string Between(const std::string& text, const std::string& begin,
                    const std::string& end) {
    const size_t from = text.find(begin);
    const size_t to = text.find(end);
    if (from == std::string::npos || to == std::string::npos)
        return "no " + begin;
    return text.substr(from + begin.size(), to - from - begin.size());
}

// When a key changes, this prints the table that the manual is to have.
TEST(Manual, ListsTheKeysThatThereAre) {
    EXPECT_EQ(Between(Manual(), "<!-- keys: begin -->\n", "<!-- keys: end -->"),
              ShortcutList().toStdString());
}

TEST(Manual, ShowsPicturesThatThereAre) {
    const std::string manual = Manual();
    const std::regex picture(R"(!\[[^\]]+\]\(([^)]+)\))");
    int shown = 0;
    for (std::sregex_iterator found(manual.begin(), manual.end(), picture), none;
         found != none; ++found, ++shown)
        EXPECT_TRUE(std::filesystem::exists(Folder + "/" + (*found)[1].str()))
            << (*found)[1];
    EXPECT_GE(shown, 9); // one of each window
}

// Headings become anchors: small letters and digits, blanks as hyphens, nothing else.
TEST(Manual, LinksToSectionsThatThereAre) {
    const std::string manual = Manual();
    std::string anchors;
    const std::regex heading("\n#+ ([^\n]+)");
    for (std::sregex_iterator found(manual.begin(), manual.end(), heading), none;
         found != none; ++found) {
        anchors += "#";
        for (const char letter : (*found)[1].str())
            if (std::isalnum(static_cast<unsigned char>(letter)) != 0)
                anchors +=
                    static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
            else if (letter == ' ' || letter == '-')
                anchors += '-';
        anchors += "\n";
    }
    const std::regex link(R"(\]\((#[^)]+)\))");
    int links = 0;
    for (std::sregex_iterator found(manual.begin(), manual.end(), link), none;
         found != none; ++found, ++links)
        EXPECT_NE(anchors.find((*found)[1].str() + "\n"), std::string::npos)
            << (*found)[1];
    EXPECT_GT(links, 0);
}

} // namespace
} // namespace vardenix
