#pragma once

#include "catalogue/TextureBin.h"
#include "files/Transaction.h"
#include "platform/DebugLog.h"
#include "platform/Dialogs.h"
#include "platform/Progress.h"

#include <cstddef>
#include <functional>
#include <span>
#include <string>

namespace vardenix {

// The catalogue that the bytes of a Texture.bin spell; `path` is for messages. Error 62
// for counts that the bytes cannot hold, before anything is allocated for them; error 7
// beyond MaxSets.
TextureBin ParseBinFile(std::span<const std::byte> bytes, const std::string& path);

// No theater comes near them; they bound the memory that a garbage file can take.
constexpr int32_t MaxSets = 32768;
constexpr uint64_t MaxBinBytes = uint64_t{64} << 20;

// Reads BinPath into the model and makes TileLookup anew. A tile whose day picture is not
// in DDSFolder is told of in a box, one for each until the user takes the others as told,
// with the path that was looked for, and keeps HasImage 0. The bar moves and
// events pass once per set. On any error the catalogue is what it was. `afterReading` is
// called once the file's bytes are there, before anybody is told anything: whoever holds
// a lock over the reading lets go of it.
void OpenBinFile(Catalogue& catalogue, Progress& progress, Dialogs& dialogs,
                 DebugLog& log, const std::function<void()>& afterReading = {});

// Reads BinPath for whoever wants no pictures: none is looked for and none is missed, so
// that HasImage is 0 throughout.
void OpenBinFileAlone(Catalogue& catalogue);

// Writes the model over BinPath; NumTiles as it stands in the model. Error 53 when there
// is no such file to replace, with nothing changed; ChangedFileError when another file is
// there than was read; the system's refusals while writing.
void SaveBinFile(Catalogue& catalogue, DebugLog& log,
                 IfChanged ifChanged = IfChanged::Refuse);

// The bytes of a Texture.bin, for whoever changes other files along with it.
void WriteBinFile(const TextureBin& bin, StagedFile& file);

} // namespace vardenix
