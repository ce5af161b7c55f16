#pragma once

#include <string>

namespace vardenix::tests {

// While it lives, the process has no more rights than a plain user, so that read-only and
// unreadable files are so even when the tests run as the superuser. Files of a TestFolder
// must be opened to others first, see LetOthers.
class PlainUser {
public:
    PlainUser();
    PlainUser(const PlainUser&) = delete;
    PlainUser& operator=(const PlainUser&) = delete;
    ~PlainUser();

private:
    bool wasSuperuser_;
};

// Sets a file's or folder's rights for its owner and everybody else alike: 7, 6, 5, 4, 0.
void LetOthers(const std::string& path, unsigned rights);

} // namespace vardenix::tests
