#pragma once

#include "files/ReadableFile.h"
#include "levels/LevelReader.h"
#include "levels/Terrain.h"
#include "program/Change.h"
#include "program/ProgramState.h"
#include "recovery/LogRecords.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace vardenix {

// What a paper is, whole: one of them, as the paper is.
struct PaperContent {
    PostArray Posts{};
    HeightArray Heights{};
    std::vector<std::byte> Bytes{}; // of Texture.bin, or of theater.map
};

// The files of a paper as they stand, held open: what was in them can be read after a
// save has put others in their place.
class PaperFile {
public:
    // Level 2, catalogue, theater.map, or the heights that are loaded. Errors of reading;
    // 5 for features and for heights while none are loaded.
    PaperFile(const ProgramState& state, Paper paper);

    const std::string& Path() const { return path_; } // of the L file of a pair
    const FileIdentity& Identity() const { return identity_; }
    // Of the size that the paper has in memory.
    PaperContent Content(const ProgramState& state) const;

private:
    void OpenPair(const LevelPair& pair, int32_t width);
    void OpenAlone(const std::string& path);

    Paper paper_;
    std::string path_;
    FileIdentity identity_;
    std::unique_ptr<LevelReader> pair_; // of a pair
    std::unique_ptr<ReadableFile> file_;
};

// Where a paper is read from and saved to; and which file that was.
BasedOnFile FileOfPaper(const ProgramState& state, Paper paper);

// The change that makes of the paper in memory what `content` is.
Change ChangeInto(const ProgramState& state, Paper paper, const PaperContent& content);
// Carries a change of that paper out upon a content. Error 9 where it does not fit.
void CarryOut(PaperContent& content, const Change& change);

} // namespace vardenix
