#pragma once

#include "files/SystemFile.h"

#include <string>

namespace vardenix {

// A folder of this process alone in the system's temporary one, gone with its contents
// when the object goes. One whose process was killed goes when the next is made: it is
// locked for as long as somebody needs it. The editor's own Temp belongs to a run of the
// editor.
class ScratchFolder {
public:
    // The system's refusal when it cannot be made.
    ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder();

    // With a slash at its end.
    const std::string& Path() const { return path_; }

private:
    std::string path_;
    SystemFile lock_;
};

} // namespace vardenix
