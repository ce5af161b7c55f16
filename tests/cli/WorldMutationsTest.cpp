// Damaged maps of every kind through the command line: a sentence or a result, and
// nothing left behind. VARDENIX_WORLD_MUTATIONS tells how many, VARDENIX_WORLD_SEED
// which.
#include "cli/WorldTheater.h"

#include <cstdlib>
#include <filesystem>
#include <random>

namespace vardenix::tests {
namespace {

namespace fs = std::filesystem;

int FromEnvironment(const char* name, int otherwise) {
    const char* const told = std::getenv(name);
    return told == nullptr ? otherwise : std::atoi(told);
}

// Cut, torn and overwritten bytes; now and then numbers as headers lie with.
std::string Mutated(std::string bytes, std::mt19937& random) {
    const auto below = [&random](size_t limit) { return random() % limit; };
    const auto changes = 1 + below(4);
    for (size_t i = 0; i < changes && !bytes.empty(); ++i) {
        // Headers and directories stand at both ends.
        const size_t span =
            below(3) == 0 ? bytes.size() : std::min<size_t>(256, bytes.size());
        const size_t at = below(4) == 0 ? bytes.size() - 1 - below(span) : below(span);
        switch (below(6)) {
        case 0:
            bytes.resize(at);
            break;
        case 1:
            bytes[at] = static_cast<char>(random());
            break;
        case 2:
            bytes[at] = static_cast<char>(bytes[at] ^ (1 << below(8)));
            break;
        case 3:
            for (size_t k = at; k < std::min(at + 4, bytes.size()); ++k)
                bytes[k] = static_cast<char>(k == at + 3 ? 0x7F : 0xFF);
            break;
        case 4:
            bytes.insert(at, bytes.substr(below(bytes.size()), below(64)));
            break;
        default:
            bytes.erase(at, below(64));
        }
    }
    return bytes;
}

class WorldMutations : public WorldTheater {
protected:
    // A map of which one file is damaged, and the command that takes it.
    struct Target {
        std::string File;
        std::vector<std::string> Command;
    };

