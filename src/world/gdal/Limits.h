#pragma once

namespace vardenix {

// Bounds what this process may take of memory and processor time: the system ends it
// beyond that. Opens no socket, begins no program, loads no plug-ins. MapRefused where
// the system cannot see to it.
void LimitThisProcess();

} // namespace vardenix
