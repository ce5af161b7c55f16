#pragma once

#include "files/LockWait.h"

#include <memory>

class QDialog;
class QLabel;
class QPushButton;

namespace vardenix {

// Shows in a box for whom the program waits, with Cancel; where the wait may be passed
// over, with a button for that as well.
class WaitBox : public LockWatcher {
public:
    WaitBox();
    ~WaitBox() override;

    WaitAnswer Waiting(const LockWait& wait) override;
    void WaitIsOver() override;

private:
    void Make();

    LockWatcher* before_;
    std::unique_ptr<QDialog> box_;
    QLabel* text_ = nullptr;
    QPushButton* passOver_ = nullptr;
    WaitAnswer answer_ = WaitAnswer::GoOn;
};

} // namespace vardenix
