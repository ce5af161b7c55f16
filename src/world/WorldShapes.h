#pragma once

#include "program/FeatureSet.h"
#include "world/TheaterPlace.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vardenix {

// A shape of a map: a point, a line, the border of an area or of a hole in the area
// before it.
struct WorldShape {
    enum class Form : uint8_t { Point, Line, Area, Hole };

    Form Shape = Form::Point;
    std::string Kind; // UTF-8, as is the name
    std::string Name;
    int32_t Value = 0;
    int32_t Told = -1;                // points that its feature had; -1: it does not tell
    std::vector<FeaturePoint> Points; // in units of the place's reference system
};

// As the helper program hands shapes over, in this machine's byte order. Error 62 for
// bytes that end in the middle.
std::vector<WorldShape> ShapesFromBytes(std::span<const std::byte> bytes,
                                        const std::string& path);
std::string BytesOfShapes(const std::vector<WorldShape>& shapes);

// The kind that a word of a map stands for: a keyword of feature files, or several of it
// ("road", "Roads"). Nothing for any other word.
std::optional<FeatureKind> KindOfWord(std::string_view word);

// What shapes of other kinds become; nothing leaves them out. By the word of the map,
// letter for letter.
using KindsOfWords = std::map<std::string, std::optional<FeatureKind>>;

// Shapes as features, posts counted from 0 and whole numbers in the middle of a post.
// Airports and labels lie in the middle of a line or an area, and holes are left out of
// cities; lines of more points than a file can count are cut, areas thinned. `unknown`
// gets the words that stand for no kind, and how many shapes have each.
void AddShapes(const std::vector<WorldShape>& shapes, const TheaterPlace& place,
               const KindsOfWords& kinds, FeatureSet& features,
               std::map<std::string, int64_t>& unknown);

// The feature as a shape of a map; nothing for one without points.
std::optional<WorldShape> ShapeOf(const Feature& feature, FeatureKind kind,
                                  const TheaterPlace& place);

} // namespace vardenix
