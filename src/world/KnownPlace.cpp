#include "world/KnownPlace.h"

#include "files/OwnFolders.h"
#include "world/PlaceFile.h"

namespace vardenix {

std::optional<TheaterPlace> ToldPlace(const std::string& l2File) {
    if (l2File.empty() || UsersDataFolder().empty())
        return std::nullopt;
    return ReadPlace(PlaceFileOf(l2File));
}

TheaterPlace KnownPlace(const std::string& l2File, const MapFileRecord& map) {
    const auto told = ToldPlace(l2File);
    return told ? *told : GuessedPlace(map);
}

} // namespace vardenix
