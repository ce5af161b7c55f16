#include "mapeditor/windows/MapEditorDialogs.h"

#include "mapeditor/windows/frmMAPDet.h"
#include "mapeditor/windows/frmMAPSetAlpha.h"

namespace vardenix {

std::optional<MapPaletteEntry> AskEntry(int index, const MapPaletteEntry& entry,
                                        Dialogs& dialogs, QWidget& parent) {
    frmMAPDet window(index, entry, dialogs, &parent);
    if (window.exec() != QDialog::Accepted)
        return std::nullopt;
    return window.Entry();
}

int16_t AskNewAlpha(uint8_t current, QWidget& parent) {
    frmMAPSetAlpha window(current, &parent);
    window.exec();
    return window.NewAlpha();
}

} // namespace vardenix
