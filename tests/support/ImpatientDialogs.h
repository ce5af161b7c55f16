#pragma once

#include "platform/SeveralNotices.h"
#include "support/ScriptedDialogs.h"

#include <string>

namespace vardenix::tests {

// Writes down the notices, and asks to be spared after `patience` of them.
class ImpatientDialogs : public ScriptedDialogs, public SeveralNotices {
public:
    explicit ImpatientDialogs(int patience) : patience_(patience) {}

    std::string Story;
    std::string Title; // of the last one
    BoxIcon Icon = BoxIcon::None;

    bool NoticeOfSeveral(const std::string& text, const std::string& title, BoxIcon icon,
                         const std::string& detail, size_t others) override {
        Title = title;
        Icon = icon;
        Story += text + " " + detail + " +" + std::to_string(others) + "\n";
        return --patience_ == 0;
    }

private:
    int patience_;
};

} // namespace vardenix::tests
