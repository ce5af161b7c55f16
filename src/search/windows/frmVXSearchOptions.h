#pragma once

#include "catalogue/TextureBin.h"
#include "program/SearchResults.h"

#include <QDialog>

#include <array>
#include <memory>

class QLineEdit;

namespace Ui {
class frmVXSearchOptions;
}

namespace vardenix {

// The pattern of the next search. It stays open beside the map until it is closed or a
// search begins.
class frmVXSearchOptions : public QDialog {
    Q_OBJECT

public:
    // Borrowed for the window's life.
    frmVXSearchOptions(SearchState& search, const TileLookup& lookup);
    ~frmVXSearchOptions() override;

signals:
    // The SearchQuery of the state is what is searched for; the window has gone.
    void SearchWanted();

protected:
    void showEvent(QShowEvent* event) override;

private:
    std::array<QLineEdit*, 5> Boxes() const;
    void ShowSelectedCell();
    void Text_Change();
    void TellNamed();
    void MarkWhatIsNoNumber();
    void cmdClearAll_Click();
    void cmdSearch_Click();
    void comLast_Click(int index);
    void FillLast();

    SearchState& search_;
    const TileLookup& lookup_;
    std::unique_ptr<Ui::frmVXSearchOptions> ui_;
};

} // namespace vardenix
