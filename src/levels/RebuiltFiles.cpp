#include "levels/RebuiltFiles.h"

namespace vardenix {

LevelPair PairOfLevel(const std::string& lxFolder, int32_t level) {
    const std::string number = std::to_string(level);
    return {lxFolder + "theater.l" + number, lxFolder + "theater.o" + number};
}

std::string DayContainer(const std::string& textureFolder) {
    return textureFolder + "fartiles.dds";
}

std::string NightContainer(const std::string& textureFolder) {
    return textureFolder + "fartilesN.dds";
}

std::string IndexOfFartiles(const std::string& textureFolder) {
    return textureFolder + "fartiles.index";
}

std::vector<std::string> FilesOfLevels(const std::string& lxFolder) {
    std::vector<std::string> files;
    for (const int32_t level : {0, 1, 3, 4, 5}) {
        const LevelPair pair = PairOfLevel(lxFolder, level);
        files.insert(files.end(), {pair.L, pair.O});
    }
    return files;
}

std::vector<std::string> FilesOfRebuild(const std::string& lxFolder,
                                        const std::string& textureFolder) {
    std::vector<std::string> files = FilesOfLevels(lxFolder);
    files.insert(files.end(), {DayContainer(textureFolder), NightContainer(textureFolder),
                               IndexOfFartiles(textureFolder)});
    return files;
}

} // namespace vardenix
