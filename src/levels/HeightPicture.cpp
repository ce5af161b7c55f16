#include "levels/HeightPicture.h"

#include "texts/Numbers.h"

namespace vardenix {

uint32_t ElevationClassColor(int16_t elevation, const PreviewColors& colors) {
    static constexpr std::array<int16_t, 7> UpperBounds{49,   100,  500, 1000,
                                                        1500, 3000, 5000};
    size_t level = 0;
    while (level < UpperBounds.size() && elevation > UpperBounds.at(level))
        ++level;
    return colors.Level.at(level);
}

HeightPicture ShowLFile(const Terrain& terrain, const PreviewColors& colors,
                        Progress& progress, DebugLog& log) {
    const auto side = static_cast<size_t>(terrain.MapWidth);
    HeightPicture picture;
    picture.Side = terrain.MapWidth;
    picture.Pixels.assign(side * side, HeightPicture::Unpainted);
    const auto posts = terrain.LxArr.Values();
    for (size_t row = 0; row < side; ++row) {
        // Serials of this row of posts begin behind row * side; Y is row + 1.
        const size_t pictureRow = side - row;
        if (pictureRow < side)
            for (size_t column = 0; column < side; ++column) {
                const int16_t elevation = posts[row * side + column].Elevation;
                picture.Pixels[pictureRow * side + column] =
                    elevation == 0 ? colors.Sea : ElevationClassColor(elevation, colors);
            }
        progress.SetBar(Percent(static_cast<int64_t>(row) + 1, terrain.MapWidth));
        progress.LetEventsThrough();
    }
    progress.LetEventsThrough();
    log.WriteLog("Exiting ShowLfile...");
    return picture;
}

} // namespace vardenix
