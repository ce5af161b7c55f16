#pragma once

#include "platform/Dialogs.h"

#include <cstddef>
#include <string>

namespace vardenix {

// What dialogs on a screen can do besides: notices of a kind that may come by the
// hundred.
class SeveralNotices {
public:
    SeveralNotices() = default;
    SeveralNotices(const SeveralNotices&) = delete;
    SeveralNotices& operator=(const SeveralNotices&) = delete;
    virtual ~SeveralNotices() = default;

    // One of several notices, of which `others` are still to come; `detail` says more
    // than the text. True when the user has asked to be spared the others.
    virtual bool NoticeOfSeveral(const std::string& text, const std::string& title,
                                 BoxIcon icon, const std::string& detail,
                                 size_t others) = 0;
};

} // namespace vardenix
