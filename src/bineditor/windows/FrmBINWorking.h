#pragma once

#include <QTimer>
#include <QWidget>

#include <memory>

namespace Ui {
class FrmBINWorking;
}

namespace vardenix {

// A small window that says that work goes on, with dots that come and go. It takes
// neither the keyboard nor the mouse from the window that works.
class FrmBINWorking : public QWidget {
    Q_OBJECT

public:
    FrmBINWorking();
    ~FrmBINWorking() override;

    // In the middle of that window; hidden for none.
    void ShowOver(QWidget* window);
    void Timer1_Timer();

private:
    std::unique_ptr<Ui::FrmBINWorking> ui_;
    QTimer timer1_;
};

} // namespace vardenix
