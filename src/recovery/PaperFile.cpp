#include "recovery/PaperFile.h"

#include "catalogue/TextureBinFile.h"
#include "levels/ElevationFiles.h"
#include "levels/PostDelta.h"
#include "levels/TerrainStore.h"
#include "recovery/ChangeBytes.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <span>
#include <utility>

namespace vardenix {

namespace {

const auto NobodyLooks = [](int32_t, int32_t) {};

std::span<const std::byte> MapBytes(const ProgramState& state) {
    return std::as_bytes(std::span(&state.MapFileRecord, 1));
}

// What a short file lacks is 0.
std::vector<std::byte> MapBytesOf(const ReadableFile& file) {
    std::vector<std::byte> bytes(sizeof(MapFileRecord));
    file.ReadAt(0, bytes);
    return bytes;
}

std::vector<std::byte> AllBytesOf(const ReadableFile& file) {
    RequireAtMost(file, MaxBinBytes);
    const FileBytes bytes = file.ReadAll();
    return {bytes.Span().begin(), bytes.Span().end()};
}

} // namespace

BasedOnFile FileOfPaper(const ProgramState& state, Paper paper) {
    return FileOf(FilesOf(state), paper);
}

PaperFile::PaperFile(const ProgramState& state, Paper paper) : paper_(paper) {
    const BasedOn files = FilesOf(state);
    const ElevationLayer& heights = state.Terrain.Elevations;
    if (paper == Paper::Level2)
        OpenPair({files.L2.Path, files.O2.Path}, state.Terrain.MapWidth);
    else if (paper == Paper::Heights && files.Heights.Kind == ElevationKind::L0)
        OpenPair({heights.Path, heights.OffsetPath}, heights.EMapWidth);
    else if (const std::string path = FileOfPaper(state, paper).Path; !path.empty())
        OpenAlone(path);
    else
        throw RuntimeError(ErrorNumber::InvalidCall, "a paper without a file");
}

void PaperFile::OpenPair(const LevelPair& pair, int32_t width) {
    pair_ = std::make_unique<LevelReader>(pair, width / SegmentSide);
    path_ = pair.L;
    identity_ = pair_->IdentityL();
}

void PaperFile::OpenAlone(const std::string& path) {
    file_ = std::make_unique<ReadableFile>(path);
    path_ = path;
    identity_ = file_->Identity();
}

PaperContent PaperFile::Content(const ProgramState& state) const {
    const int32_t width = state.Terrain.Elevations.EMapWidth;
    switch (paper_) {
    case Paper::Level2:
        return {.Posts = ReadPosts(*pair_, state.Terrain.MapWidth, NobodyLooks)};
    case Paper::Heights:
        return {.Heights =
                    pair_ ? ReadL0Heights(*pair_, width, NobodyLooks)
                          : ReadElvHeights(file_->ReadAll().Span(), width, NobodyLooks)};
    case Paper::MapFile:
        return {.Bytes = MapBytesOf(*file_)};
    default:
        return {.Bytes = AllBytesOf(*file_)};
    }
}

Change ChangeInto(const ProgramState& state, Paper paper, const PaperContent& content) {
    Change change;
    const auto requireSame = [](auto one, auto other) {
        if (one.size() != other.size())
            throw RuntimeError(ErrorNumber::SubscriptOutOfRange,
                               "a save of another size");
        return ChangedBetween(one, other);
    };
    if (paper == Paper::Level2)
        change.Posts.Values =
            requireSame(state.Terrain.LxArr.Values(), content.Posts.Values());
    else if (paper == Paper::Heights)
        change.Heights.Values = requireSame(state.Terrain.Elevations.L0ElvArr.Values(),
                                            content.Heights.Values());
    else if (paper == Paper::Catalogue)
        change.Catalogue = ChangedBetween(BytesOf(state.Catalogue.Bin), content.Bytes);
    else if (paper == Paper::MapFile)
        change.MapFile = ChangedBetween(MapBytes(state), content.Bytes);
    return change;
}

void CarryOut(PaperContent& content, const Change& change) {
    RequireFits(change, content.Posts.UpperBound(), content.Heights.UpperBound());
    WriteNew(content.Posts, change.Posts);
    WriteNew(content.Heights, change.Heights);
    for (const ByteDelta* delta : {&change.Catalogue, &change.MapFile})
        if (!delta->Empty())
            content.Bytes = WithNew(content.Bytes, *delta);
}

} // namespace vardenix
