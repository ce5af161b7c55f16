#pragma once

#include "mapview/MapView.h"
#include "platform/Dialogs.h"
#include "theater/ProgramState.h"
#include "theater/WorkspaceCommands.h"

#include <QImage>
#include <QWidget>

#include <memory>

namespace Ui {
class FrmVXTheaterPreview;
}

namespace vardenix {

// The whole theater as a small height map, with a box round what the map shows. A click
// moves the map there.
class FrmVXTheaterPreview : public QWidget {
    Q_OBJECT

public:
    // All are borrowed for the window's life.
    FrmVXTheaterPreview(const ProgramState& state, const MapView& view, Dialogs& dialogs,
                        WorkspaceCommands& commands);
    ~FrmVXTheaterPreview() override;

    // The window takes over ProgramState::Preview and fits itself round the picture.
    void PreviewChanged();
    // The boxes follow the view.
    void MakeViewPort();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void FitRoundPicture();
    void Command1_Click();
    void Picture1_MouseDown(QPoint pixel);

    const ProgramState& state_;
    const MapView& view_;
    Dialogs& dialogs_;
    WorkspaceCommands& commands_;
    std::unique_ptr<Ui::FrmVXTheaterPreview> ui_;
    QImage picture0_; // one pixel for each post
};

} // namespace vardenix
