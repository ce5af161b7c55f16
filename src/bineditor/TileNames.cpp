#include "bineditor/TileNames.h"

#include "catalogue/PictureNames.h"
#include "texts/Cutting.h"

namespace vardenix {

namespace {

std::string WithFirst(char letter, std::string name) {
    if (!name.empty())
        name[0] = letter;
    return name;
}

} // namespace

std::string HName(std::string_view name) {
    return (name.starts_with('H') ? "" : "H") + std::string(name);
}

std::string WithoutExtension(std::string_view name) {
    return std::string(name.substr(0, name.find_last_of('.')));
}

FamilyNames FamilyOf(std::string_view chosenName) {
    const std::string base = WithoutExtension(chosenName);
    const std::string hDay = WithoutExtension(HName(chosenName));
    const std::string hNight = HName(base + "N");
    return {.HDay = HName(chosenName),
            .HNight = hNight + ".dds",
            .MDay = WithFirst('M', hDay) + ".dds",
            .LDay = WithFirst('L', hDay) + ".dds",
            .MNight = WithFirst('M', hNight) + ".dds",
            .LNight = WithFirst('L', hNight) + ".dds",
            .NightSource = base + "N.dds"};
}

std::string CatalogueName(std::string_view hName) {
    const size_t kept = hName.size() < 4 ? 0 : hName.size() - 4;
    return UpperCase(std::string(hName.substr(0, kept)) + ".pcx");
}

std::array<std::string, 6> WantedPictures(const std::string& tileName) {
    const std::string day = TileFileName(tileName, false);
    const std::string night = TileFileName(tileName, true);
    return {day,
            night,
            WithFirst('L', day),
            WithFirst('M', day),
            WithFirst('L', night),
            WithFirst('M', night)};
}

} // namespace vardenix
