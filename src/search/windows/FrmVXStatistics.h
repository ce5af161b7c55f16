#pragma once

#include "program/ProgramState.h"
#include "search/StatisticsRows.h"

#include <QWidget>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QTreeWidgetItem;

namespace Ui {
class FrmVXStatistics;
}

namespace vardenix {

// What the terrain is made of, as groups of rows with a bar for the share of each.
class FrmVXStatistics : public QWidget {
    Q_OBJECT

public:
    // None while nothing has been learned of the land.
    using SeamPosts = std::function<std::optional<int64_t>()>;

    // The state is borrowed for the window's life.
    FrmVXStatistics(const ProgramState& state, SeamPosts seams);
    ~FrmVXStatistics() override;

    void CountAnew();

signals:
    // The posts of a row are to be found.
    void RowWanted(const vardenix::StatisticsRow& row);

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Show(const std::vector<StatisticsGroup>& groups, int64_t all);
    void Want(const QTreeWidgetItem* item);

    const ProgramState& state_;
    SeamPosts seams_;
    std::unique_ptr<Ui::FrmVXStatistics> ui_;
    std::vector<StatisticsGroup> groups_;
};

} // namespace vardenix