    WorldMutations() {
        fs::create_directory(folder_.File("tmp"));
        told_ = folder_.Write("in.tdf", "AIRPORT 1 10,20 3 West\r\nCOAST 2 0,0 9,9 1\r\n"
                                        "CITY 4 5,5 5,9 9,9 5,5 2\r\n");
    }
    ProgramResult Guarded(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"/usr/bin/timeout", "60", VARDENIX_CLI});
        arguments.insert(arguments.end(), {"--theater", folder_.File("theater")});
        return RunProgram(arguments, {"XDG_DATA_HOME=" + folder_.File("data"),
                                      "HOME=" + folder_.File("data"),
                                      "TMPDIR=" + folder_.File("tmp")});
    }
    std::string TheaterOnDisk() {
        return Slurp(folder_.File("theater/terrain/theater.L2")) +
               Slurp(folder_.File("theater/terrain/theater.O2"));
    }
    std::string FilesThere() {
        std::string names;
        for (const auto& entry : fs::recursive_directory_iterator(folder_.Path()))
            if (entry.is_regular_file())
                names += entry.path().string() + "\n";
        return names;
    }
    void Translate(const std::string& form, const std::string& file) {
        ASSERT_EQ(RunProgram({"/usr/bin/gdal_translate", "-q", "-of", form, "-ot",
                              "Int16", "-co", "COMPRESSED=YES", folder_.File("h.tif"),
                              folder_.File(file)})
                      .ExitCode,
                  0);
    }
    std::vector<Target> MakeTargets() {
        std::vector<Target> targets;
        const auto heights = [&](const std::string& name) {
            targets.push_back({folder_.File(name),
                               {"heights", "import", folder_.File(name), "--stretch",
                                "--in", "0", "0", "20", "20"}});
        };
        for (const char* name : {"h.tif", "h.asc", "h.png"}) {
            Run({"heights", "export", folder_.File(name)});
            heights(name);
        }
        Translate("HFA", "h.img");
        heights("h.img");
        // 1201 metres of 16 bits a side, and the name says where.
        folder_.Write("N47E008.hgt", std::string(2 * 1201 * 1201, '\3'));
        targets.push_back({folder_.File("N47E008.hgt"),
                           {"heights", "import", folder_.File("N47E008.hgt")}});
        targets.push_back(
            {folder_.File("h.tif"), {"heights", "import", folder_.File("h.tif")}});
        Run({"tiles", "export", folder_.File("t.tif")});
        targets.push_back(
            {folder_.File("t.tif"), {"tiles", "import", folder_.File("t.tif")}});
        folder_.Write("c.asc", "ncols 2\nnrows 2\nxllcorner 0\nyllcorner 0\ncellsize 1\n"
                               "1 2\n2 1\n");
        const std::string table = folder_.Write("c.table", "1 tile 3 # a\n2 leave\n");
        for (const std::string& file : {folder_.File("c.asc"), table})
            targets.push_back({file,
                               {"tiles", "import", folder_.File("c.asc"), "--stretch",
                                "--table", table}});
        Run({"place", "export", folder_.File("p.place")});
        targets.push_back(
            {folder_.File("p.place"), {"place", "import", folder_.File("p.place")}});
        AddShapeTargets(targets);
        return targets;
    }
    void AddShapeTargets(std::vector<Target>& targets) {
        const std::string out = folder_.File("out.tdf");
        for (const char* name : {"f.geojson", "f.gpkg", "f.shp"})
            Run({"features", "export", "0", "0", "63", "63", told_, "--out",
                 folder_.File(name)});
        for (const auto& [damaged, map] : {std::pair{"f.geojson", "f.geojson"},
                                           {"f.gpkg", "f.gpkg"},
                                           {"f-areas.shp", "f-areas.shp"},
                                           {"f-areas.shx", "f-areas.shp"},
                                           {"f-areas.dbf", "f-areas.shp"},
                                           {"f-areas.prj", "f-areas.shp"},
                                           {"f-points.dbf", "f-points.shp"}})
            targets.push_back(
                {folder_.File(damaged),
                 {"features", "import", folder_.File(map), "--out", out, "--overwrite"}});
    }
    std::string told_;
};

TEST_F(WorldMutations, EndInASentenceAndLeaveNothing) {
    const std::vector<Target> targets = MakeTargets();
    folder_.Write("out.tdf", "mine");
    const std::string theater = TheaterOnDisk();
    Run({"place", "import", folder_.File("p.place")});
    const std::string files = FilesThere();
    std::mt19937 random(static_cast<unsigned>(FromEnvironment("VARDENIX_WORLD_SEED", 1)));
    const int count = FromEnvironment("VARDENIX_WORLD_MUTATIONS", 34);
    int refused = 0;
    for (int i = 0; i < count; ++i) {
        const auto& [file, command] = targets.at(static_cast<size_t>(i) % targets.size());
        const std::string whole = Slurp(file);
        const std::string broken = Mutated(whole, random);
        Spill(file, broken);
        const ProgramResult result = Guarded(command);
        SCOPED_TRACE(file + ", mutation " + std::to_string(i) + "\n" + result.Errors);
        ASSERT_TRUE(result.ExitCode >= 0 && result.ExitCode <= 3) << result.ExitCode;
        if (result.ExitCode != 0) {
            ++refused;
            EXPECT_NE(result.Errors, "");
            ASSERT_EQ(TheaterOnDisk(), theater);
            ASSERT_EQ(Slurp(folder_.File("out.tdf")), "mine");
        } else {
            // What is still a map does what it says.
            const PairBytes pair = ScatteredPair(MadeLevel::Random(Posts, 7));
            folder_.Write("theater/terrain/theater.L2", pair.L);
            folder_.Write("theater/terrain/theater.O2", pair.O);
            folder_.Write("out.tdf", "mine");
            Spill(file, whole);
            if (command[0] == "place")
                Run({"place", "import", folder_.File("p.place")});
        }
        Spill(file, whole);
        ASSERT_EQ(FilesThere(), files);
    }
    EXPECT_GT(refused, count / 10);
    RecordProperty("refused", refused);
}

} // namespace
} // namespace vardenix::tests
