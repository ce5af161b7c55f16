#pragma once

#include "program/ChangeLog.h"
#include "workspace/HistoryRows.h"

#include <QWidget>

#include <cstddef>
#include <memory>
#include <vector>

class QModelIndex;

namespace Ui {
class FrmVXHistory;
}

namespace vardenix {

class HistoryModel;

// Earlier saves, and below them the changes of the log, oldest first; the one that the
// papers stand at is marked, and what was taken back is grey.
class FrmVXHistory : public QWidget {
    Q_OBJECT

public:
    // Borrowed for the window's life.
    explicit FrmVXHistory(const ChangeLog& changes);
    ~FrmVXHistory() override;

    // A change has come, gone on, been walked over or been saved.
    void ChangesChanged();
    void ShowEarlier(std::vector<HistoryRow> saves);

signals:
    // The window comes up, and shows whatever it is given.
    void Shown();
    // The earlier save in that row is to be brought back.
    void EarlierWanted(size_t row);
    // The state after so many changes is wanted; and the place of that change, from 1.
    void StateWanted(size_t position);
    void PlaceWanted(size_t position);
    void Closed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void FollowPosition();
    // Of the state or the place after so many changes, or of an earlier save.
    void GoToRow(int row);
    void ShowRow(int row);

    const ChangeLog& changes_;
    std::unique_ptr<Ui::FrmVXHistory> ui_;
    std::unique_ptr<HistoryModel> model_;
};

} // namespace vardenix
