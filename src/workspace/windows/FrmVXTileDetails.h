#pragma once

#include "catalogue/TextureBin.h"
#include "levels/Posts.h"
#include "platform/Dialogs.h"
#include "program/WorkspaceCommands.h"
#include "workspace/TileDetails.h"

#include <QDialog>
#include <QImage>
#include <QRect>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace Ui {
class FrmVXTileDetails;
}

namespace vardenix {

class NumberBox;

// The five fields of one post or, in L0/ELV mode, one elevation. The caller writes what
// was entered, and records it for undo.
class FrmVXTileDetails : public QDialog {
    Q_OBJECT

public:
    // Both for the window's life; the lookup names the tile that is entered.
    struct Helpers {
        Dialogs& Boxes;
        WorkspaceCommands& Workspace;
        const TileLookup& Lookup;
        PostPlace Place{}; // of the post, or of the height, from 0
        // A square picture of a tile; null where there is none.
        std::function<QImage(int32_t tile, int side)> Picture{};
        // Of the screen: what the window is not to cover.
        QRect Uncovered{};
    };

    // Over a post.
    FrmVXTileDetails(const TerrainPost& post, const Helpers& helpers,
                     QWidget* parent = nullptr);
    // Over an elevation of the L0/ELV mode.
    FrmVXTileDetails(int16_t elevation, const Helpers& helpers,
                     QWidget* parent = nullptr);
    ~FrmVXTileDetails() override;

    // What the user chose and entered, once the window has gone. In L0/ELV mode only the
    // elevation says something.
    const TileDetails& Details() const { return details_; }

    // Beside what it is not to cover.
    void PlaceItself();

    // Command1, Esc and the close box: nothing is changed.
    void reject() override;

private:
    FrmVXTileDetails(Layer layer, const DetailTexts& texts, const Helpers& helpers,
                     QWidget* parent);

    void Show(const DetailTexts& texts);
    DetailTexts Entered() const;
    NumberBox* BoxOf(DetailField field) const;
    void Join(DetailField field);
    void ShowTileName();
    void ShowPicture(int32_t tile);
    void Command2_Click();

    Helpers helpers_;
    Layer layer_;
    std::unique_ptr<Ui::FrmVXTileDetails> ui_;
    TileDetails details_;
};

// The dialog over the active window; it has ended when the call returns. Nothing unless
// the user chose to update.
std::optional<TerrainPost> AskForPost(const TerrainPost& post,
                                      const FrmVXTileDetails::Helpers& helpers);
std::optional<int16_t> AskForElevation(int16_t elevation,
                                       const FrmVXTileDetails::Helpers& helpers);

} // namespace vardenix
