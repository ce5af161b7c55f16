#pragma once

#include "catalogue/TextureBin.h"

#include <memory>

class QWidget;

namespace vardenix {

class FrmBINWorking;

// The windows that those of the BIN editor open over themselves.

// The dialogs of an area and of a path; they have ended when the call returns. True when
// something was written in the record.
bool EditArea(TileArea& area, QWidget* parent);
bool EditPath(TilePath& path, QWidget* parent);

// The small window that says that work goes on.
class WorkingNotice {
public:
    WorkingNotice();
    WorkingNotice(const WorkingNotice&) = delete;
    WorkingNotice& operator=(const WorkingNotice&) = delete;
    ~WorkingNotice();

    // In the middle of that window; hidden for none.
    void ShowOver(QWidget* window);

private:
    std::unique_ptr<FrmBINWorking> window_;
};

} // namespace vardenix
