#include "mapview/Repaint.h"

#include "catalogue/PictureNames.h"
#include "texts/Numbers.h"

#include <exception>
#include <string>

namespace vardenix {

bool Repaint::GoOn(int32_t i, int32_t base) {
    const int percent = static_cast<int>(RoundHalfEven(i * 50.0 / Grid.Count())) + base;
    if (percent != LastPercent) {
        LastPercent = percent;
        Tools.PB3.SetBar(percent);
    }
    Screen.LookForEsc();
    if (!Tools.AbortPaint)
        return true;
    Tools.AbortPaint = false;
    return false;
}

const TileInfo* EntryOf(const Catalogue& catalogue, int32_t tileNumber) {
    if (tileNumber < 0 || static_cast<size_t>(tileNumber) >= catalogue.Lookup.size())
        return nullptr;
    return &catalogue.Lookup[static_cast<size_t>(tileNumber)];
}

void LogPainting(const Repaint& repaint, const char* what) {
    if (!repaint.Tools.Log.DebugFlag)
        return;
    const std::string side = std::to_string(repaint.Grid.CellSide());
    repaint.Tools.Log.WriteLog(std::string("Painting ") + what + " with dimensions " +
                               side + " X " + side);
}

TileIds::TileIds(const Repaint& repaint, TileUse use)
    : use_(use), ids_(repaint.Sources.Catalogue.Lookup.size(), -1) {}

TilePictureId TileIds::Of(const Repaint& repaint, int32_t tileNumber,
                          const TileInfo& entry) {
    TilePictureId& id = ids_[static_cast<size_t>(tileNumber)];
    if (id < 0)
        id = repaint.Tools.Pictures.IdOf(
            TilePicturePath(repaint.Sources.Catalogue.DDSFolder,
                            use_ == TileUse::Day ? entry.DayFile : entry.NightFile),
            PictureFormat::Dds, use_);
    return id;
}

void TileIds::Prepare(Repaint& repaint) {
    std::vector<TilePictureId> wanted;
    for (int32_t i = 1; i <= repaint.Grid.Count(); ++i) {
        const auto post = repaint.Grid.At(i);
        if (!post)
            continue;
        const int32_t number = post->Post.TileOffset;
        const TileInfo* entry = EntryOf(repaint.Sources.Catalogue, number);
        if (entry != nullptr && entry->HasImage == 1 &&
            ids_[static_cast<size_t>(number)] < 0)
            wanted.push_back(Of(repaint, number, *entry));
    }
    repaint.Tools.Pictures.Prepare(wanted, repaint.Grid.CellSide(), [&repaint] {
        repaint.Screen.LookForEsc();
        return repaint.Tools.AbortPaint;
    });
}

bool PaintCell(Repaint& repaint, TilePictureId id, const PixelRect& cell) {
    try {
        return repaint.Surface.PaintTile(repaint.Tools.Pictures, id, cell,
                                         repaint.Grid.CellSide());
    } catch (const std::exception&) {
        // One tile less on the map is all that a bad picture may cost.
        return false;
    }
}

} // namespace vardenix
