#pragma once

namespace vardenix {

// A way to get to know that Esc was pressed.
class EscEye {
public:
    EscEye() = default;
    EscEye(const EscEye&) = delete;
    EscEye& operator=(const EscEye&) = delete;
    virtual ~EscEye() = default;

    // What was pressed so far does not count.
    virtual void Begin() = 0;
    // Whether Esc was pressed since it was asked last, or since Begin.
    virtual bool Look() = 0;
};

} // namespace vardenix
