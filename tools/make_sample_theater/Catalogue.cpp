#include "make_sample_theater/Catalogue.h"

#include <cstdio>
#include <stdexcept>

namespace vardenix::sample {
namespace {

constexpr uint8_t WaterClass = 1;
constexpr uint8_t SwampClass = 3;
constexpr uint8_t PlainsClass = 4;
constexpr uint8_t BrushClass = 5;
constexpr uint8_t ThinForestClass = 6;
constexpr uint8_t ThickForestClass = 7;
constexpr uint8_t RockyClass = 8;
constexpr uint8_t UrbanClass = 9;
constexpr std::size_t LargestSet = 16;

TileLook Whole(Ground ground) {
    TileLook look;
    look.Low = look.High = ground;
    return look;
}

} // namespace

TileLook LookOfCorners(const std::array<Ground, 4>& corners) {
    TileLook look = Whole(corners[0]);
    for (const Ground corner : corners) {
        look.Low = std::min(look.Low, corner);
        look.High = std::max(look.High, corner);
    }
    if (look.Low == look.High)
        return look;
    for (unsigned i = 0; i < 4; ++i) {
        if (corners[i] == look.High)
            look.HighCorners = static_cast<uint8_t>(look.HighCorners | 1U << i);
        else if (corners[i] != look.Low)
            look.EdgeStyles = 255; // a third ground: no tile shows that
    }
    return look;
}

Catalogue::Catalogue() {
    AddWater();
    AddLowLand();
    AddForest();
    AddMountains();
    AddTowns();
    AddTraffic();
}

int Catalogue::TileCount() const {
    std::size_t count = 0;
    for (const TileSet& set : sets_)
        count += set.Tiles.size();
    return static_cast<int>(count);
}

void Catalogue::BeginSet(const std::string& prefix, uint8_t terrain) {
    sets_.push_back({prefix, terrain, {}});
}

void Catalogue::Add(TileLook look, int variants) {
    TileSet& set = sets_.back();
    for (int i = 0; i < variants; ++i) {
        if (set.Tiles.size() == LargestSet)
            throw std::logic_error("set " + set.Prefix + " has no room for another tile");
        std::vector<int32_t>& numbers = numbers_[look];
        numbers.push_back(
            static_cast<int32_t>((sets_.size() - 1) * 16 + set.Tiles.size()));
        char digits[8];
        std::snprintf(digits, sizeof digits, "%03d",
                      static_cast<int>(set.Tiles.size() + 1) % 1000);
        set.Tiles.push_back(
            {look, static_cast<uint32_t>(numbers.size() - 1), set.Prefix + digits});
    }
}

// The 14 ways in which two grounds share four corners.
void Catalogue::AddBorders(Ground low, Ground high) {
    for (uint8_t corners = 1; corners < 15; ++corners) {
        TileLook look;
        look.Low = low;
        look.High = high;
        look.HighCorners = corners;
        Add(look);
    }
}

void Catalogue::AddWays(Ground ground, uint8_t TileLook::*way, bool forks) {
    for (uint8_t edges = 1; edges < 16; ++edges) {
        const int count =
            (edges & 1) + (edges >> 1 & 1) + (edges >> 2 & 1) + (edges >> 3);
        if (count != 2 && !(forks && count == 3))
            continue;
        TileLook look = Whole(ground);
        look.*way = edges;
        Add(look);
    }
}

// A way that leaves one ground for the other, straight across the border.
void Catalogue::AddWaysAcrossBorder(Ground low, Ground high, uint8_t TileLook::*way) {
    for (const uint8_t edge : {North, East, South, West}) {
        TileLook look;
        look.Low = low;
        look.High = high;
        look.HighCorners = CornersOf(edge);
        look.*way = static_cast<uint8_t>(edge | Opposite(edge));
        Add(look);
    }
}

void Catalogue::AddWater() {
    BeginSet("WATR", WaterClass);
    Add(Whole(Ground::Deep));
    AddBorders(Ground::Deep, Ground::Shallow);
    Add(Whole(Ground::Shallow));
    BeginSet("COSA", WaterClass);
    AddBorders(Ground::Shallow, Ground::Plains);
    Add(Whole(Ground::Shallow), 2);
    BeginSet("COSB", WaterClass);
    AddBorders(Ground::Shallow, Ground::Plains);
    BeginSet("MOUT", WaterClass);
    for (const uint8_t edge : {North, East, South, West}) {
        TileLook look;
        look.Low = Ground::Shallow;
        look.High = Ground::Plains;
        look.HighCorners = CornersOf(edge);
        look.Rivers = edge;
        Add(look, 2);
    }
    BeginSet("CLIF", RockyClass);
    AddBorders(Ground::Shallow, Ground::Rock);
}

void Catalogue::AddLowLand() {
    BeginSet("PLNS", PlainsClass);
    Add(Whole(Ground::Plains), 10);
    BeginSet("FARM", PlainsClass);
    for (uint8_t styles = 0; styles < 16; ++styles) {
        TileLook look = Whole(Ground::Farm);
        look.EdgeStyles = styles;
        Add(look);
    }
    BeginSet("FRME", PlainsClass);
    AddBorders(Ground::Plains, Ground::Farm);
    BeginSet("SWMP", SwampClass);
    AddBorders(Ground::Plains, Ground::Swamp);
    Add(Whole(Ground::Swamp), 2);
}

void Catalogue::AddForest() {
    BeginSet("BRSE", BrushClass);
    AddBorders(Ground::Plains, Ground::Brush);
    BeginSet("BRSH", BrushClass);
    Add(Whole(Ground::Brush), 6);
    BeginSet("THNE", ThinForestClass);
    AddBorders(Ground::Brush, Ground::ThinForest);
    BeginSet("THIN", ThinForestClass);
    Add(Whole(Ground::ThinForest), 5);
    BeginSet("THKE", ThickForestClass);
    AddBorders(Ground::ThinForest, Ground::ThickForest);
    BeginSet("THCK", ThickForestClass);
    Add(Whole(Ground::ThickForest), 5);
}

void Catalogue::AddMountains() {
    BeginSet("ROKE", RockyClass);
    AddBorders(Ground::Brush, Ground::Rock);
    BeginSet("ROCK", RockyClass);
    Add(Whole(Ground::Rock), 5);
    Add(Whole(Ground::RockShade), 4);
    Add(Whole(Ground::Snow), 4);
    BeginSet("SHAD", RockyClass);
    AddBorders(Ground::Rock, Ground::RockShade);
    BeginSet("SNOW", RockyClass);
    AddBorders(Ground::Rock, Ground::Snow);
}

void Catalogue::AddTowns() {
    BeginSet("TWNE", UrbanClass);
    AddBorders(Ground::Plains, Ground::Town);
    BeginSet("TOWN", UrbanClass);
    Add(Whole(Ground::Town), 4);
    for (const uint8_t edge : {North, East, South, West}) { // ways into town
        TileLook look;
        look.Low = Ground::Plains;
        look.High = Ground::Town;
        look.HighCorners = CornersOf(Opposite(edge));
        look.Roads = edge;
        Add(look);
        look.Roads = 0;
        look.Rails = edge;
        Add(look);
    }
    TileLook hamlet = Whole(Ground::Plains);
    hamlet.Special = Extra::Hamlet;
    for (const uint8_t edges : {NorthSouth, EastWest}) {
        hamlet.Roads = edges;
        Add(hamlet);
    }
    TileLook airfield = Whole(Ground::Plains);
    airfield.Special = Extra::Airfield;
    Add(airfield);
}

void Catalogue::AddTraffic() {
    BeginSet("ROAD", PlainsClass);
    AddWays(Ground::Plains, &TileLook::Roads, true);
    TileLook crossing = Whole(Ground::Plains);
    crossing.Roads = 15;
    Add(crossing);
    BeginSet("RDFM", PlainsClass);
    AddWays(Ground::Farm, &TileLook::Roads, true);
    crossing = Whole(Ground::Farm);
    crossing.Roads = 15;
    Add(crossing);
    AddWaysAcrossBorder(Ground::Plains, Ground::Farm, &TileLook::Roads);
    BeginSet("RDBR", BrushClass);
    AddWays(Ground::Brush, &TileLook::Roads, false);
    AddWaysAcrossBorder(Ground::Plains, Ground::Brush, &TileLook::Roads);

    BeginSet("RIVR", PlainsClass);
    AddWays(Ground::Plains, &TileLook::Rivers, true);
    AddWays(Ground::Plains, &TileLook::Rivers, false); // second variants
    BeginSet("RVBR", BrushClass);
    AddWays(Ground::Brush, &TileLook::Rivers, false);
    AddWaysAcrossBorder(Ground::Plains, Ground::Brush, &TileLook::Rivers);
    for (const uint8_t edge : {North, East, South, West}) { // springs
        TileLook spring = Whole(Ground::Brush);
        spring.Rivers = edge;
        Add(spring);
    }
    BeginSet("RAIL", PlainsClass);
    AddWays(Ground::Plains, &TileLook::Rails, false);
    for (const uint8_t edges : {NorthSouth, EastWest}) {
        const auto across = static_cast<uint8_t>(15 - edges);
        TileLook look = Whole(Ground::Plains);
        look.Rivers = edges;
        look.Roads = across;
        Add(look);
        look.Roads = 0;
        look.Rails = across;
        Add(look);
        look.Rivers = 0;
        look.Roads = edges;
        Add(look);
    }
    for (const uint8_t edge : {North, East, South, West}) {
        TileLook spring = Whole(Ground::Plains);
        spring.Rivers = edge;
        Add(spring);
    }
}

} // namespace vardenix::sample
