#pragma once

#include "mapview/MapLayout.h"
#include "mapview/MapRenderer.h"
#include "mapview/windows/QtDrawingSurface.h"
#include "platform/windows/EscWatch.h"
#include "platform/windows/clsToolTip.h"
#include "program/ProgramState.h"
#include "program/WorkspaceCommands.h"
#include "workspace/MapInteraction.h"
#include "workspace/MapMouse.h"
#include "workspace/MapSizing.h"
#include "workspace/ZoomAndDrag.h"
#include "workspace/windows/HandOverlay.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <string>

class QMenu;

namespace Ui {
class FrmVXMap;
}

namespace vardenix {

class MapToolStrip;

// The map: a picture of a part of the terrain, the scroll bars that move over it, and
// what the mouse does on it.
class FrmVXMap : public QWidget, private MapScreen {
    Q_OBJECT

public:
    // All are borrowed for the window's life.
    struct Parts {
        ProgramState& State;
        MapView& View;
        MapInteraction& Interaction;
        MapRenderer& Renderer;
        UndoPoints& Undo;
        WorkspaceCommands& Workspace;
        MapWishes& Wishes;
        MapLayers Layers{}; // drawn on top
    };
    explicit FrmVXMap(const Parts& parts);
    ~FrmVXMap() override;

    // The layout of the settings, and the saved position clamped to the theater. Paints
    // nothing.
    void InitForm();
    // The scroll ranges, and the window fitted round a picture of a new size; of a
    // picture larger than the screen the window shows the lower left part, and what is
    // beyond is reached by moving over the terrain. Nothing while there is no theater.
    void LoadImageControls();
    // The window as large as its picture, where the screen has room for it; a part of
    // another window, or one that fills the screen, keeps its size.
    void FitRoundPicture();
    // The picture fills the screen with the window, or its part of another window;
    // afterwards it is the square of GridCells again.
    void FollowRoom();
    // Paints the view from nothing, and shows it. Of a picture that is much larger than
    // the window only what is seen is painted at once, the rest when the map is at rest.
    void RefreshPicArray();
    // Sets both scroll bars without a repaint; values outside the theater are clamped.
    void SetPosition(PostPlace position);

    // Of the screen: the part of the picture that a post, or a height, has.
    QRect OnScreen(PostPlace place, bool height) const;
    // A word on what was done, in the line under the map.
    void ShowWord(const QString& word);
    // Names places of posts, or of heights, on the earth, behind their values; an empty
    // text is left out.
    using PlaceNames = std::function<std::string(PostPlace place, bool height)>;
    void TellPlaces(PlaceNames names) { placeNames_ = std::move(names); }
    // The values of the post that was pointed at last, which may have changed.
    void ShowPost();
    // What the tools do, and the tile that is chosen, have changed elsewhere.
    void ShowTools();
    // No corner is waited for any more, and the keyboard comes to the map.
    void ChooseTool(MapTool tool);
    // What the left button does, or a tool waits for, ends there.
    void StopGesture();
    // The same where it has changed posts that the log does not know of yet.
    void StopPending();
    // The clip in hand as the map would show it, beginning with its lower left post.
    void ShowGhost(QImage picture);
    // From whatever window has it; a part of the map that has it keeps it.
    void TakeKeyboard();
    // A key of a tool, of the brush or of the zoom, pressed in whatever window. False for
    // any other.
    bool TakeToolKey(const QKeyEvent& event);
    // What the mouse has begun ends, and no corner is waited for any more. False when
    // there was nothing of both.
    bool StopWaiting();
    // The same; where there was nothing, nothing is selected any more. False when nothing
    // was.
    bool Escape();
    // Nearer for positive steps, round the pointer or the middle; farther than the
    // panel's slider goes, until the whole theater is seen.
    void ZoomBy(int steps);
    void ShowWhole();
    // The row of tools on the upper edge, and the menu over a post, which app/ fills.
    MapToolStrip& Strip();
    QMenu& Popup() { return *mnupup1_; }
    // The details of the post that the menu is over.
    void mnuTileProperties() { mouse_.mnuTileProperties(); }

