#pragma once

#include "program/ProgramState.h"
#include "search/ReplaceWish.h"

#include <QDialog>

#include <cstdint>
#include <functional>
#include <memory>
#include <span>

namespace Ui {
class FrmVXReplace;
}

namespace vardenix {

// Which tiles give way to which, and where; how many posts that are, before it happens.
// It stays open beside map and palette.
class FrmVXReplace : public QDialog {
    Q_OBJECT

public:
    using SelectedPosts = std::function<std::span<const RowSpan>()>;

    // The state is borrowed for the window's life; `selected` gives the posts of level 2
    // that are selected on the map.
    explicit FrmVXReplace(const ProgramState& state, SelectedPosts selected);
    ~FrmVXReplace() override;

    ReplaceWish Wish() const;
    void SetOld(int32_t tile);
    // Of the palette; -1 for none. Another one takes the others' place.
    void TileChosen(int32_t tile);
    // Posts or hits have changed.
    void CountAnew();
    // What a replacement has come to.
    void Tell(const QString& words);

signals:
    void ReplaceWanted();

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    const ProgramState& state_;
    SelectedPosts selected_;
    std::unique_ptr<Ui::FrmVXReplace> ui_;
    int32_t chosen_ = -1; // in the palette
};

} // namespace vardenix
