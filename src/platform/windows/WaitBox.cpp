#include "platform/windows/WaitBox.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace vardenix {

WaitBox::WaitBox() : before_(WatchLocks(this)) {}

WaitBox::~WaitBox() { WatchLocks(before_); }

void WaitBox::Make() {
    answer_ = WaitAnswer::GoOn;
    box_ = std::make_unique<QDialog>(QApplication::activeWindow());
    box_->setObjectName("WaitBox");
    box_->setWindowTitle("Vardenix");
    box_->setWindowModality(Qt::ApplicationModal);
    text_ = new QLabel(box_.get());
    text_->setWordWrap(true);
    text_->setMinimumWidth(420);
    text_->setTextFormat(Qt::PlainText);
    auto* buttons = new QDialogButtonBox(box_.get());
    passOver_ = buttons->addButton("&Save all the same", QDialogButtonBox::AcceptRole);
    passOver_->setToolTip(
        "The folder is yours. Whoever reads its files may get a mixture "
        "of old and new ones");
    QPushButton* cancel = buttons->addButton(QDialogButtonBox::Cancel);
    cancel->setDefault(true);
    auto* column = new QVBoxLayout(box_.get());
    column->addWidget(text_);
    column->addWidget(buttons);
    QObject::connect(buttons, &QDialogButtonBox::accepted, box_.get(),
                     [this] { answer_ = WaitAnswer::PassOver; });
    // Esc and the close box reject as well.
    QObject::connect(buttons, &QDialogButtonBox::rejected, box_.get(), &QDialog::reject);
    QObject::connect(box_.get(), &QDialog::rejected, box_.get(),
                     [this] { answer_ = WaitAnswer::GiveUp; });
}

WaitAnswer WaitBox::Waiting(const LockWait& wait) {
    if (!box_)
        Make();
    text_->setText(QString::fromStdString(TextOfWait(wait)) + "...");
    passOver_->setVisible(wait.MayPassOver);
    if (!box_->isVisible() && answer_ == WaitAnswer::GoOn)
        box_->show();
    QApplication::processEvents();
    return answer_;
}

void WaitBox::WaitIsOver() { box_.reset(); }

} // namespace vardenix
