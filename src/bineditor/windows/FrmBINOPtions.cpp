#include "bineditor/windows/FrmBINOPtions.h"

#include "platform/windows/RunTimeBarrier.h"
#include "texts/Numbers.h"
#include "ui_FrmBINOPtions.h"

namespace vardenix {

namespace {

int16_t SizeOf(const QLineEdit* box) { return ToInt16(Val(box->text().toStdString())); }

} // namespace

FrmBINOPtions::FrmBINOPtions(Configuration& settings, QWidget* parent)
    : QDialog(parent), settings_(settings), ui_(std::make_unique<Ui::FrmBINOPtions>()) {
    ui_->setupUi(this);
    ui_->chkAutomaticallyCorrect->setChecked(settings.AutoL2);
    ui_->OptAfterSelected_0->setChecked(settings.DefInsertAfter);
    ui_->OptAfterSelected_1->setChecked(!settings.DefInsertAfter);
    ui_->txtM->setText(QString::number(settings.MTile));
    ui_->txtL->setText(QString::number(settings.LTile));
    ui_->txtT->setText(QString::number(settings.TTile));
    OnSignal(ui_->cmdOK, &QAbstractButton::clicked, this, [this] { cmdOK_Click(); });
    OnSignal(ui_->cmdCancel, &QAbstractButton::clicked, this, [this] { reject(); });
}

FrmBINOPtions::~FrmBINOPtions() = default;

// A size that overflows is told by the run-time's report, and nothing is stored.
void FrmBINOPtions::cmdOK_Click() {
    const int16_t mTile = SizeOf(ui_->txtM);
    const int16_t lTile = SizeOf(ui_->txtL);
    const int16_t tTile = SizeOf(ui_->txtT);
    settings_.AutoL2 = ui_->chkAutomaticallyCorrect->isChecked();
    settings_.DefInsertAfter = ui_->OptAfterSelected_0->isChecked();
    settings_.MTile = mTile;
    settings_.LTile = lTile;
    settings_.TTile = tTile;
    accept();
}

} // namespace vardenix
