#pragma once

#include "make_sample_theater/Catalogue.h"
#include "make_sample_theater/Landscape.h"

#include <string>
#include <vector>

namespace vardenix::sample {

struct PostPlace {
    int X = 0;
    int Y = 0;
};

// A rectangle of town corners.
struct Town {
    int Left = 0;
    int Bottom = 0;
    int Across = 0; // corners
    int Upward = 0;
    std::string Name;

    // Post in the middle of the side that an edge faces; ways enter the town there.
    PostPlace Gate(uint8_t edge) const;
    int MiddleX() const { return Left + Across / 2; }
    int MiddleY() const { return Bottom + Upward / 2; }
};

struct Airfield {
    PostPlace At;
    std::string Name;
};

// The land and what runs over it. Grids of edges hold, for each post, which of its edges
// a way crosses; two posts that share an edge agree about it.
struct World {
    Landscape Land;
    Grid<uint8_t> Rivers;
    Grid<uint8_t> Roads;
    Grid<uint8_t> Rails;
    Grid<Extra> Special;
    std::vector<Town> Towns; // largest first
    std::vector<Airfield> Airfields;
    // The same ways as lists of posts, from one end to the other.
    std::vector<std::vector<PostPlace>> RiverCourses;
    std::vector<std::vector<PostPlace>> RoadCourses;
    std::vector<std::vector<PostPlace>> RailCourses;

    explicit World(Landscape land)
        : Land(std::move(land)), Rivers(Posts()), Roads(Posts()), Rails(Posts()),
          Special(Posts(), Extra::None) {}
    int Posts() const { return Land.Height.Side() - 1; }
    bool HasWay(int x, int y) const {
        return Rivers.At(x, y) || Roads.At(x, y) || Rails.At(x, y) ||
               Special.At(x, y) != Extra::None;
    }
};

// Rivers from the hills to the sea. Comes before towns and roads, which keep clear of
// them.
void DigRivers(World& world, uint32_t seed);

// Towns on low, even ground.
void FoundTowns(World& world, uint32_t seed);

// Roads between the towns, a railroad between the two largest, bridges where ways cross
// rivers, airfields beside towns.
void LayRoads(World& world, uint32_t seed);
void BuildAirfields(World& world);

// Chooses every post's tile. Grounds that no tile can join give way until all fit, so
// that neighbours always match; hamlets are added along the roads. Tile numbers per post.
Grid<int32_t> ChooseTiles(World& world, const Catalogue& catalogue, uint32_t seed);

} // namespace vardenix::sample
