#pragma once

namespace vardenix {

// Bounds what this process may take of memory and processor time: the system ends it
// beyond that. Reads no names but plain files, asks no network, loads no plug-ins.
void LimitThisProcess();

} // namespace vardenix
