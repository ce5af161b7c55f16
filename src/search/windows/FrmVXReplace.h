#pragma once

#include "program/ProgramState.h"
#include "search/ReplaceWish.h"

#include <QDialog>

#include <cstdint>
#include <memory>

namespace Ui {
class FrmVXReplace;
}

namespace vardenix {

// Which tiles give way to which, and where; how many posts that are, before it happens.
// It stays open beside map and palette.
class FrmVXReplace : public QDialog {
    Q_OBJECT

public:
    // Borrowed for the window's life.
    explicit FrmVXReplace(const ProgramState& state);
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
    std::unique_ptr<Ui::FrmVXReplace> ui_;
    int32_t chosen_ = -1; // in the palette
};

} // namespace vardenix
