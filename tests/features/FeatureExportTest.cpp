#include "features/FeatureExport.h"

#include "features/FeatureFile.h"
#include "support/RecordingProgress.h"
#include "support/ScriptedDialogs.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

constexpr const char* Question =
    "The tdfs of the selected region will be exported. Do you want a single file for all "
    "tdfs (otherwise a file for each tdf type will be saved)?";

FeatureSet Loaded(std::initializer_list<const char*> lines) {
    FeatureSet set;
    for (const char* line : lines)
        ParseFeatureLine(line, set);
    return set;
}

class SubExportTDFsTest : public testing::Test {
protected:
    void ExportOne(const FeatureSet& set, const PostBox& corners) {
        dialogs_.ExpectBox("TDF Export", Question, BoxAnswer::Yes);
        dialogs_.ExpectSave("Save Feature File as...", path_);
        SubExportTDFs(set, corners, dialogs_, progress_);
    }
    void ExportFolder(const FeatureSet& set, const PostBox& corners) {
        dialogs_.ExpectBox("TDF Export", Question, BoxAnswer::No);
        dialogs_.ExpectFolder("Save TDF Files...", folder_.Path());
        SubExportTDFs(set, corners, dialogs_, progress_);
    }
    // The names of the roads that a rectangle takes, by their value.
    static std::string Roads(const FeatureSet& set, const PostBox& corners) {
        std::string text;
        const FoundFeatures found = FeaturesInside(set, corners);
        for (const Feature* road : found.ByKind[5])
            text += std::to_string(road->Value) + " ";
        return text;
    }

    const tests::TestFolder folder_;
    const std::string path_ = folder_.File("all.tdf");
    tests::ScriptedDialogs dialogs_;
    tests::RecordingProgress progress_;
};

TEST_F(SubExportTDFsTest, TakesFeaturesWithAPointInsideBordersIncluded) {
    const FeatureSet set = Loaded({"ROAD 1 10,20 1", "ROAD 1 30,40 2", "ROAD 1 9.99,30 3",
                                   "ROAD 2 0,0 20,30 4", "ROAD 2 0,30 99,30 5",
                                   "ROAD 1 20,40.01 6", "ROAD 0 7"});
    EXPECT_EQ(Roads(set, {10, 20, 30, 40}), "1 2 4 ");
    EXPECT_EQ(Roads(set, {30, 40, 10, 20}), "1 2 4 ");
    EXPECT_EQ(Roads(set, {30, 20, 10, 40}), "1 2 4 ");
}

TEST_F(SubExportTDFsTest, MissingPointsLieAtZero) {
    const FeatureSet set = Loaded({"ROAD 2 50,50", "ROAD 1 50,50 9"});
    EXPECT_EQ(Roads(set, {0, 0, 1, 1}), "0 ");
    EXPECT_EQ(Roads(set, {0, 0, 0, 0}), "0 ");
    EXPECT_EQ(Roads(Loaded({"ROAD -1 8"}), {0, 0, 1, 1}), ""); // it has none to miss
    EXPECT_EQ(Roads(set, {1, 0, 1, 0}), "");
    EXPECT_EQ(Roads(set, {0, 1, 0, 1}), "");
}

TEST_F(SubExportTDFsTest, OneFileHasTheKindsInOrder) {
    const FeatureSet set =
        Loaded({"ROAD 1 1,1 6", "RIVER 1 1,1 5", "LABEL 1 1,1 4 A name", "COAST 1 1,1 3",
                "CITY 2 1.5,2.5 9,9 2", "AIRPORT 1 1,1 1 Field", "ROAD 1 50,50 7"});
    tests::Spill(path_,
                 "old and longer than what comes, so that nothing of it may stay "
                 "behind the new lines of the file: not even the last of its lines "
                 "and letters, however many of them there may have been before");
    ExportOne(set, {0, 0, 5, 5});
    EXPECT_EQ(dialogs_.LastFilter(), "Feature Files|*.tdf");
    EXPECT_EQ(dialogs_.LastButtons(), BoxButtons::YesNo);
    EXPECT_EQ(tests::Slurp(path_),
              "AIRPORT 1 1,1 1 Field\r\nCITY 2 2,2 9,9 2\r\nCOAST 1 1,1 3\r\n"
              "LABEL 1 1,1 4 A name\r\nRIVER 1 1,1 5\r\nROAD 1 1,1 6\r\n");
    EXPECT_EQ(progress_.Story(), "show|bar 100|hide");
}

