#pragma once

#include "platform/Dialogs.h"
#include "program/ProgramState.h"
#include "program/WorkspaceCommands.h"

#include <QWidget>

#include <memory>
#include <string>
#include <vector>

class QAbstractButton;

namespace Ui {
class FrmVXFeatures;
}

namespace vardenix {

// Which features the map shows, and how. What is chosen here is in the settings at once.
class FrmVXFeatures : public QWidget {
    Q_OBJECT

public:
    // All are borrowed for the window's life.
    FrmVXFeatures(ProgramState& state, Dialogs& dialogs, WorkspaceCommands& commands);
    ~FrmVXFeatures() override;

    // Every control from the settings, without any effect.
    void ShowSettings();
    // Adds the features of files, one after the other, and repaints the map. The first
    // that cannot be read ends it; those before it have been added.
    void LoadFiles(const std::vector<std::string>& paths);
    // The files that were loaded since all was cleared, if they are to be loaded again
    // when the theater opens; without that none.
    std::vector<std::string> Remembered() const;
    // They have been loaded again.
    void SetRemembered(const std::vector<std::string>& files);
    // A walk through the log of changes has led past a change of the features.
    void FeaturesWalked();

signals:
    // What is loaded or shown has changed, or whether it is remembered.
    void Changed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    struct KindControls;
    std::vector<KindControls> Kinds() const;
    void Connect(const KindControls& controls);
    void JoinFont(QAbstractButton* button, FontChoice Configuration::*font);
    void CmdLoadFeatures_Click();
    void CmdClearFeatures_Click();
    void ShowCounts();
    void KindTicked(FeatureKind kind, bool checked);
    // Unless the program is starting.
    void Repaint();

    ProgramState& state_;
    Dialogs& dialogs_;
    WorkspaceCommands& commands_;
    std::unique_ptr<Ui::FrmVXFeatures> ui_;
    std::vector<std::string> files_; // each once
};

} // namespace vardenix
