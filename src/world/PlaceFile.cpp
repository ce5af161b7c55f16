#include "world/PlaceFile.h"

#include "files/Digest.h"
#include "files/FileNames.h"
#include "files/OwnFolders.h"
#include "files/ProfileFile.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"

#include <filesystem>
#include <span>

namespace vardenix {

namespace {

constexpr const char* Section = "Place";

double NumberOf(const ProfileFile& file, const char* key) {
    return Val(file.Read(Section, key));
}

} // namespace

std::string PlaceFileOf(const std::string& l2File) {
    const std::string data = UsersDataFolder();
    if (data.empty())
        throw RuntimeError(ErrorNumber::PathNotFound,
                           "there is no folder for the places of theaters: this user has "
                           "no home");
    std::error_code unknown;
    const std::string path = std::filesystem::weakly_canonical(RealPath(l2File), unknown);
    return data + "/places/" + TextOf(DigestOf({std::as_bytes(std::span(path))})) +
           ".ini";
}

std::optional<TheaterPlace> ReadPlace(const std::string& path) {
    if (!FileExists(path))
        return std::nullopt;
    const ProfileFile file = ReadProfileFile(path);
    const TheaterPlace place{file.Read(Section, "System"), NumberOf(file, "Left"),
                             NumberOf(file, "Bottom"),     NumberOf(file, "PostWidth"),
                             NumberOf(file, "PostHeight"), false};
    try {
        RequirePlace(place);
    } catch (const RuntimeError& error) {
        throw RuntimeError(error.Number(), path + ": " + error.Detail());
    }
    return place;
}

void WritePlace(const TheaterPlace& place, const std::string& path) {
    RequirePlace(place);
    ProfileWriter file;
    file.Write(Section, "System", place.System);
    for (const auto& [key, number] : {std::pair{"Left", place.Left},
                                      {"Bottom", place.Bottom},
                                      {"PostWidth", place.PostWidth},
                                      {"PostHeight", place.PostHeight}})
        file.Write(Section, key, ShortestText(number));
    MakeOwnFilesFolder(UpToLastSlash(path));
    file.Save(path);
}

} // namespace vardenix
