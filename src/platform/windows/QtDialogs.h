#pragma once

#include "platform/Dialogs.h"
#include "platform/SeveralNotices.h"

#include <QString>

#include <functional>

class QFileDialog;
class QMessageBox;

namespace vardenix {

// The dialogs on the screen. Each stands in front of the window in use. A file or folder
// dialog that is not told where to begin does so where the last one ended.
class QtDialogs : public Dialogs, public SeveralNotices {
public:
    // What "Copy details" of an error's box puts into the clipboard behind the box's own
    // texts: version, system, what was done last. Without it there are those alone.
    std::function<std::string()> Details;

    BoxAnswer MessageBox(const std::string& text, const std::string& title, BoxIcon icon,
                         BoxButtons buttons) override;
    // With a box to tick while others are to come: "The other 347 too".
    bool NoticeOfSeveral(const std::string& text, const std::string& title, BoxIcon icon,
                         const std::string& detail, size_t others) override;
    FileAnswer OpenFile(const FileQuestion& question) override;
    std::vector<std::string> OpenFiles(const FileQuestion& question) override;
    FileAnswer SaveFile(const FileQuestion& question) override;
    std::optional<std::string> Folder(const std::string& prompt,
                                      const std::string& initial = {}) override;
    uint32_t Color(uint32_t current) override;
    // The dialog has no colours: that of `current` stays.
    FontChoice Font(const FontChoice& current) override;
    FontChoice FontAndColor(const FontChoice& current) override;

private:
    void OfferDetails(QMessageBox& box, const std::string& text) const;
    // Runs the dialog and remembers its folder; false when it was cancelled.
    bool Accepted(QFileDialog& dialog);

    QString lastFolder_;
};

} // namespace vardenix
