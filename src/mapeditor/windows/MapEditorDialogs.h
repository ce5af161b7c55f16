#pragma once

#include "platform/Dialogs.h"
#include "program/MapFileRecord.h"

#include <cstdint>
#include <optional>

class QWidget;

namespace vardenix {

// The small windows of the MAP editor; each has ended when its call returns.

// frmMAPDet over an entry: what was entered, nothing when it was cancelled.
std::optional<MapPaletteEntry> AskEntry(int index, const MapPaletteEntry& entry,
                                        Dialogs& dialogs, QWidget& parent);

// frmMAPSetAlpha: 0 to 255, or -1 for no change.
int16_t AskNewAlpha(uint8_t current, QWidget& parent);

} // namespace vardenix
