#pragma once

#include "levels/PostDelta.h"
#include "levels/Terrain.h"
#include "workspace/Selection.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace vardenix {

// Which fields of posts come along.
struct ClipFields {
    bool Tile = true;
    bool Elevation = true;
    bool Palette = true;
    bool X1 = true;
    bool X2 = true;

    bool operator==(const ClipFields&) const = default;
    // Pictures of tiles cannot be turned, nor what hangs on them.
    bool MayTurn() const { return Elevation && !Tile && !Palette && !X1 && !X2; }
};

// Copied posts: the smallest rectangle round them, row by row from the lowest. Posts that
// were not selected are in it and count for nothing.
struct PostClip {
    int32_t Width = 0; // posts
    int32_t Height = 0;
    std::vector<TerrainPost> Posts;
    std::vector<uint8_t> Selected; // 1 for each that is

    bool operator==(const PostClip&) const = default;
};

// Of a selection on the terrain; nothing of an empty one.
PostClip ClipOf(const Terrain& terrain, const Selection& selection);

// From left to right, and a quarter against the clock.
PostClip Mirrored(const PostClip& clip);
PostClip Turned(const PostClip& clip);

// What becomes of level 2 when a clip is stamped with its lower left post at a place,
// which may lie outside; nothing is changed yet. `bounds`, where there is one, is what
// may be changed.
PostDelta StampedPosts(const Terrain& terrain, const PostClip& clip, PostPlace lowerLeft,
                       const ClipFields& fields, const Selection* bounds = nullptr);
// What is cut out becomes 0, as far as its fields come along.
PostDelta CutPosts(const Terrain& terrain, const Selection& selection,
                   const ClipFields& fields);

// A clip as the system's clipboard holds it between two programs, and back. Errors 62 and
// 9 for bytes that are none: cut short, of another size than they tell, no rectangle, or
// with a negative tile number.
std::vector<std::byte> BytesOf(const PostClip& clip);
PostClip ParseClip(std::span<const std::byte> bytes);

} // namespace vardenix
