#include "mapview/Repaint.h"

namespace vardenix {
namespace {

uint32_t ColorOf(const MapPaletteEntry& entry) {
    return entry.Red | static_cast<uint32_t>(entry.Green) << 8 |
           static_cast<uint32_t>(entry.Blue) << 16;
}

// The pictures of the first pass. "NoTile.jpg" stands in for every number without one,
// and for every one that cannot be read.
class DayPictures {
public:
    explicit DayPictures(const Repaint& repaint)
        : ids_(repaint, TileUse::Day),
          noTile_(repaint.Tools.Pictures.IdOf(repaint.Sources.ShippedPath + "NoTile.jpg",
                                              PictureFormat::Jpeg, TileUse::Day)) {}

    TilePictureId Of(const Repaint& repaint, int32_t tileNumber, const TileInfo* entry) {
        if (entry == nullptr || entry->HasImage != 1)
            return noTile_;
        return ids_.Of(repaint, tileNumber, *entry);
    }

    TilePictureId NoTile() const { return noTile_; }

    void Prepare(Repaint& repaint) { ids_.Prepare(repaint); }

private:
    TileIds ids_;
    TilePictureId noTile_;
};

void PaintPost(Repaint& repaint, DayPictures& pictures, const PostCell& post) {
    const int32_t number = post.Post.TileOffset;
    const TileInfo* entry = EntryOf(repaint.Sources.Catalogue, number);
    if (entry == nullptr)
        LogPainting(repaint, "NOTile");
    if (!PaintCell(repaint, pictures.Of(repaint, number, entry), post.Cell))
        PaintCell(repaint, pictures.NoTile(), post.Cell);
    if (repaint.View.ApplyMAP && entry != nullptr)
        repaint.Surface.BlendColor(
            post.Cell, ColorOf(repaint.Sources.MapFileRecord.Palette[post.Post.Palette]),
            repaint.View.MapAlpha);
    LogPainting(repaint, "Tile");
}

bool PaintEveryPost(Repaint& repaint, DayPictures& pictures) {
    for (int32_t i = 1; i <= repaint.Grid.Count(); ++i) {
        if (const auto post = repaint.Grid.At(i))
            PaintPost(repaint, pictures, *post);
        if (!repaint.GoOn(i, 0))
            return false;
    }
    return true;
}

} // namespace

bool PaintTiles(Repaint& repaint) {
    DayPictures pictures(repaint);
    pictures.Prepare(repaint);
    StepsTogether steps(repaint.Surface);
    const bool finished = PaintEveryPost(repaint, pictures);
    steps.End();
    return finished;
}

} // namespace vardenix
