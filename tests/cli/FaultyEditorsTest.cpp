// The commands of the editors of catalogue, map and overlays.
#include "cli/FaultyCommands.h"

namespace vardenix::tests {
namespace {

class FaultyEditors : public FaultyCommands {
protected:
    std::string File(const std::string& name, const std::string& bytes) {
        std::string path = folder_.Write(name, bytes);
        old_ = OnDiskNow();
        return path;
    }
};

TEST_F(FaultyEditors, ADeletedSetLosesNeitherCatalogueNorPosts) {
    TryEveryCall({"bin", "delete-set", "0"}, {"bin", "list"});
}

TEST_F(FaultyEditors, AnAreaLosesNothingOfTheCatalogue) {
    TryEveryCall({"bin", "areas", "16", "--add", "thick forest,100,200.5,-3"},
                 {"bin", "list"});
}

TEST_F(FaultyEditors, ASearchThatSetsLosesNothing) {
    TryEveryCall({"search", "--cell", "0:tile=16", "--set", "elevation=-7", "--count"},
                 {"get", "0", "0"});
}

TEST_F(FaultyEditors, AStampedRegionLosesNothing) {
    const std::string region = File("region.exp", Int32Bytes(1) + Int32Bytes(2) +
                                                      Int32Bytes(16) + Int32Bytes(1));
    TryEveryCall({"region", "import", region, "20", "10"}, {"get", "0", "0"});
}

TEST_F(FaultyEditors, AnExportedRegionIsWholeOrTheOlderOne) {
    const std::string region = File("region.exp", "an older region");
    leftovers_ = {"region.expx"};
    TryEveryCall({"region", "export", region, "4", "6", "3", "5"}, {"get", "0", "0"});
}

TEST_F(FaultyEditors, ExportedFeaturesOfAFolderChangeTogether) {
    const std::string features = File("in.tdf", "CITY 1 2,1 7\nROAD 2 2,2 50,50 8\n");
    File("out/Cities.tdf", "older cities");
    File("out/Roads.tdf", "older roads");
    leftovers_ = {};
    TryEveryCall({"features", "export", "0", "0", "9", "9", features, "--out",
                  folder_.File("out"), "--overwrite"},
                 {"features", "info", folder_.File("out/Cities.tdf"),
                  folder_.File("out/Roads.tdf")});
}

TEST_F(FaultyEditors, ADerivedFileIsWholeOrTheOlderOne) {
    const std::string heights = File("theater.mea", "older heights");
    leftovers_ = {"theater.meax"};
    TryEveryCall({"mea", heights}, {"get", "0", "0"});
}

TEST_F(FaultyEditors, AColorLosesNothingOfTheMapFile) {
    TryEveryCall({"map", "color", "7", "1", "2", "3"}, {"map", "show"});
}

TEST_F(FaultyEditors, AnImportedPaletteLosesNothingOfTheMapFile) {
    const std::string palette = File("in.act", std::string(768, '\5'));
    TryEveryCall({"map", "import-palette", palette}, {"map", "show"});
}

TEST_F(FaultyEditors, AnExportedPaletteIsWholeOrTheOlderOne) {
    const std::string palette = File("out.act", "older colors");
    leftovers_ = {"out.actx"};
    TryEveryCall({"map", "export-palette", palette}, {"map", "show"});
}

} // namespace
} // namespace vardenix::tests
