#pragma once

#include "files/Transaction.h"
#include "platform/DebugLog.h"
#include "platform/Progress.h"
#include "program/ProgramState.h"

#include <vector>

namespace vardenix {

// Writes papers over their own files, as one: after a kill at any moment all of them are
// old or, from the next opening on, all are new. `which` are any of level 2, catalogue
// and theater.map; heights, whose file may lie anywhere, are saved by themselves. What
// was read of the files follows; what the log and the flags say of them is the caller's.
//
// Error 5 for a gap in level 2 (TerrainStore.h), 53 when there is no Texture.bin to
// replace, ChangedFileError when one of the files is another than was read; the system's
// refusals. The old files then stand.
void SavePapers(ProgramState& state, const std::vector<Paper>& which, Progress& progress,
                DebugLog& log, IfChanged ifChanged = IfChanged::Refuse);

// The same in a transaction that holds other files too, which it commits.
void SavePapersWith(Transaction& files, ProgramState& state,
                    const std::vector<Paper>& which, Progress& progress, DebugLog& log,
                    IfChanged ifChanged = IfChanged::Refuse);

} // namespace vardenix
