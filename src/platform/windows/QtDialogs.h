#pragma once

#include "platform/Dialogs.h"

namespace vardenix {

// The dialogs on the screen. Each stands in front of the window in use.
class QtDialogs : public Dialogs {
public:
    BoxAnswer MessageBox(const std::string& text, const std::string& title, BoxIcon icon,
                         BoxButtons buttons) override;
    FileAnswer OpenFile(const FileQuestion& question) override;
    std::vector<std::string> OpenFiles(const FileQuestion& question) override;
    FileAnswer SaveFile(const FileQuestion& question) override;
    std::optional<std::string> Folder(const std::string& prompt) override;
    uint32_t Color(uint32_t current) override;
    // The dialog has no colours: that of `current` stays.
    FontChoice Font(const FontChoice& current) override;
};

} // namespace vardenix
