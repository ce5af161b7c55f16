#include "bineditor/windows/TileDialogs.h"

#include "bineditor/windows/FrmBINAreasEdit.h"
#include "bineditor/windows/FrmBINPathEdit.h"
#include "bineditor/windows/FrmBINWorking.h"

namespace vardenix {

bool EditArea(TileArea& area, QWidget* parent) {
    FrmBINAreasEdit window(area, parent);
    window.exec();
    return window.Changed();
}

bool EditPath(TilePath& path, QWidget* parent) {
    FrmBINPathEdit window(path, parent);
    window.exec();
    return window.Changed();
}

WorkingNotice::WorkingNotice() : window_(std::make_unique<FrmBINWorking>()) {}

WorkingNotice::~WorkingNotice() = default;

void WorkingNotice::ShowOver(QWidget* window) { window_->ShowOver(window); }

} // namespace vardenix
