#pragma once

namespace vardenix {

// The flags of the windows, which rise and fall at moments that users know. What really
// differs from the disk is known by the log of changes.
struct DirtyFlags {
    bool BIN = false;
    bool L2 = false;
    bool L0ELV = false;
    bool MAP = false;
};

} // namespace vardenix