TEST_F(SubExportTDFsTest, AFileForEachKindThatHasSome) {
    folder_.Write("RIVERS.TDF", "old");
    const FeatureSet set = Loaded({"AIRPORT 1 1,1 1", "RIVER 1 1,1 5", "CITY 1 9,9 2"});
    dialogs_.ExpectBox("TDF Export", Question, BoxAnswer::No);
    dialogs_.ExpectFolder("Save TDF Files...", folder_.Path());
    dialogs_.ExpectAnyBox("TDF Export", BoxAnswer::Yes, nullptr);
    SubExportTDFs(set, {0, 0, 5, 5}, dialogs_, progress_);
    // A file that is there keeps its name.
    EXPECT_EQ(folder_.Names(), "Airports.tdf RIVERS.TDF");
    EXPECT_EQ(tests::Slurp(folder_.File("Airports.tdf")), "AIRPORT 1 1,1 1\r\n");
    EXPECT_EQ(tests::Slurp(folder_.File("RIVERS.TDF")), "RIVER 1 1,1 5\r\n");
}

TEST_F(SubExportTDFsTest, FilesOfAFolderAreReplacedOnlyByWish) {
    const FeatureSet set = Loaded({"CITY 1 1,1 7", "ROAD 1 2,2 9"});
    const std::string cities = folder_.Write("Cities.tdf", "my work");
    for (const BoxAnswer answer : {BoxAnswer::No, BoxAnswer::Yes}) {
        dialogs_.ExpectBox("TDF Export", Question, BoxAnswer::No);
        dialogs_.ExpectFolder("Save TDF Files...", folder_.Path());
        dialogs_.ExpectBox("TDF Export",
                           "These files are there already, and only the features of the "
                           "selected region would be left in them:\n" +
                               cities + "\nDo you want to replace them?",
                           answer);
        SubExportTDFs(set, {0, 0, 5, 5}, dialogs_, progress_);
        const bool replaced = answer == BoxAnswer::Yes;
        EXPECT_EQ(tests::Slurp(cities), replaced ? "CITY 1 1,1 7\r\n" : "my work");
        EXPECT_EQ(folder_.Names(), replaced ? "Cities.tdf Roads.tdf" : "Cities.tdf");
    }
}

TEST_F(SubExportTDFsTest, ExportedFilesHaveTheirNames) {
    std::string names;
    for (const FeatureKind kind : FeatureKinds)
        names += ExportedFile(kind) + " ";
    EXPECT_EQ(names,
              "Airports.tdf Cities.tdf Coasts.tdf Labels.tdf Rivers.tdf Roads.tdf ");
}

TEST_F(SubExportTDFsTest, AnEmptyRegionIsToldAndWritesNothing) {
    const char* told = "No features where found in the area or none where loaded...";
    dialogs_.ExpectBox("TDF Export", Question, BoxAnswer::Yes);
    dialogs_.ExpectSave("Save Feature File as...", path_);
    dialogs_.ExpectBox("Info...", told, BoxAnswer::Ok);
    SubExportTDFs(Loaded({"CITY 1 9,9 2"}), {0, 0, 5, 5}, dialogs_, progress_);
    dialogs_.ExpectBox("TDF Export", Question, BoxAnswer::No);
    dialogs_.ExpectFolder("Save TDF Files...", folder_.Path());
    dialogs_.ExpectBox("Info...", told, BoxAnswer::Ok);
    SubExportTDFs({}, {0, 0, 5, 5}, dialogs_, progress_);
    EXPECT_EQ(folder_.Names(), "");
}

TEST_F(SubExportTDFsTest, ACancelEndsWithoutAWord) {
    const FeatureSet set = Loaded({"CITY 1 1,1 2"});
    dialogs_.ExpectBox("TDF Export", Question, BoxAnswer::No);
    dialogs_.ExpectFolder("Save TDF Files...", std::nullopt);
    SubExportTDFs(set, {0, 0, 5, 5}, dialogs_, progress_);
    dialogs_.ExpectBox("TDF Export", Question, BoxAnswer::Yes);
    dialogs_.ExpectCancel();
    SubExportTDFs(set, {0, 0, 5, 5}, dialogs_, progress_);
    EXPECT_EQ(folder_.Names(), "");
}

TEST_F(SubExportTDFsTest, AnErrorIsToldInABox) {
    const std::string path = folder_.File("none/all.tdf");
    dialogs_.ExpectBox("TDF Export", Question, BoxAnswer::Yes);
    dialogs_.ExpectSave("Save Feature File as...", path);
    bool boxed = false;
    dialogs_.WhileBoxIsUp = [&] { boxed = dialogs_.LastIcon() == BoxIcon::Critical; };
    dialogs_.ExpectBox("Error...",
                       "ERROR number 76\nPath not found\nwriting " + path +
                           ": its folder is not there",
                       BoxAnswer::Ok);
    SubExportTDFs(Loaded({"CITY 1 1,1 2"}), {0, 0, 5, 5}, dialogs_, progress_);
    EXPECT_TRUE(boxed);
}

} // namespace
} // namespace vardenix
