#pragma once

#include "levels/LevelPairs.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vardenix {

// The files that a rebuild makes, all together. Folders have a slash at their end. Names
// are those that a new file gets; an old one is found under them in any case.

// The pair of level 0, 1, 3, 4 or 5.
LevelPair PairOfLevel(const std::string& lxFolder, int32_t level);

// The containers of the far tiles, by day and by night.
std::string DayContainer(const std::string& textureFolder);
std::string NightContainer(const std::string& textureFolder);
// What their far tiles were made of, for a rebuild of what has changed.
std::string IndexOfFartiles(const std::string& textureFolder);

// The files of all levels but the second, there or not.
std::vector<std::string> FilesOfLevels(const std::string& lxFolder);

// All of them: what an opening looks at for what an interrupted rebuild has left.
std::vector<std::string> FilesOfRebuild(const std::string& lxFolder,
                                        const std::string& textureFolder);

} // namespace vardenix
