#pragma once

#include "texts/RuntimeError.h"

namespace vardenix::tests {

// The error that `action` ends in: its number, or 0 for none.
template <typename Action>
RuntimeError ErrorOf(Action action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error;
    }
    return RuntimeError(static_cast<ErrorNumber>(0));
}

} // namespace vardenix::tests
