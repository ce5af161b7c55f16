// What vardenix-cli takes along at its start, what it loads when it is wanted, and the
// pictures that it writes without them.
#include "cli/CliTheater.h"
#include "pictures/ImageFiles.h"
#include "pictures/ImageLayer.h"
#include "support/PictureMaker.h"

#include <FreeImage.h>

namespace vardenix::tests {
namespace {

class Start : public CliTheater {
protected:
    void SetUp() override {
        CliTheater::SetUp();
        for (const char* name : {"sea.dds", "seaN.dds", "land.dds"})
            folder_.Write(std::string("my theater/texture/texture/") + name,
                          BlockTile(16, 16, "DXT1"));
    }
    // The bytes of the file that render makes.
    std::string Rendered(const std::string& name, const std::vector<std::string>& options,
                         const std::string& program = VARDENIX_CLI) {
        const std::string out = folder_.File(name);
        std::vector<std::string> command{
            program,  "render", out,      "--theater", folder_.File("my theater"),
            "--grid", "4",      "--zoom", "3",         "--tile-pixels",
            "64"};
        command.insert(command.end(), options.begin(), options.end());
        const ProgramResult result = RunProgram(command);
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        EXPECT_EQ(result.Output, out + "\n");
        return Slurp(out);
    }
};

TEST_F(Start, NeitherTheToolkitNorTheImageLibraryIsLoaded) {
    const ProgramResult loaded = Run({"get"}, {"LD_TRACE_LOADED_OBJECTS=1"});
    EXPECT_NE(loaded.Output.find("libc.so"), std::string::npos);
    for (const char* name : {"Qt", "freeimage", "fontconfig"})
        EXPECT_EQ(loaded.Output.find(name), std::string::npos) << loaded.Output;
}

// Whoever works in a folder of somebody else's runs no code of theirs.
TEST_F(Start, NoLibraryIsTakenFromTheFolderThatOneIsIn) {
    for (const char* name : {"libz.so.1", "libVardenix.so", "libvardenix-toolkit.so"})
        folder_.Write(name, "no library");
    const ProgramResult result =
        RunProgram({"/bin/sh", "-c", "cd \"$0\" && exec \"$1\" --version", folder_.Path(),
                    VARDENIX_CLI});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
}

// A feature that lies far outside has the toolkit loaded and leaves no pixel.
TEST_F(Start, MapsWithoutTheToolkitAreThoseWithIt) {
    const std::string features =
        folder_.Write("far.tdf", "ROAD 2 9000,9000 9001,9001 0\n");
    std::string last;
    for (const char* layers : {"grid", "grid,segments", "map,night,grid"}) {
        const std::vector<std::string> plain{"--layers", layers, "--brightness", "20"};
        std::vector<std::string> toolkit = plain;
        toolkit.insert(toolkit.end(), {"--features", features});
        const std::string picture = Rendered("a.bmp", plain);
        EXPECT_TRUE(picture == Rendered("b.bmp", toolkit)) << layers;
        EXPECT_TRUE(picture != last) << layers;
        last = picture;
    }
}

TEST_F(Start, WithoutTheToolkitsLibraryTheMissingFileIsNamed) {
    CopyProgram("my program");
    const std::string program = folder_.File("my program/vardenix-cli");
    const std::string library = folder_.File("my program/libvardenix-toolkit.so");
    const std::vector<std::string> grid{"--layers", "grid"};
    const std::string with = Rendered("a.bmp", grid, program);
    for (const bool gone : {true, false}) {
        if (gone)
            std::filesystem::remove(library);
        else
            folder_.Write("my program/libvardenix-toolkit.so", "no library");
        EXPECT_TRUE(Rendered("a.bmp", grid, program) == with);
        for (const char* layer : {"heights", "areas", "paths"}) {
            const ProgramResult result =
                RunProgram({program, "render", folder_.File("b.png"), "--layers", layer,
                            "--theater", folder_.File("my theater")});
            EXPECT_EQ(result.ExitCode, 3);
            EXPECT_NE(result.Errors.find(library + ", which belongs beside vardenix-cli "
                                                   "and draws texts, areas, paths and "
                                                   "features, cannot be opened: "),
                      std::string::npos)
                << result.Errors;
            EXPECT_FALSE(std::filesystem::exists(folder_.File("b.png")));
        }
    }
}

TEST_F(Start, ASmallPngIsSmallerAndEveryFileShowsTheSame) {
    const std::vector<std::string> grid{"--layers", "grid"};
    const std::string fast = Rendered("fast.png", grid);
    const std::string small = Rendered("small.png", {"--layers", "grid", "--small"});
    EXPECT_LT(small.size(), fast.size());
    Rendered("plain.bmp", grid);
    const Bitmap plain = ImageLoad(PictureFormat::Bmp, folder_.File("plain.bmp"));
    ASSERT_EQ(plain.Width(), 4 * 64);
    for (const char* name : {"fast.png", "small.png"}) {
        const Bitmap png(FreeImage_Load(FIF_PNG, folder_.File(name).c_str(), 0));
        ASSERT_TRUE(png);
        EXPECT_TRUE(PixelsOf(BitmapToPicture(png)) == PixelsOf(BitmapToPicture(plain)));
    }
}

} // namespace
} // namespace vardenix::tests
