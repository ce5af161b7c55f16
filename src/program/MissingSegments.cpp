#include "program/MissingSegments.h"

#include <algorithm>

namespace vardenix {

namespace {

std::string Count(const SegmentGap& gap) {
    return std::to_string(gap.Missing) + " of " + std::to_string(gap.All) + " segments";
}

// Segments a side as theater.map states them; 0 when it states nothing that could be.
int64_t StatedSegments(const Terrain& terrain, const MapFileRecord& record) {
    const MapFileRecord::LevelSize& level2 = record.Levels[2];
    if (level2.Width <= 0 || level2.Height <= 0)
        return 0;
    const int64_t stated = std::max(level2.Width, level2.Height);
    constexpr int64_t most = MaxGridWidth / SegmentSide;
    if (stated <= most && stated != terrain.MapWidth)
        return stated;
    return stated <= MaxGridWidth ? stated / SegmentSide : 0;
}

} // namespace

SegmentGap GapOf(const Terrain& terrain, const MapFileRecord& record) {
    const int64_t side = terrain.MapWidth / SegmentSide;
    const int64_t all = std::max(StatedSegments(terrain, record), side);
    return {all * all - side * side + terrain.Gap.Missing, all * all};
}

void TellGap(Terrain& terrain, const MapFileRecord& record, Dialogs& dialogs) {
    // A file that is its own O file was never a pair.
    if (terrain.LFilename == terrain.OFilename)
        return;
    terrain.Gap = GapOf(terrain, record);
    if (terrain.Gap.Missing > 0)
        dialogs.Notice(Count(terrain.Gap) + " of this theater are missing in " +
                           terrain.LFilename + " and " + terrain.OFilename +
                           ".\nSaving would make that permanent: if there is a backup of "
                           "the two files, bring it back first.",
                       "Warning...", BoxIcon::Warning);
}

bool MaySaveOverGap(Terrain& terrain, Dialogs& dialogs) {
    SegmentGap& gap = terrain.Gap;
    if (gap.Missing == 0 || gap.MayStay)
        return true;
    gap.MayStay = dialogs.MessageBox(
                      Count(gap) + " were missing in " + terrain.LFilename +
                          " when it was opened. Saving makes that permanent. "
                          "Save it all the same?",
                      "Confirm", BoxIcon::Warning, BoxButtons::YesNo) == BoxAnswer::Yes;
    return gap.MayStay;
}

} // namespace vardenix
