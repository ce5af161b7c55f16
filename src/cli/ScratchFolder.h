#pragma once

#include <string>

namespace vardenix {

// A folder of this process alone in the system's temporary one, gone with its contents
// when the object goes. The editor's own Temp belongs to a run of the editor.
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
};

} // namespace vardenix
