#pragma once

#include "platform/Dialogs.h"
#include "platform/Progress.h"
#include "platform/StagedFile.h"
#include "theater/DebugLog.h"
#include "theater/TextureBin.h"

#include <cstddef>
#include <span>
#include <string>

namespace vardenix {

// The picture file of a tile: its name less the last four characters, whatever they are,
// plus
// ".dds", or "N.dds" for the night. A shorter name leaves just the suffix.
std::string TileFileName(const std::string& tileName, bool night);

// The path of a picture in the folder of tile pictures; `file` is bytes as the catalogue
// has them.
std::string TilePicturePath(const std::string& ddsFolder, const std::string& file);

// The catalogue that the bytes of a Texture.bin spell; `path` is for messages. Error 62
// for counts that the bytes cannot hold, before anything is allocated for them; error 7
// beyond MaxSets.
TextureBin ParseBinFile(std::span<const std::byte> bytes, const std::string& path);

// No theater comes near it; it bounds the memory that a garbage file of empty sets can
// take.
constexpr int32_t MaxSets = 32768;

// Reads BinPath into the model and makes TileLookup anew. A tile whose day picture is not
// in DDSFolder is told of in a box, one for each, and keeps HasImage 0. The bar moves and
// events pass once per set. On any error the catalogue is what it was.
void OpenBinFile(Catalogue& catalogue, Progress& progress, Dialogs& dialogs,
                 DebugLog& log);

// Writes the model over BinPath; NumTiles as it stands in the model. Error 53 when there
// is no such file to replace, with nothing changed; the system's refusals while writing.
void SaveBinFile(const Catalogue& catalogue, DebugLog& log);

// For whoever saves other files with it: error 53 when there is no file to replace, and
// the model's bytes into a staged file.
void RequireBinFile(const Catalogue& catalogue);
void WriteBinFile(const TextureBin& bin, StagedFile& file);

} // namespace vardenix
