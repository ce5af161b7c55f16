#include "bineditor/windows/FrmBINAreasEdit.h"

#include "bineditor/TileDetail.h"
#include "bineditor/windows/TypeList.h"
#include "catalogue/TypeNames.h"
#include "platform/windows/RunTimeBarrier.h"
#include "ui_FrmBINAreasEdit.h"

namespace vardenix {

FrmBINAreasEdit::FrmBINAreasEdit(TileArea& edited, QWidget* parent)
    : QDialog(parent), edited_(edited), ui_(std::make_unique<Ui::FrmBINAreasEdit>()),
      boxes_({}) {
    ui_->setupUi(this);
    boxes_ = FloatBoxes({ui_->txtCenterX, ui_->txtCenterY, ui_->txtRadius});
    FillAreaTypes(*ui_->ComType);
    ui_->ComType->setCurrentIndex(AreaTypeIndex(edited.Type));
    boxes_.Show(AreaFields(edited));
    OnSignal(ui_->cmdOK, &QAbstractButton::clicked, this, [this] { cmdOK_Click(); });
    OnSignal(ui_->cmdCancel, &QAbstractButton::clicked, this, [this] { reject(); });
}

FrmBINAreasEdit::~FrmBINAreasEdit() = default;

void FrmBINAreasEdit::cmdOK_Click() {
    if (!boxes_.Write(AreaFields(edited_), changed_))
        return;
    TakeType(*ui_->ComType, AreaTypeFromIndex, edited_.Type);
    changed_ = true;
    accept();
}

} // namespace vardenix

#include "moc_FrmBINAreasEdit.cpp"
