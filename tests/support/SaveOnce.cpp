// A program of its own for the tests that kill a save: opens the theater whose L2 file is
// given, adds 1 to the elevation of every post, and saves it. Exit 0 saved, 3 refused
// with a message on the standard error.
#include "levels/TerrainStore.h"
#include "platform/Clock.h"
#include "platform/Progress.h"
#include "texts/Cutting.h"
#include "texts/RuntimeError.h"

#include <cstdio>

int main(int count, char** arguments) {
    using namespace vardenix;
    if (count != 2)
        return 2;
    const SystemClock clock;
    DebugLog log(clock);
    NoProgress progress;
    Terrain terrain;
    terrain.LFilename = arguments[1];
    terrain.OFilename = ReplaceAll(terrain.LFilename, ".L2", ".O2");
    try {
        LoadLFile(terrain, progress, log);
        for (TerrainPost& post : terrain.LxArr.Values())
            post.Elevation = static_cast<int16_t>(post.Elevation + 1);
        SaveTheater(terrain, "", progress);
        return 0;
    } catch (const RuntimeError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 3;
    }
}
