#pragma once

#include "app/WorkspacePart.h"
#include "recovery/EarlierSaves.h"
#include "recovery/LogKeeper.h"
#include "recovery/Restoring.h"

#include <QTimer>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace vardenix {

class FrmEarlierSaves;
class Workspace;

// Keeps the log of changes for the case that the program ends unexpectedly, and offers
// what an earlier run has left; and keeps what saves have replaced.
class Recovery : public WorkspacePart, private RestoringWindows {
public:
    // Borrowed.
    explicit Recovery(Workspace& workspace);
    ~Recovery() override;

    // A theater has been opened: once its windows are there the user is asked about what
    // an ended run has left of it.
    void OfferSoon();
    // From here on changes are kept; what was left before is asked about.
    void Offer();
    // The window of earlier saves; and one of them becomes what the paper is.
    void ShowEarlierSaves();
    void BringBack(Paper paper, size_t number);

private:
    void Leaving() override;
    bool LoadHeights(ElevationKind kind, const std::string& path) override;
    void ShowOnce(const std::function<void()>& work) override;
    void KeepRestored() override;
    void TellComplaint();
    void ShowUnsaved(const std::string& words);

    Workspace& workspace_;
    std::optional<LogKeeper> keeper_; // while a theater is open
    std::optional<SaveKeeper> saves_;
    std::unique_ptr<FrmEarlierSaves> window_; // once it was wanted
    QTimer soon_;
    QTimer looks_; // whether the log can still be written
};

} // namespace vardenix
