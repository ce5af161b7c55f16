#include "features/FeatureFile.h"

#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <random>
#include <sstream>

namespace vardenix {
namespace {

// "1: 2 points 10,20 30,40 value 5 [NAME]" for each feature of a list.
std::string Told(const FeatureList& list) {
    std::ostringstream text;
    text.precision(17);
    for (size_t i = 1; i < list.size(); ++i) {
        const Feature& feature = list[i];
        text << (i == 1 ? "" : "; ") << i << ": " << feature.PointCount << " points";
        for (const FeaturePoint& point : feature.Points)
            text << ' ' << point.X << ',' << point.Y;
        text << " value " << feature.Value << " [" << feature.Text << "]";
    }
    return text.str();
}

std::string All(const FeatureSet& set) {
    return "A " + Told(set.Airports) + "|C " + Told(set.Cities) + "|S " +
           Told(set.Coasts) + "|L " + Told(set.Labels) + "|V " + Told(set.Rivers) +
           "|R " + Told(set.Roads);
}

FeatureSet Parsed(const std::string& line) {
    FeatureSet set;
    ParseFeatureLine(line, set);
    return set;
}

TEST(ParseFeatureLine, ReadsCountPointsValueAndName) {
    EXPECT_EQ(Told(Parsed("AIRPORT 1 512.25,300 7 Kimpo Air Base").Airports),
              "1: 1 points 512.25,300 value 7 [Kimpo Air Base]");
    EXPECT_EQ(Told(Parsed("ROAD 3 1,2 3,4 5,6 -9").Roads),
              "1: 3 points 1,2 3,4 5,6 value -9 []");
}

TEST(ParseFeatureLine, EachKeywordHasItsList) {
    EXPECT_EQ(Parsed("AIRPORT 0 0").Airports.size(), 2U);
    EXPECT_EQ(Parsed("CITY 0 0").Cities.size(), 2U);
    EXPECT_EQ(Parsed("COAST 0 0").Coasts.size(), 2U);
    EXPECT_EQ(Parsed("LABEL 0 0").Labels.size(), 2U);
    EXPECT_EQ(Parsed("RIVER 0 0").Rivers.size(), 2U);
    EXPECT_EQ(Parsed("ROAD 0 0").Roads.size(), 2U);
}

TEST(ParseFeatureLine, TakesKeywordsInAnyCase) {
    EXPECT_EQ(Parsed("city 0 0").Cities.size(), 2U);
    EXPECT_EQ(Parsed("rIvEr 0 0").Rivers.size(), 2U);
}

TEST(ParseFeatureLine, AnUnknownFirstWordLeavesNoTrace) {
    for (const char* line : {"", "   ", "\t", "# ROAD 1 1,1 0", "ROADS 0 0", "ROA 0 0",
                             "AIRPORTAIRPORT 0 0", "1 ROAD 0", ";"})
        EXPECT_EQ(Parsed(line).Count(), 0U) << line;
}

TEST(ParseFeatureLine, AnyRunOfBlanksAndTabsParts) {
    EXPECT_EQ(Told(Parsed("\t LABEL\t\t1  3,4 \t 5   a \t b  c  ").Labels),
              "1: 1 points 3,4 value 5 [a b c]");
}

TEST(ParseFeatureLine, OnlyAirportsAndLabelsHaveAText) {
    EXPECT_EQ(Parsed("CITY 1 1,1 0 Seoul").Cities[1].Text, "");
    EXPECT_EQ(Parsed("ROAD 1 1,1 0 Route 66").Roads[1].Text, "");
    EXPECT_EQ(Parsed("AIRPORT 1 1,1 0").Airports[1].Text, "");
}

TEST(ParseFeatureLine, CountsRoundHalfToEven) {
    EXPECT_EQ(Parsed("ROAD 2.5 1,1 2,2 4").Roads[1].PointCount, 2);
    EXPECT_EQ(Parsed("ROAD 1.5 1,1 2,2 4").Roads[1].PointCount, 2);
    EXPECT_EQ(Parsed("ROAD 0 2.5").Roads[1].Value, 2);
    EXPECT_EQ(Parsed("ROAD 0 -3.5").Roads[1].Value, -4);
}

TEST(ParseFeatureLine, ACountThatFitsNoSixteenBitsLeavesNothing) {
    for (const char* count :
         {"32768", "32767.5", "2000000000", "1e999", "-32769", "-1e9"})
        EXPECT_EQ(Parsed(std::string("ROAD ") + count + " 1,1 2,2 0").Count(), 0U)
            << count;
    EXPECT_EQ(Parsed("ROAD").Count(), 0U);
    EXPECT_EQ(Parsed("ROAD  \t").Count(), 0U);
}

TEST(ParseFeatureLine, AGreatCountTakesNoMoreMemoryThanItsPoints) {
    const FeatureSet set = Parsed("ROAD 32767 1,1 2,2");
    EXPECT_EQ(Told(set.Roads), "1: 32767 points 1,1 2,2 value 0 []");
    EXPECT_LT(set.Roads[1].Points.capacity(), 10U);
}

TEST(ParseFeatureLine, AShortLineKeepsItsElement) {
    EXPECT_EQ(Told(Parsed("CITY 3 1,1").Cities), "1: 3 points 1,1 value 0 []");
    EXPECT_EQ(Told(Parsed("AIRPORT 1 1,1").Airports), "1: 1 points 1,1 value 0 []");
    EXPECT_EQ(Told(Parsed("AIRPORT 0").Airports), "1: 0 points value 0 []");
}

TEST(ParseFeatureLine, ABadPointEndsTheLineAndKeepsWhatWasRead) {
    for (const char* bad : {"x,1", "1", "1,", ",1", ",", "1;1", "1,1x", "nan,1", "inf,0",
                            "1,-inf", "0x10,1", "1e999,1", "--1,1", "1.2.3,4", "1,+",
                            "1e,1", "1e5x,1", "1,2e+", ".,1"})
        EXPECT_EQ(Told(Parsed("AIRPORT 3 7,8 " + std::string(bad) + " 1,1 5 N").Airports),
                  "1: 3 points 7,8 value 0 []")
            << bad;
}

TEST(ParseFeatureLine, TheCountAndTheValueAreWhatTheirTextBeginsWith) {
    EXPECT_EQ(Told(Parsed("ROAD 1x 1,1 12abc").Roads), "1: 1 points 1,1 value 12 []");
    EXPECT_EQ(Told(Parsed("ROAD abc def").Roads), "1: 0 points value 0 []");
}

TEST(ParseFeatureLine, AValueThatDoesNotFitEndsTheLine) {
    EXPECT_EQ(Told(Parsed("LABEL 1 1,1 2147483648 X").Labels),
              "1: 1 points 1,1 value 0 []");
    EXPECT_EQ(Told(Parsed("LABEL 1 1,1 -2147483648 X").Labels),
              "1: 1 points 1,1 value -2147483648 [X]");
}

TEST(ParseFeatureLine, ANegativeCountKeepsItsElementWithoutPoints) {
    EXPECT_EQ(Told(Parsed("LABEL -2 1,1 5 X").Labels), "1: -2 points value 0 []");
}

TEST(ParsePoint, TakesTheFirstTwoNumbers) {
    const auto point = ParsePoint("1.5,-2e1,99,x");
    ASSERT_TRUE(point);
    EXPECT_EQ(point->X, 1.5);
    EXPECT_EQ(point->Y, -20);
    EXPECT_TRUE(ParsePoint("+.5,5."));
    EXPECT_TRUE(ParsePoint("1d2,0"));
    EXPECT_EQ(ParsePoint("1e+2,5e-1")->X, 100);
    EXPECT_EQ(ParsePoint("1e+2,5e-1")->Y, 0.5);
}

// Straight from the description, with the library's own splitting and numbers.
FeatureSet SlowlyParsed(std::string line) {
    FeatureSet set;
    for (char& c : line)
        c = c == '\t' ? ' ' : c;
    std::vector<std::string> pieces(1);
    std::istringstream words(line);
    for (std::string word; std::getline(words, word, ' ');)
        if (!word.empty())
            pieces.push_back(word);
    if (pieces.size() < 3)
        return set;
    for (char& c : pieces[1])
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
    FeatureList* list = pieces[1] == "AIRPORT" ? &set.Airports
                        : pieces[1] == "CITY"  ? &set.Cities
                        : pieces[1] == "COAST" ? &set.Coasts
                        : pieces[1] == "LABEL" ? &set.Labels
                        : pieces[1] == "RIVER" ? &set.Rivers
                        : pieces[1] == "ROAD"  ? &set.Roads
                                               : nullptr;
    const double n = std::nearbyint(std::strtod(pieces[2].c_str(), nullptr));
    if (list == nullptr || std::abs(n) > 32767)
        return set;
    Feature& feature = list->emplace_back();
    feature.PointCount = static_cast<int32_t>(n);
    if (n < 0)
        return set;
    for (size_t k = 1; k <= static_cast<size_t>(n); ++k) {
        if (k + 2 >= pieces.size())
            return set;
        const std::string& token = pieces[k + 2];
        char* comma = nullptr;
        char* end = nullptr;
        const double x = std::strtod(token.c_str(), &comma);
        if (comma == token.c_str() || *comma != ',')
            return set;
        const double y = std::strtod(comma + 1, &end);
        if (end == comma + 1 || (*end != '\0' && *end != ','))
            return set;
        feature.Points.push_back({x, y});
    }
    const size_t at = static_cast<size_t>(n) + 3;
    if (at >= pieces.size())
        return set;
    feature.Value =
        static_cast<int32_t>(std::nearbyint(std::strtod(pieces[at].c_str(), nullptr)));
    if (list == &set.Airports || list == &set.Labels)
        for (size_t i = at + 1; i < pieces.size(); ++i)
            feature.Text += (feature.Text.empty() ? "" : " ") + pieces[i];
    return set;
}

TEST(ParseFeatureLine, ReadsAnyLineAsASlowReaderDoes) {
    const std::vector<std::string> words{
        "AIRPORT", "city", "Coast", "LABEL", "RIVER", "road", "lake",      "0",
        "1",       "2",    "3",     "-1",    "40000", "1,2",  "3.5,-4.25", "5,6,7",
        "x,1",     "8",    "2.5",   "Name",  "of",    "7x",   ",",         "1,"};
    std::mt19937 random(20);
    const auto below = [&](size_t bound) { return random() % bound; };
    for (int i = 0; i < 20000; ++i) {
        std::string line;
        if (below(4) == 0)
            line = " ";
        line += words[below(7)];
        for (size_t n = below(9); n > 0; --n)
            line += std::string(1 + below(2), below(3) == 0 ? '\t' : ' ') +
                    words[below(3) == 0 ? below(words.size()) : 7 + below(8)];
        ASSERT_EQ(All(Parsed(line)), All(SlowlyParsed(line))) << line;
    }
}

TEST(LoadFeatureFile, TakesEveryKindOfLineEnd) {
    const tests::TestFolder folder;
    FeatureSet set;
    LoadFeatureFile(
        folder.Write("a.tdf", "ROAD 1 1,1 1\r\nROAD 1 2,2 2\nx\rROAD 1 3,3 3"), set);
    EXPECT_EQ(Told(set.Roads), "1: 1 points 1,1 value 1 []; 2: 1 points 2,2 value 2 []; "
                               "3: 1 points 3,3 value 3 []");
}

TEST(LoadFeatureFile, LoadingAFileTwiceDoublesItsFeatures) {
    const tests::TestFolder folder;
    const std::string path = folder.Write("a.tdf", "ROAD 0 1\nCITY 0 2\nROAD 0 3\n");
    FeatureSet set;
    LoadFeatureFile(path, set);
    LoadFeatureFile(path, set);
    EXPECT_EQ(set.Count(), 6U);
    EXPECT_EQ(Told(set.Roads), "1: 0 points value 1 []; 2: 0 points value 3 []; "
                               "3: 0 points value 1 []; 4: 0 points value 3 []");
}

TEST(LoadFeatureFile, AFileThatIsNotThereChangesNothing) {
    const tests::TestFolder folder;
    FeatureSet set;
    ParseFeatureLine("ROAD 0 1", set);
    EXPECT_THROW(LoadFeatureFile(folder.File("none.tdf"), set), RuntimeError);
    EXPECT_EQ(set.Count(), 1U);
}

TEST(LoadFeatureFile, TooManyFeaturesAreRefusedAndNoneIsKept) {
    const tests::TestFolder folder;
    std::string text;
    for (size_t i = 0; i < MostFeatures + 1; ++i)
        text += "CITY 0\n";
    const std::string path = folder.Write("many.tdf", text);
    FeatureSet set;
    try {
        LoadFeatureFile(path, set);
        FAIL() << "loaded";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::OutOfMemory);
        EXPECT_NE(error.Detail().find(path), std::string::npos);
    }
    EXPECT_EQ(set.Count(), 0U);
}

TEST(LoadFeatureFile, OneEndlessLineIsJustALine) {
    const tests::TestFolder folder;
    std::string text = "LABEL 1 1,1 0";
    for (int i = 0; i < 500000; ++i)
        text += " ab";
    FeatureSet set;
    LoadFeatureFile(folder.Write("line.tdf", text), set);
    EXPECT_EQ(set.Labels.at(1).Text.size(), 500000U * 3 - 1);
}

TEST(FeatureToLine, WritesWholeNumbers) {
    const FeatureSet set = Parsed("AIRPORT 2 1.5,2.5 -0.4,1e6 7 A  B");
    EXPECT_EQ(FeatureToLine(set.Airports[1], FeatureKind::Airport),
              "AIRPORT 2 2,2 0,1000000 7 A B");
    EXPECT_EQ(FeatureToLine(Parsed("RIVER 0 -3").Rivers[1], FeatureKind::River),
              "RIVER 0 -3");
}

TEST(FeatureToLine, MissingPointsAreAtZero) {
    const FeatureSet set = Parsed("COAST 3 5,6 x");
    EXPECT_EQ(FeatureToLine(set.Coasts[1], FeatureKind::Coast), "COAST 3 5,6 0,0 0,0 0");
}

TEST(ClearFeatures, EmptiesAllLists) {
    FeatureSet set = Parsed("RIVER 0 1");
    ClearFeatures(set);
    EXPECT_EQ(set.Count(), 0U);
    EXPECT_EQ(set.Rivers.size(), 1U);
}

} // namespace
} // namespace vardenix
