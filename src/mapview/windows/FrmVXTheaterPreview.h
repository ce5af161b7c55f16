#pragma once

#include "mapview/MapLayout.h"
#include "mapview/MapView.h"
#include "platform/Dialogs.h"
#include "program/ProgramState.h"
#include "program/WorkspaceCommands.h"

#include <QBasicTimer>
#include <QWidget>

#include <memory>
#include <optional>

namespace Ui {
class FrmVXTheaterPreview;
}

namespace vardenix {

// The whole theater as a small height map, with a box round what the map shows. A click
// moves the map there, and a drag along. Edits are seen, those within the map's view at
// once, others a moment after the map has been painted.
class FrmVXTheaterPreview : public QWidget {
    Q_OBJECT

public:
    // All are borrowed for the window's life.
    FrmVXTheaterPreview(const ProgramState& state, const MapView& view, Dialogs& dialogs,
                        WorkspaceCommands& commands);
    ~FrmVXTheaterPreview() override;

    // The window takes over ProgramState::Preview and fits itself round the picture.
    void PreviewChanged();
    // The boxes follow the view, and so do the heights in it.
    void MakeViewPort();

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void FitRoundPicture();
    // The picture in the room that the window has.
    void FitPicture();
    void ShowBoxes();
    void UpdatePart(PostPlace lowerLeft, int32_t across, int32_t down);
    void Command1_Click();
    void Picture1_MouseDown(QPoint pixel);
    void Picture1_MouseMove(QPoint pixel);
    void ScrollTo(PostPlace position);

    const ProgramState& state_;
    const MapView& view_;
    Dialogs& dialogs_;
    WorkspaceCommands& commands_;
    std::unique_ptr<Ui::FrmVXTheaterPreview> ui_;
    bool scrolling_ = false;          // ScrollTo is at work, and lets events through
    std::optional<PostPlace> wanted_; // where the pointer has been drawn meanwhile
    std::optional<PostPlace> last_;   // of this drag
    QBasicTimer sweep_;               // over all rows, when the map has come to rest
    int32_t sweptRows_ = 0;
};

} // namespace vardenix
