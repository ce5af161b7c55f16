#pragma once

#include "platform/Dialogs.h"
#include "theater/ProgramState.h"

#include <QImage>
#include <QWidget>

#include <memory>

namespace Ui {
class FrmVXTheaterPreview;
}

namespace vardenix {

// The whole theater as a small height map.
class FrmVXTheaterPreview : public QWidget {
    Q_OBJECT

public:
    // Both are borrowed for the window's life.
    FrmVXTheaterPreview(const ProgramState& state, Dialogs& dialogs);
    ~FrmVXTheaterPreview() override;

    // The window takes over ProgramState::Preview and fits itself round the picture.
    void PreviewChanged();

signals:
    // The close box was used; the window is hidden, not gone.
    void CloseBoxUsed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void FitRoundPicture();
    void Command1_Click();

    const ProgramState& state_;
    Dialogs& dialogs_;
    std::unique_ptr<Ui::FrmVXTheaterPreview> ui_;
    QImage picture0_; // one pixel for each post
};

} // namespace vardenix
