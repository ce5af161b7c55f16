#include "bineditor/windows/FrmBINPathEdit.h"

#include "bineditor/TileDetail.h"
#include "bineditor/windows/TypeList.h"
#include "catalogue/TypeNames.h"
#include "platform/windows/RunTimeBarrier.h"
#include "ui_FrmBINPathEdit.h"

namespace vardenix {

FrmBINPathEdit::FrmBINPathEdit(TilePath& edited, QWidget* parent)
    : QDialog(parent), edited_(edited), ui_(std::make_unique<Ui::FrmBINPathEdit>()),
      boxes_({}) {
    ui_->setupUi(this);
    boxes_ = FloatBoxes(
        {ui_->txtStartX, ui_->txtStartY, ui_->txtEndX, ui_->txtEndY, ui_->txtWidth});
    FillPathTypes(*ui_->ComPathType);
    ui_->ComPathType->setCurrentIndex(PathTypeIndex(edited.Type));
    boxes_.Show(PathFields(edited));
    OnSignal(ui_->cmdOK, &QAbstractButton::clicked, this, [this] { cmdOK_Click(); });
    OnSignal(ui_->cmdCancel, &QAbstractButton::clicked, this, [this] { reject(); });
}

FrmBINPathEdit::~FrmBINPathEdit() = default;

void FrmBINPathEdit::cmdOK_Click() {
    if (!boxes_.Write(PathFields(edited_), changed_))
        return;
    TakeType(*ui_->ComPathType, PathTypeFromIndex, edited_.Type);
    changed_ = true;
    accept();
}

} // namespace vardenix

#include "moc_FrmBINPathEdit.cpp"
