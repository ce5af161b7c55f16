#include "bineditor/windows/FrmBINWorking.h"

#include "ui_FrmBINWorking.h"

namespace vardenix {

namespace {

constexpr int Tick = 300; // ms
const QString AllDots = "Working.......";

} // namespace

FrmBINWorking::FrmBINWorking()
    : QWidget(nullptr, Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowDoesNotAcceptFocus),
      ui_(std::make_unique<Ui::FrmBINWorking>()) {
    ui_->setupUi(this);
    setAttribute(Qt::WA_ShowWithoutActivating);
    timer1_.setObjectName("Timer1");
    timer1_.setInterval(Tick);
    connect(&timer1_, &QTimer::timeout, this, &FrmBINWorking::Timer1_Timer);
}

FrmBINWorking::~FrmBINWorking() = default;

void FrmBINWorking::ShowOver(QWidget* window) {
    if (window == nullptr) {
        timer1_.stop();
        hide();
        return;
    }
    if (isVisible())
        return;
    adjustSize();
    move(window->frameGeometry().center() - rect().center());
    timer1_.start();
    show();
}

void FrmBINWorking::Timer1_Timer() {
    const QString text = ui_->lblWorking->text();
    ui_->lblWorking->setText(text == AllDots ? "Working" : text + ".");
}

} // namespace vardenix

#include "moc_FrmBINWorking.cpp"
