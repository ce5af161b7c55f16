#include "workspace/windows/MapDialogs.h"

#include "workspace/windows/FrmVXTileDetails.h"

#include <QApplication>

namespace vardenix {

namespace {

// What was entered, unless the dialog was closed without an update.
std::optional<TerrainPost> Ask(FrmVXTileDetails& dialog) {
    dialog.exec();
    if (!dialog.Details().DetailsUpdated)
        return std::nullopt;
    return dialog.Details().Entered;
}

} // namespace

std::optional<TerrainPost> MapDialogs::EditPost(const TerrainPost& post) {
    FrmVXTileDetails dialog(post, {dialogs_, workspace_, lookup_},
                            QApplication::activeWindow());
    return Ask(dialog);
}

std::optional<int16_t> MapDialogs::EditElevation(int16_t elevation) {
    FrmVXTileDetails dialog(elevation, {dialogs_, workspace_, lookup_},
                            QApplication::activeWindow());
    const auto entered = Ask(dialog);
    if (!entered)
        return std::nullopt;
    return entered->Elevation;
}

} // namespace vardenix
