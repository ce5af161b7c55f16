#pragma once

#include "program/FeatureSet.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vardenix {

// Feature files: one feature a line, "KEYWORD N X,Y ... X,Y VALUE NAME", parted by blanks
// and tabs. Positions are posts counted from 0; only airports and labels have a name.

// Of all lists together. Beyond it a file is no theater's but garbage, whose short lines
// would take many times the file's size in memory.
constexpr size_t MostFeatures = 2000000;

// "AIRPORT" and so on.
std::string_view KeywordOf(FeatureKind kind);

// Adds the feature of one line to its list. Lines with an unknown first word and lines
// whose count is missing or fits no 16 bits leave nothing. What else is wrong with a line
// ends its reading there: the feature stays as far as it was filled.
void ParseFeatureLine(std::string_view line, FeatureSet& features);

// "X,Y"; what follows a second comma does not count. Nothing when one of the two is no
// whole number text, or too large.
std::optional<FeaturePoint> ParsePoint(std::string_view token);

// Adds the features of a file, whose lines end in any way. The errors of reading (53, 70,
// 75), and error 7 beyond MostFeatures, leave all lists as they were.
void LoadFeatureFile(const std::string& path, FeatureSet& features);

// A feature as a line without its end. Coordinates are rounded to whole posts, half to
// even.
std::string FeatureToLine(const Feature& feature, FeatureKind kind);

// All six lists without a feature.
void ClearFeatures(FeatureSet& features);

} // namespace vardenix
