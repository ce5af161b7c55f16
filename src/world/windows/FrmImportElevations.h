#pragma once

#include "levels/Terrain.h"
#include "world/HeightsPlan.h"

#include <QDialog>

#include <memory>
#include <optional>

class QLineEdit;

namespace Ui {
class FrmImportElevations;
}

namespace vardenix {

// Which map of heights comes, where to and how. It stays open beside the map, over which
// whoever made it shows what would come.
class FrmImportElevations : public QDialog {
    Q_OBJECT

public:
    // Borrowed for the window's life.
    explicit FrmImportElevations(const Terrain& terrain);
    ~FrmImportElevations() override;

    // As the fields have it; what no field may have keeps the buttons disabled.
    HeightsWish Wish() const;
    void SetMap(const QString& path);
    // Where the theater lies, in words.
    void SetPlace(const QString& words);
    // The box of what is selected; nothing when nothing is.
    void SetSelection(const std::optional<PostBox>& box);
    // What a preview or an import has come to.
    void Tell(const QString& words);

    // Nothing but the way out can be used meanwhile.
    void SetWorking(bool working);
    // The user wants the work no more.
    bool IsStopped() const { return stopped_; }

signals:
    void BrowseWanted();
    void PreviewWanted();
    void ImportWanted();
    // The wish is another one, or the window goes: a preview is of no use any more.
    void WishChanged();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void reject() override;

private:
    void Connect();
    void FollowTerrain();
    void Follow();
    void SetBox(const PostBox& box);

    const Terrain& terrain_;
    std::unique_ptr<Ui::FrmImportElevations> ui_;
    std::optional<PostBox> selection_;
    int32_t posts_ = 0; // along a side, that the boxes are for
    bool working_ = false;
    bool stopped_ = false;
};

} // namespace vardenix
