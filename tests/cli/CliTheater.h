#pragma once

#include "support/RunProgram.h"
#include "support/TestFolder.h"
#include "support/TheaterMaker.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace vardenix::tests {

// A small theater, and the real vardenix-cli to run on it.
class CliTheater : public testing::Test {
protected:
    void SetUp() override {
        level_ = MadeLevel::Empty(32);
        level_.At(4, 6) = {1, -20, 7, 8, 9};
        level_.At(30, 31) = {16, 900, 0, 0, 0};
        WriteLevel();
        folder_.Write("my theater/terrain/theater.map", std::string(1112, '\0'));
        folder_.Write(
            "my theater/texture/Texture.bin",
            CatalogueBytes({{1, {{"SEA.PCX"}, {"SHORE.PCX"}}}, {4, {{"LAND.PCX"}}}}));
        folder_.Write("my theater/texture/texture/sea.dds", "x");
        folder_.Write("my theater/texture/texture/land.dds", "x");
    }
    void WriteLevel() {
        const PairBytes pair = ScatteredPair(level_);
        folder_.Write("my theater/terrain/theater.L2", pair.L);
        folder_.Write("my theater/terrain/theater.O2", pair.O);
    }
    std::string Terrain(const std::string& name) const {
        return folder_.File("my theater/terrain/" + name);
    }
    // The posts on the disk.
    MadeLevel OnDisk() const {
        return ReadPair(Terrain("theater.L2"), Terrain("theater.O2"));
    }
    // The bytes of both files, for whoever wants to see that nothing was written.
    std::string PairOnDisk() const {
        return Slurp(Terrain("theater.L2")) + "|" + Slurp(Terrain("theater.O2"));
    }

    // A copy of the program in a folder of ours, made where it is missing.
    void CopyProgram(const std::string& folder) const {
        namespace fs = std::filesystem;
        fs::create_directory(folder_.File(folder));
        for (const char* name :
             {"vardenix-cli", "libVardenix.so", "libvardenix-toolkit.so"})
            fs::copy(fs::path(VARDENIX_CLI).parent_path() / name, folder_.File(folder));
    }

    ProgramResult Run(std::vector<std::string> arguments,
                      const std::vector<std::string>& environment = {}) {
        arguments.insert(arguments.begin(), VARDENIX_CLI);
        return RunProgram(arguments, environment);
    }
    ProgramResult RunOn(std::vector<std::string> arguments,
                        const std::vector<std::string>& environment = {}) {
        arguments.insert(arguments.end(), {"--theater", folder_.File("my theater")});
        return Run(arguments, environment);
    }

    TestFolder folder_;
    MadeLevel level_;
};

} // namespace vardenix::tests
