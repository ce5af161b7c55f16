#pragma once

#include "program/ChangeLog.h"

#include <QWidget>

#include <cstddef>
#include <memory>

class QModelIndex;

namespace Ui {
class FrmVXHistory;
}

namespace vardenix {

class HistoryModel;

// The changes of the log, oldest first; the one that the papers stand at is marked, and
// what was taken back is grey.
class FrmVXHistory : public QWidget {
    Q_OBJECT

public:
    // Borrowed for the window's life.
    explicit FrmVXHistory(const ChangeLog& changes);
    ~FrmVXHistory() override;

    // A change has come, gone on, been walked over or been saved.
    void ChangesChanged();

signals:
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

    const ChangeLog& changes_;
    std::unique_ptr<Ui::FrmVXHistory> ui_;
    std::unique_ptr<HistoryModel> model_;
};

} // namespace vardenix
