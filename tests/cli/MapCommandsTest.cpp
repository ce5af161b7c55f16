// map of the real vardenix-cli, over bytes made and read by the test.
#include "cli/CliTheater.h"

#include <filesystem>

namespace vardenix::tests {
namespace {

class MapCommands : public CliTheater {
protected:
    void SetUp() override {
        CliTheater::SetUp();
        WriteMap("");
    }

    // Entry i has 4 i, 4 i + 1 ... as bytes, every number is 0 but for three.
    void WriteMap(const std::string& tail) {
        bytes_.assign(28, '\0');
        for (int i = 0; i < 1024; ++i)
            bytes_ += static_cast<char>(i);
        bytes_ += Int32Bytes(-7) + std::string(44, '\0') + Int32Bytes(99) +
                  std::string("\0\0\xF9\x42\x71\x0D\x4D\x44", 8); // 124.5, 820.21
        bytes_ += tail;
        folder_.Write("my theater/terrain/theater.map", bytes_);
    }
    std::string OnDisk() const { return Slurp(Terrain("theater.map")); }
    std::string Names() const {
        std::string names;
        for (const auto& entry : std::filesystem::directory_iterator(Terrain(".")))
            names += entry.path().extension().string();
        return names;
    }
    // Usage is told before anything is looked at, and nothing is written.
    void ExpectUsage(const std::vector<std::string>& arguments, const std::string& part) {
        const ProgramResult result = RunOn(arguments);
        EXPECT_EQ(result.ExitCode, 2) << arguments[1];
        EXPECT_NE(result.Errors.find(part), std::string::npos) << result.Errors;
        EXPECT_EQ(OnDisk(), bytes_);
    }

