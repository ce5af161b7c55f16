#include "bineditor/windows/BinDialogs.h"

#include "bineditor/windows/FrmBINOPtions.h"
#include "bineditor/windows/FrmBINTileDet.h"
#include "catalogue/PictureNames.h"
#include "catalogue/TileNumbers.h"
#include "pictures/ImageFiles.h"

namespace vardenix {

namespace {

Bitmap PictureOf(const ProgramState& state, const TileInfo& info) {
    Bitmap picture;
    if (info.HasImage == 1)
        picture = ImageLoad(PictureFormat::Dds,
                            TilePicturePath(state.Catalogue.DDSFolder, info.DayFile));
    if (!picture)
        picture =
            ImageLoad(PictureFormat::Jpeg, state.Folders.ShippedPath + "NoTile.jpg");
    return picture;
}

} // namespace

EditedTile ShowTileDetails(ProgramState& state, const Platform& platform,
                           const TilePlace& place, QWidget* parent) {
    const int32_t number = NumberOfPlace(place);
    FrmBINTileDet window({state.Catalogue, state.Configuration, platform.Dialogs}, number,
                         PictureOf(state, InfoAt(state.Catalogue, number)), parent);
    const bool written = window.exec() == QDialog::Accepted;
    return {written, written && window.Changed()};
}

void ShowBinOptions(Configuration& settings, Dialogs& dialogs, QWidget* parent) {
    FrmBINOPtions window(settings, dialogs, parent);
    window.exec();
}

} // namespace vardenix
