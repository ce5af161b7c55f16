// A feature file of any bytes: every line is read as far as it goes, and what was read
// comes back from its own lines, in whole numbers.
#include "Require.h"
#include "features/FeatureExport.h"
#include "features/FeatureFile.h"
#include "texts/TextLines.h"

#include <cmath>
#include <string_view>

using namespace vardenix;

namespace {

FeatureSet Parsed(std::string_view text) {
    FeatureSet set;
    std::string_view line;
    while (NextLine(text, line))
        ParseFeatureLine(line, set);
    return set;
}

void RequireSound(const Feature& feature) {
    Require(feature.PointCount >= -32768 && feature.PointCount <= 32767);
    Require(feature.Points.empty() ||
            feature.Points.size() <= static_cast<size_t>(feature.PointCount));
    for (const FeaturePoint& point : feature.Points)
        Require(std::isfinite(point.X) && std::isfinite(point.Y));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const FeatureSet set = Parsed(text);
    Require(set.Count() <= size);
    size_t points = 0;
    for (const FeatureKind kind : FeatureKinds) {
        const FeatureList& list = set.Of(kind);
        for (size_t i = 1; i < list.size(); ++i) {
            RequireSound(list[i]);
            points += list[i].Points.size();
            // Lines of many missing points are long; a few are enough.
            if (list[i].PointCount < 0 || list[i].PointCount > 100)
                continue;
            const std::string line = FeatureToLine(list[i], kind);
            const FeatureSet again = Parsed(line);
            Require(again.Count() == 1);
            Require(FeatureToLine(again.Of(kind)[1], kind) == line);
        }
    }
    Require(points * 4 <= size + 4);
    const FoundFeatures found = FeaturesInside(set, {-100, -100, 100, 100});
    for (const FeatureKind kind : FeatureKinds)
        Require(found.ByKind[static_cast<size_t>(kind) - 1].size() < set.Of(kind).size());
    return 0;
}
