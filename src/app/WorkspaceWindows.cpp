#include "app/WorkspaceWindows.h"

#include "mapview/windows/FrmVXTheaterPreview.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"
#include "workspace/windows/FrmVXTilePal.h"

namespace vardenix {

WorkspaceWindows::WorkspaceWindows() = default;
WorkspaceWindows::~WorkspaceWindows() = default;

} // namespace vardenix
