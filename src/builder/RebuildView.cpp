#include "builder/RebuildView.h"

#include "texts/Numbers.h"

namespace vardenix {

void RebuildView::GoOn() {
    LetEventsThrough();
    if (StopWanted())
        throw RebuildStopped();
}

RuntimeError RebuildStopped() {
    return RuntimeError(ErrorNumber::Cancelled,
                        "The rebuild was stopped; no file has changed.", {});
}

double RebuildBar::Width() const {
    return Maximum == 0 ? 0 : 1.0 * FullWidth * Value / Maximum;
}

int32_t StepsOfRebuild(int32_t mapWidth, bool makeL3) {
    const double width = mapWidth;
    const double fine = width / 4 + width / 8;
    return ToInt32(makeL3 ? fine + width / 32 + width / 64 + width / 128 : fine);
}

int32_t StepsOfElevationRebuild(int32_t mapWidth, bool fromElvFile) {
    const double width = mapWidth;
    return ToInt32(width / 4 + (fromElvFile ? 1 : width / 4) + width / 8 + width / 16 +
                   width / 32 + width / 64 + width / 128 + width / 16);
}

} // namespace vardenix
