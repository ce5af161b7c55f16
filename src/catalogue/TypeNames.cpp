#include "catalogue/TypeNames.h"

#include <array>
#include <string_view>

namespace vardenix {

namespace {

struct NamedType {
    int Code;
    std::string_view Name;
};

constexpr std::array<NamedType, 8> TerrainTypes{{{TerrainWater, "Water"},
                                                 {TerrainSwamp, "Swamp"},
                                                 {TerrainPlains, "Plains"},
                                                 {TerrainBrush, "Brush"},
                                                 {TerrainThinForest, "Thin Forest"},
                                                 {TerrainThickForest, "Thick Forest"},
                                                 {TerrainRocky, "Rocky"},
                                                 {TerrainUrban, "Urban"}}};
constexpr std::array<NamedType, 4> PathTypes{{{PathRiver, "River"},
                                              {PathRoad, "Road"},
                                              {PathRailRoad, "RailRoad"},
                                              {PathBridge, "Bridge"}}};

template <size_t Count>
std::string NameOf(const std::array<NamedType, Count>& types, int32_t code) {
    for (const NamedType& type : types)
        if (type.Code == code)
            return std::string(type.Name);
    return std::to_string(code);
}

template <size_t Count>
int CodeAt(const std::array<NamedType, Count>& types, int index) {
    return index >= 0 && static_cast<size_t>(index) < Count
               ? types[static_cast<size_t>(index)].Code
               : 0;
}

} // namespace

std::string TerrainName(uint8_t terrain) { return NameOf(TerrainTypes, terrain); }
std::string AreaTypeName(int32_t type) { return NameOf(TerrainTypes, type); }
std::string PathTypeName(int32_t type) { return NameOf(PathTypes, type); }

int TerrainFromIndex(int index) { return CodeAt(TerrainTypes, index); }
int PathTypeFromIndex(int index) { return CodeAt(PathTypes, index); }

int AreaTypeFromIndex(int index) {
    // The area editor offers these two only.
    switch (index) {
    case 0:
        return TerrainWater;
    case 1:
        return TerrainThickForest;
    default:
        return 0;
    }
}

} // namespace vardenix
