#include "levels/LevelPairs.h"

#include "files/FileNames.h"
#include "files/FileStatus.h"
#include "texts/Cutting.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <string_view>

namespace vardenix {

namespace {

// Makes an O of the letter at `letter` of every occurrence of `upper` behind the first
// `from` letters, in any case; the letter keeps its case.
std::string WithOForL(std::string path, std::string_view upper, size_t letter,
                      size_t from = 0) {
    const std::string inUpper = UpperCase(path);
    for (size_t at = inUpper.find(upper, from); at != std::string::npos;
         at = inUpper.find(upper, at + upper.size())) {
        char& l = path[at + letter];
        l = l == 'l' ? 'o' : 'O';
    }
    return path;
}

// The file called `name`, a path like that of the real file `kept`: what both have in
// common up to a slash is where it is looked for.
std::string BesideFile(const std::string& kept, const std::string& name) {
    const auto [differs, end] =
        std::mismatch(name.begin(), name.end(), kept.begin(), kept.end());
    if (differs == name.end())
        return name;
    const std::string folder =
        UpToLastSlash({name.data(), static_cast<size_t>(differs - name.begin())});
    return TextOfPath(RealPathBelow(folder, name.substr(folder.size()), PathKind::File));
}

} // namespace

std::string OffsetFileOfL2(const std::string& pathL) {
    // Folders are called as they are.
    return WithOForL(pathL, "THEATER.L", 8, UpToLastSlash(pathL).size());
}

std::string OffsetFileOfL0(const std::string& path) {
    return path.substr(0, path.size() - std::min<size_t>(path.size(), 3)) + ".O0";
}

LevelPair PairOfL2(const std::string& pathL) {
    return {pathL, BesideFile(pathL, OffsetFileOfL2(pathL))};
}

LevelPair PairOfL0(const std::string& path) {
    const std::string upper = OffsetFileOfL0(path);
    const std::string sameCase = WithOForL(path, ".L0", 1);
    // Of two that differ from it in case only, theater.l0 goes with theater.o0.
    if (!StatusOf(upper) && sameCase != path && StatusOf(sameCase))
        return {path, sameCase};
    return {path, BesideFile(path, upper)};
}

LevelPair PairForSaving(const Terrain& terrain, const std::string& path) {
    if (path.empty())
        return {terrain.LFilename, terrain.OFilename};
    const std::filesystem::path folder = RealPath(UpToLastSlash(path), PathKind::Folder);
    const std::string name = AfterLastSlash(path);
    const std::filesystem::path exact = folder / name;
    const std::string pathL = TextOfPath(
        StatusOf(exact) ? exact : RealPathBelow(folder, UpperCase(name), PathKind::File));
    return {pathL, BesideFile(pathL, WithOForL(pathL, ".L2", 1))};
}

bool IsUnfinishedName(const std::string& path) {
    return UpperCase(path).ends_with(".L2X");
}

void RequireSameName(const std::string& kept) {
    const std::filesystem::path path = PathAsItStands(kept);
    if (!path.parent_path().empty() && !IsFolder(StatusOf(path.parent_path())))
        throw RuntimeError(ErrorNumber::PathNotFound,
                           "writing " + TextOfPath(path) + ": its folder is not there");
    const std::filesystem::path other = RealPath(kept, PathKind::File);
    if (other != path)
        throw RuntimeError(ErrorNumber::FileNotFound,
                           TextOfPath(path) + " is not there any more, and " +
                               TextOfPath(other) +
                               " would be written in its place; save under another "
                               "name, or put the file back");
}

} // namespace vardenix
