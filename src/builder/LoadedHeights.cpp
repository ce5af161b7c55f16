#include "builder/LoadedHeights.h"

#include "files/FileNames.h"
#include "levels/RebuiltFiles.h"

#include <algorithm>

namespace vardenix {

namespace {

bool AsRead(const ElevationLayer& layer) {
    return layer.Kind == ElevationKind::L0 &&
           IdentityOfRealPath(RealPath(layer.Path)) == layer.Read &&
           IdentityOfRealPath(RealPath(layer.OffsetPath)) == layer.ReadO;
}

} // namespace

HeightsInRun HeightsIn(const Terrain& terrain, const ElevationMaster& master) {
    const ElevationLayer& layer = terrain.Elevations;
    if (layer.Kind == ElevationKind::None)
        return HeightsInRun::Untouched;
    if (SameFile(layer.Path, PairOfLevel(LxFolderOf(terrain), 0).L))
        return HeightsInRun::Replaced;
    return SameFile(layer.Path, master.Path) ? HeightsInRun::LeftOut
                                             : HeightsInRun::Untouched;
}

LoadedHeights::LoadedHeights(Terrain& terrain)
    : terrain_(terrain), asRead_(AsRead(terrain.Elevations)) {}

bool LoadedHeights::RewrittenBy(const RebuildReport& report) const {
    return terrain_.Elevations.Kind == ElevationKind::L0 &&
           std::ranges::any_of(report.Files, [this](const RebuiltFile& file) {
               return SameFile(file.Path, terrain_.Elevations.Path);
           });
}

void LoadedHeights::Follow(const RebuildReport& report) {
    if (!asRead_ || !RewrittenBy(report))
        return;
    ElevationLayer& layer = terrain_.Elevations;
    layer.Read = IdentityOfRealPath(RealPath(layer.Path));
    layer.ReadO = IdentityOfRealPath(RealPath(layer.OffsetPath));
}

} // namespace vardenix
