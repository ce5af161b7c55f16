#pragma once

#include "platform/Registry.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vardenix {

// A theater of an installed game. Texts are the bytes of the files, Windows-1252; they
// become UTF-8 where they name a file.
struct TheaterInfo {
    std::string Name;
    std::string TdfFile; // of the description, below FalconBaseDir
    std::string CampaignDir;
    std::string ObjectDir;
    std::string Desc;
    std::string Bitmap;
    std::string TerrainDir; // below FalconBaseDir
    std::string ArtDir;
    std::string MovieDir;
    std::string UISoundDir;
    std::string MiscTexDir;
    std::string DataDir3D;
    int16_t MinTacan = 0;
    std::string SoundDir;
    std::string WidthText; // of level 2 in posts, decimal
};

enum FalconStates : int32_t {
    FalconNotFound = 0,
    FalconListed = 1,   // the start-up window offers TheaterList
    FalconUnlisted = 2, // TheaterList is read and not offered
};

// The stored index of a theater is 16 bits wide.
constexpr size_t MaxTheaters = 32767;

// What an installed game offers.
struct Discovery {
    std::string FalconBaseDir;    // real, with a trailing backslash; empty if none
    std::string FalconCurTheater; // kept, and used for nothing
    int32_t FalconState = FalconNotFound;
    // Element 0 is unused: a theater's index here is its index in Combo1.
    std::vector<TheaterInfo> TheaterList{1};
    // A sentence for each theater that was left out.
    std::vector<std::string> LeftOut;
};

// Fills `discovery` from the install that the registry names. Whatever cannot be opened
// (theater.lst, a description, a theater.map) throws the error of that opening with the
// path, 53 when the file is missing; 6 when theater.lst names more than MaxTheaters.
// After a throw `discovery` is that of no install, so that no half-read theater is ever
// offered. A theater whose description or terrain would lie outside the install is left
// out.
void DiscoverTheaters(const Registry& registry, Discovery& discovery);

// Whether a folder is an install: it has a theater.lst.
bool IsInstall(const std::string& folder);
// Likewise from the install in a folder that the user has named.
void DiscoverTheatersIn(const std::string& folder, Discovery& discovery);

// The theaters of a theater.lst, only TdfFile filled, in order of the lines and from
// element 0. A line that leads outside adds a sentence to `leftOut` instead. Error 6 as
// above; `path` is named in both.
std::vector<TheaterInfo> ReadTheaterList(std::string_view text, const std::string& path,
                                         std::vector<std::string>& leftOut);

// Fills in what a description says; a later line of the same key wins. A MINTACAN too
// large for its field becomes the nearest that fits.
void ReadDescription(std::string_view text, TheaterInfo& theater);

// WidthText of a theater.map. Bytes that a short file lacks count as 0.
std::string ReadTheaterWidth(std::span<const std::byte> map);

// The line, blanks round it aside, is not empty and does not begin with `commentPrefix`.
bool IsDataLine(std::string_view line, std::string_view commentPrefix);

// 1: the trimmed line up to its first blank; 2: what follows that blank, trimmed. Only a
// blank separates, a tab does not.
std::string GetWord(std::string_view line, int which);

// Every "/" becomes "\".
std::string NormalizeSlashes(std::string_view text);

} // namespace vardenix