    std::string bytes_;
};

TEST_F(MapCommands, ShowTellsEveryNumberAndColor) {
    const ProgramResult result = RunOn({"map", "show"});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    const auto has = [&](const std::string& line) {
        EXPECT_NE(("\n" + result.Output).find("\n" + line + "\n"), std::string::npos)
            << line;
    };
    has("l0-width: -7");
    has("l5-height: 0");
    has("flags: 99");
    has("longitude: 124.5");
    has("latitude: 820.21");
    has("feet-between-l0-tiles: 0");
    has("color 0: 0 1 2 3");
    has("color 255: 252 253 254 255");
    EXPECT_EQ(std::count(result.Output.begin(), result.Output.end(), '\n'), 22 + 256);
}

TEST_F(MapCommands, ShowAsJson) {
    const ProgramResult result = RunOn({"map", "show", "--json"});
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    std::string plain = result.Output;
    std::erase_if(plain, [](char c) { return c == ' ' || c == '\n'; });
    EXPECT_EQ(plain.find("{\"mea-width\":0,\"mea-height\":0,\"l0-width\":-7,"), 0U);
    EXPECT_NE(plain.find("\"longitude\":124.5,\"latitude\":820.21,"), std::string::npos);
    EXPECT_NE(plain.find("\"palette\":[[0,1,2,3],[4,5,6,7],"), std::string::npos);
    EXPECT_NE(plain.find(",[252,253,254,255]]}"), std::string::npos);
    // What JSON has no number for.
    folder_.Write("my theater/terrain/theater.map",
                  bytes_.substr(0, 1104) + std::string("\0\0\xC0\x7F\0\0\x80\xFF", 8));
    const std::string odd = RunOn({"map", "show", "--json"}).Output;
    EXPECT_NE(odd.find("\"longitude\": null"), std::string::npos);
    EXPECT_NE(odd.find("\"latitude\": null"), std::string::npos);
    EXPECT_NE(RunOn({"map", "show"}).Output.find("longitude: nan"), std::string::npos);
}

TEST_F(MapCommands, SetChangesTheFieldsThatAreNamedAndKeepsTheTail) {
    WriteMap("the tail of somebody else");
    const ProgramResult one = RunOn({"map", "set", "flags", "-2147483648"});
    EXPECT_EQ(one.ExitCode, 0) << one.Errors;
    EXPECT_EQ(one.Output, "1 field set in " + Terrain("theater.map") + "\n");
    bytes_.replace(1100, 4, Int32Bytes(-2147483647 - 1));
    EXPECT_EQ(OnDisk(), bytes_);
    const ProgramResult two =
        RunOn({"map", "set", "mea-height", "12", "latitude", "-33.25"});
    EXPECT_EQ(two.Output, "2 fields set in " + Terrain("theater.map") + "\n");
    bytes_.replace(8, 4, Int32Bytes(12));
    bytes_.replace(1108, 4, std::string("\0\0\x05\xC2", 4));
    EXPECT_EQ(OnDisk(), bytes_);
    EXPECT_EQ(Names().size(), std::string(".L2.O2.map").size());
}

TEST_F(MapCommands, ColorKeepsAlphaUnlessItIsGiven) {
    EXPECT_EQ(RunOn({"map", "color", "0", "255", "254", "253"}).ExitCode, 0);
    bytes_.replace(28, 3, "\xFF\xFE\xFD");
    EXPECT_EQ(OnDisk(), bytes_);
    const ProgramResult result = RunOn({"map", "color", "255", "1", "2", "3", "0"});
    EXPECT_EQ(result.Output, "color 255 set in " + Terrain("theater.map") + "\n");
    bytes_.replace(1048, 4, std::string("\1\2\3\0", 4));
    EXPECT_EQ(OnDisk(), bytes_);
}

TEST_F(MapCommands, PalettesGoOutAndComeInAgain) {
    for (const auto& [name, size, keepsAlpha] :
         {std::tuple{"out.act", 768U, true},
          {"out.PAL", 1048U, false},
          {"out.bmp", 54U + 512 * 512 * 3, true}}) {
        WriteMap("tail");
        const ProgramResult out = RunOn({"map", "export-palette", folder_.File(name)});
        EXPECT_EQ(out.ExitCode, 0) << out.Errors;
        EXPECT_EQ(out.Output, folder_.File(name) + "\n");
        EXPECT_EQ(Slurp(folder_.File(name)).size(), size);
        EXPECT_EQ(OnDisk(), bytes_);
        const std::string before = bytes_;
        std::string other = bytes_;
        other.replace(28, 1024, std::string(1024, '\x55'));
        folder_.Write("my theater/terrain/theater.map", other);
        const ProgramResult in = RunOn({"map", "import-palette", folder_.File(name)});
        EXPECT_EQ(in.ExitCode, 0) << in.Errors;
        std::string expected = before;
        for (size_t i = 0; i < 256 && keepsAlpha; ++i)
            expected[28 + i * 4 + 3] = '\x55';
        EXPECT_EQ(OnDisk(), expected) << name;
    }
}

TEST_F(MapCommands, TheMapAloneIsEnough) {
    std::filesystem::remove(Terrain("theater.L2"));
    std::filesystem::remove_all(folder_.File("my theater/texture"));
    EXPECT_EQ(RunOn({"map", "color", "1", "2", "3", "4"}).ExitCode, 0);
    EXPECT_EQ(Run({"map", "show", "--map", Terrain("THEATER.MAP")}).ExitCode, 0);
    const ProgramResult none = Run({"map", "show", "--map", folder_.File("none.map")});
    EXPECT_EQ(none.ExitCode, 3);
    EXPECT_NE(none.Errors.find("none.map"), std::string::npos);
    EXPECT_EQ(Run({"map", "show"}).ExitCode, 2);
}

TEST_F(MapCommands, UsageIsToldBeforeAnythingIsWritten) {
    ExpectUsage({"map", "set", "fags", "1"}, "'fags' is none of mea-width, ");
    ExpectUsage({"map", "set", "flags"}, "'flags' has no value");
    ExpectUsage({"map", "set", "flags", "1", "latitude"}, "'latitude' has no value");
    ExpectUsage({"map", "set", "flags", "1", "l0-width", "1-2"}, "'1-2' is not a number");
    ExpectUsage({"map", "set", "flags", "2147483648"}, "2147483647");
    ExpectUsage({"map", "set", "latitude", "1e39"}, "too large");
    ExpectUsage({"map", "color", "256", "0", "0", "0"}, "N");
    ExpectUsage({"map", "color", "1", "-1", "0", "0"}, "0 to 255");
    ExpectUsage({"map", "color", "1", "0", "0", "0", "256"}, "A");
    ExpectUsage({"map", "export-palette", folder_.File("a.png")}, ".act, .pal and .bmp");
    ExpectUsage({"map", "import-palette", folder_.File("a")}, ".act, .pal and .bmp");
    EXPECT_EQ(Run({"map", "show", "--map", "a", "--theater", "b"}).ExitCode, 2);
    folder_.Write("map.act", bytes_);
    EXPECT_EQ(Run({"map", "export-palette", folder_.File("map.act"), "--map",
                   folder_.File("map.act")})
                  .ExitCode,
              2);
    EXPECT_EQ(Slurp(folder_.File("map.act")), bytes_);
}

TEST_F(MapCommands, BrokenPaletteFilesChangeNothing) {
    for (const auto& [name, content] :
         {std::pair<const char*, std::string>{"a.act", std::string(767, 'x')},
          {"a.pal", std::string(1047, 'x')},
          {"a.bmp", "BM and no more"}}) {
        const ProgramResult result =
            RunOn({"map", "import-palette", folder_.Write(name, content)});
        EXPECT_EQ(result.ExitCode, 3) << name;
        EXPECT_NE(result.Errors.find(name), std::string::npos) << result.Errors;
        EXPECT_EQ(OnDisk(), bytes_);
    }
    EXPECT_EQ(RunOn({"map", "import-palette", folder_.File("none.act")}).ExitCode, 3);
}

} // namespace
} // namespace vardenix::tests
