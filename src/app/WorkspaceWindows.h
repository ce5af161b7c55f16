#pragma once

#include <memory>

namespace vardenix {

class FrmVXMain;
class FrmVXMap;
class FrmVXTheaterPreview;
class FrmVXTilePal;

// The windows of the workspace, made while the first theater opens, kept for the run.
struct WorkspaceWindows {
    WorkspaceWindows();
    WorkspaceWindows(const WorkspaceWindows&) = delete;
    WorkspaceWindows& operator=(const WorkspaceWindows&) = delete;
    ~WorkspaceWindows();

    std::unique_ptr<FrmVXMain> Panel;
    std::unique_ptr<FrmVXMap> Map;
    std::unique_ptr<FrmVXTheaterPreview> Preview;
    std::unique_ptr<FrmVXTilePal> Palette;
};

} // namespace vardenix
