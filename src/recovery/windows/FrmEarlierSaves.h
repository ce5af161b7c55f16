#pragma once

#include "program/ProgramState.h"

#include <QDialog>

#include <memory>

namespace Ui {
class FrmEarlierSaves;
}

namespace vardenix {

// The earlier saves of the theater that is open, each of which can be brought back.
class FrmEarlierSaves : public QDialog {
    Q_OBJECT

public:
    // Borrowed.
    explicit FrmEarlierSaves(ProgramState& state);
    ~FrmEarlierSaves() override;

    // Lists what there is by now, and comes up.
    void ShowSaves();

signals:
    // A paper has become what it was.
    void BroughtBack();

private:
    void List();
    void cmdBringBack_Click();

    ProgramState& state_;
    std::unique_ptr<Ui::FrmEarlierSaves> ui_;
};

} // namespace vardenix
