// The programs as `cmake --install` lays them out, in folders that their user may not
// write to.
#include "support/Environment.h"
#include "support/PlainUser.h"
#include "support/RunProgram.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;

namespace vardenix::tests {
namespace {

class InstalledLayout : public testing::Test {
protected:
    // The picture that a program makes of the sample theater.
    std::string Rendered(const std::string& program, const std::string& layers) {
        const std::string out = folder_.File("out/map.bmp");
        const std::string theater = std::string(SAMPLE_FOLDER) + "/terrdata/sorrelund";
        const ProgramResult result =
            RunProgram({program, "render", out, "--theater", theater, "--x", "40", "--y",
                        "40", "--grid", "2", "--layers", layers});
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        return Slurp(out);
    }

    TestFolder folder_;
};

TEST_F(InstalledLayout, PaintsWhatTheBuiltProgramPaints) {
    fs::create_directory(folder_.File("out"));
    const std::string prefix = folder_.File("usr");
    const ProgramResult installed =
        RunProgram({CMAKE_PROGRAM, "--install", BUILD_FOLDER, "--prefix", prefix});
    ASSERT_EQ(installed.ExitCode, 0) << installed.Errors;
    for (const char* name : {"vardenix", "vardenix-cli", "Loader", "NoTile.jpg"})
        EXPECT_TRUE(fs::exists(prefix + "/lib/vardenix/" + name)) << name;
    for (const char* layers : {"grid", "heights", "areas,paths"}) {
        const std::string built =
            Rendered(std::string(PROGRAM_FOLDER) + "/vardenix-cli", layers);
        LetOthers(folder_.Path(), 7);
        LetOthers(folder_.File("out"), 7);
        LetOthers(prefix + "/lib/vardenix", 5);
        fs::remove(folder_.File("out/map.bmp"));
        const PlainUser user;
        const Environment data("XDG_DATA_HOME", folder_.File("out").c_str());
        EXPECT_TRUE(Rendered(prefix + "/bin/vardenix-cli", layers) == built) << layers;
    }
}

} // namespace
} // namespace vardenix::tests
