#include "workspace/windows/FrmAbout.h"

#include "platform/OpenPage.h"
#include "platform/windows/RunTimeBarrier.h"
#include "program/ProgramVersion.h"
#include "ui_FrmAbout.h"

namespace vardenix {

namespace {

constexpr const char* ProgramPage = "http://www.vardenix.example/vardenix";

} // namespace

FrmAbout::FrmAbout(const Platform& platform, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::FrmAbout>()) {
    ui_->setupUi(this);
    ui_->lblVersion->setText(
        QString::fromStdString("Vardenix v" + vardenix::ProgramVersion()));
    ui_->Image1->SetPicture(":/logo.png", {640, 120});
    ui_->Image1->setToolTip(ProgramPage);
    setFixedSize(sizeHint());
    ui_->Command1->setFocus(); // not the link, which comes first
    OnSignal(ui_->Image1, &QAbstractButton::clicked, this, [&platform] {
        OpenPage(platform.Processes, platform.Dialogs, ProgramPage);
    });
    OnSignal(ui_->Command1, &QAbstractButton::clicked, this, [this] { accept(); });
}

FrmAbout::~FrmAbout() = default;

} // namespace vardenix

#include "moc_FrmAbout.cpp"
