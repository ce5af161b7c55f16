#pragma once

#include <array>

namespace vardenix::sample {

// Everything here is made up for this island.
constexpr const char* TheaterName = "Sorrelund";
constexpr const char* TheaterFolder = "sorrelund";
constexpr const char* TheaterDescription =
    "Sorrelund, an invented island, made by code to try things out on";

constexpr std::array<const char*, 12> TownNames = {
    "Varrowmere", "Quillstad", "Ostenhythe", "Brannoch Ford", "Lindaspar",  "Tollenwick",
    "Meskavale",  "Arnforth",  "Pellacombe", "Hesterby Quay", "Dunvarrick", "Yarlow"};

constexpr std::array<const char*, 4> PeakNames = {"Mount Karrowen", "The Skarrel",
                                                  "Old Hethertop", "Grey Morvane"};

constexpr std::array<const char*, 4> CapeNames = {"Cape Ollerin", "Thessick Head",
                                                  "Wendel Point", "Sarn Ness"};

} // namespace vardenix::sample