    // The back buffer: what the last repaint has left, its rest painted.
    QtDrawingSurface& Picture2();

signals:
    // The view has been painted anew: the preview's box follows.
    void ViewPainted();
    // The tool in hand may be another one.
    void ToolsShown();
    // The window was made an icon, or came back from one.
    void MinimiseStateChanged();
    // The user has drawn the window to other GridCells, which stand in the view now.
    void GridChosen();
    // The picture has the size of another room, or of none any more, as the view says.
    void RoomFilled();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    Q_INVOKABLE void LoadDropped();
    void wheelEvent(QWheelEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void HoldLowerLeft();
    void EdgesDrawn();
    void Fill(QSize window);
    void BeAsBefore();
    void PlacePicture();
    // What a window has beside its picture; and the picture's part of a window's size.
    QSize RoundPicture() const;
    QMargins Margins() const;
    WindowSize PictureRoom(QSize window) const;
    // The largest window that the screen has room for.
    QSize MostOfScreen() const;
    void Scroll_Change();
    void ShowPositionOfView();
    void MakeToolTip();
    void MakeStrip();
    bool ScrollKey(int key);
    void PicShow_MouseDown(QMouseEvent& event);
    void PicShow_MouseMove(const QMouseEvent& event);
    // Pointer, read-out and frame for a place on the picture.
    void PointAt(QPointF position);
    void ShowPopup(QPoint globalPosition);
    void ShowPointer();
    // The map goes along with the mouse while a button is held. False when it does not.
    bool Pan(const QMouseEvent& event);
    // A stroke has all corners of the pointer's way, also those that it takes while the
    // program is busy. Whatever else is dragged follows the latest place only.
    void HearEveryMove();
    void ShowHand(bool open);
    // The pointer's place on the picture, or its middle.
    QPointF PlaceOfPointer() const;
    // Another ZoomPosts, with the post under a place of the picture kept there.
    void ZoomAt(QPointF place, int16_t zoomPosts);
    void ShowStatus(QPointF position);
    // Where on the earth that is; empty beyond the terrain, and where nobody knows.
    std::string NameOfPlace(QPointF position) const;
    void ShowLeftOut();
    // What the next click would export or stamp over is framed while the mouse moves.
    void ShowBand(QPointF position);
    void PicShow_MouseUp(QMouseEvent& event);
    // Of the picture; nothing of a window that is not shown.
    QRect Seen() const;
    void PaintSeen();
    // False when Esc ended it.
    bool PaintWhole();
    void PaintRest();
    // Paints a part of the picture anew and shows it. Relies on a part that is painted by
    // itself being that part of the whole, pixel for pixel.
    void Repaint(const MapPatch& patch);
    // Posts of level 2, from 0, as they are now.
    void RepaintPosts(const PostBox& posts);

    void ClearPicShow() override {}
    void CopyToPicShow() override;
    void LookForEsc() override;
    void MakeViewPort(const MapView& view) override;

    ProgramState& state_;
    MapView& view_;
    MapInteraction& interaction_;
    MapRenderer& renderer_;
    WorkspaceCommands& workspace_;
    MapWishes& wishes_;
    MapLayers layers_;
    MapMouse mouse_;
    std::unique_ptr<Ui::FrmVXMap> ui_;
    HandOverlay overlay_;
    QMenu* mnupup1_ = nullptr;
    clsToolTip toolTip_;
    QtDrawingSurface picture2_;
    QtDrawingSurface patch_; // parts of the picture that are painted anew
    EscWatch escWatch_;
    QTimer rest_; // of the picture is still to be painted while it runs
    std::optional<MapPanning> panning_; // in pixels of the screen
    Qt::MouseButton panningBy_ = Qt::NoButton;
    bool pointerOver_ = false; // the picture
    bool spaceHeld_ = false;
    bool placing_ = false;  // the program itself moves the bars
    QMargins margins_;      // of a window that fits its picture
    bool keepSize_ = false; // the window is fitted round no picture
    RoomFilling filling_{view_};
    bool filledScreen_ = false; // as a window of its own
    QElapsedTimer
        sinceSized_;      // by the program, or by the desktop as it placed the window
    QBasicTimer drawing_; // until the user's hand has come to rest
    QSize beforeDrawn_;
    WheelSum zoomTurned_; // with Ctrl
    WheelSum turnedAcross_;
    WheelSum turnedDown_;
    PlaceNames placeNames_;
    std::optional<QPointF> pointedAt_;      // on the picture
    std::vector<std::string> droppedPaths_; // to be loaded when events come next
};

} // namespace vardenix
