#pragma once

#include "levels/Terrain.h"

#include <string>

namespace vardenix {

// The two files of a level, as real paths.
struct LevelPair {
    std::string L;
    std::string O;
};

// The O file of a L2 file, as a name: in every "THEATER.L" of the path, in any case, the
// L becomes an O of the same case. Another name gives itself.
std::string OffsetFileOfL2(const std::string& pathL);

// The O file beside a L0 file, as a name: its path less the last three characters, plus
// ".O0".
std::string OffsetFileOfL0(const std::string& path);

// The pair of a L2 file, or of a L0 file, whose real path is given. The O file is looked
// for beside it, without regard to case where none has the very name; folders that both
// have in common are taken as they stand.
LevelPair PairOfL2(const std::string& pathL);
LevelPair PairOfL0(const std::string& path);

// Where level 2 is written: an empty path means the files of the theater. Of any other
// the folder is taken as it is there; a file of the very name is the one meant, and a new
// one gets the name in upper case. In the O file every ".L2" of the path becomes ".O2".
LevelPair PairForSaving(const Terrain& terrain, const std::string& path);

// A name that the half-written file of a save of "NAME.L2" has; the next opening of that
// pair clears it away.
bool IsUnfinishedName(const std::string& path);

// A kept file is saved under the very name that it was opened by. Error 53 when it is not
// there any more and a file whose name differs in case only would be written instead;
// error 76 when its folder is gone.
void RequireSameName(const std::string& kept);

} // namespace vardenix
