#include "builder/ElevationRebuild.h"

#include "builder/LevelSaving.h"
#include "builder/LoadedHeights.h"
#include "builder/PostsUnder.h"
#include "levels/ElevationFiles.h"
#include "platform/Progress.h"

#include <algorithm>
#include <functional>
#include <string>

namespace vardenix {

namespace {

constexpr int Steps = 8;

constexpr const char* GoOnQuestion =
    "The elevation file could not be read to its end. Every height that was not read "
    "would become 0 in all Lx files. Do you want to go on all the same?";

// Bars of a level that is read back: LoadLFile sets its bar once at the start and once
// after each row.
class ReloadProgress : public Progress {
public:
    explicit ReloadProgress(RebuildView& view) : view_(view) {}

    void ShowBar() override {}
    void HideBar() override {}
    void SetBar(int) override {
        if (begun_)
            view_.Increase_PBs();
        begun_ = true;
    }
    void SetText(const std::string&) override {}
    void LetEventsThrough() override { view_.LetEventsThrough(); }

private:
    RebuildView& view_;
    bool begun_ = false;
};

// The heights of a row of sixteen posts of a block, all from 0.
std::span<const int16_t> HeightsOf(const ElevationGrids& grids, int32_t level, int32_t y,
                                   int32_t x, int32_t row) {
    const int64_t first = (int64_t{y} * SegmentSide + row) * grids.WidthOf(level) +
                          int64_t{x} * SegmentSide;
    return grids.Heights(level).subspan(static_cast<size_t>(first), SegmentSide);
}

void TakeHeights(const ElevationGrids& grids, int32_t level, int32_t y, int32_t x,
                 std::span<TerrainPost> block) {
    for (int32_t row = 0; row < SegmentSide; ++row) {
        const int32_t first = row * SegmentSide;
        TerrainPost* post = &block[static_cast<size_t>(first)];
        for (const int16_t height : HeightsOf(grids, level, y, x, row))
            (post++)->Elevation = height;
    }
}

// No level 2 post under the block has a tile or an elevation.
bool NothingUnder(PostsUnder& posts, int32_t y, int32_t x) {
    for (int32_t i = 0; i < PostsPerSegment; ++i) {
        posts.Look(x * SegmentSide + i % SegmentSide, y * SegmentSide + i / SegmentSide);
        if (!posts.Blank())
            return false;
    }
    return true;
}

class ElevationRebuild {
public:
    ElevationRebuild(const ElevationRebuildParts& parts, const ElevationMaster& master,
                     Downsampling method, const RebuildOptions& options)
        : parts_(parts), master_(master), method_(method), options_(options),
          grids_(parts.Terrain.MapWidth), levels_{parts.Terrain,
                                                  LxFolderOf(parts.Terrain), files_,
                                                  parts.View} {
        files_.How = options.OnlyChanged ? Rewriting::OnlyChanged : Rewriting::Always;
        files_.IfChanged = options.IfChanged;
    }

    RebuildReport Run() {
        const int64_t start = parts_.View.Seconds();
        RequireNoGap(parts_.Terrain);
        parts_.View.SetLabel2("");
        parts_.View.SetStatus("Starting...");
        parts_.View.SetPB2_Max(StepsOfElevationRebuild(
            parts_.Terrain.MapWidth, master_.ElevationFileType == ElevationKind::Elv));
        parts_.View.SetPB2_val(0);
        std::vector<std::string> all = FilesOfLevels(levels_.LxFolder);
        all.push_back(parts_.Terrain.LFilename);
        all.push_back(parts_.Terrain.OFilename);
        files_.Hold(all, parts_.Log);
        ReadMaster();
        RequireRoomForAll();
        for (int32_t level = 0; level <= 5; ++level)
            Save(level);
        parts_.View.BeginTakingPlaces();
        files_.Commit(parts_.Log);
        Begin("Reloading Map...");
        RebuildReport report{files_.Made, files_.Fartiles, 0};
        ReadBack("level 2",
                 [this] { ReloadLFile(parts_.Terrain, parts_.View, parts_.Log); });
        report.HeightsReadAnew = LoadedHeights(parts_.Terrain).RewrittenBy(report);
        if (report.HeightsReadAnew)
            ReadBack("the heights", [this] { ReloadHeights(); });
        parts_.View.SetStatus("All done...");
        report.Seconds = parts_.View.Seconds() - start;
        return report;
    }

private:
    void Begin(const std::string& status) {
        parts_.View.BeginStep(++step_, Steps);
        parts_.View.SetStatus(status);
    }

    void ReadMaster() {
        Begin("Reading Elevation data...");
        try {
            ReadElevationFile(master_, parts_.Terrain.MapWidth, grids_, parts_.View,
                              parts_.Log);
        } catch (const RuntimeError& error) {
            if (error.Number() == ErrorNumber::Cancelled)
                throw;
            parts_.Dialogs.Notice(TrapText(error), "Error...", BoxIcon::Critical);
            if (!options_.AcceptShort &&
                parts_.Dialogs.MessageBox(GoOnQuestion, "Error...", BoxIcon::Warning,
                                          BoxButtons::YesNo) != BoxAnswer::Yes)
                throw RebuildStopped();
        }
    }

    // What fails here comes too late to leave the old files.
    static void ReadBack(const std::string& what, const std::function<void()>& read) {
        try {
            read();
        } catch (const RuntimeError& error) {
            throw RuntimeError(error.Number(), error.Description(),
                               error.Detail() + "; all files were rebuilt, but " + what +
                                   " could not be read back. Open the theater again");
        }
    }

    void ReloadHeights() {
        const std::string path = parts_.Terrain.Elevations.Path;
        NoProgress quiet;
        LoadElevationData(parts_.Terrain, ElevationKind::L0, path, quiet, parts_.Dialogs,
                          parts_.Log);
    }

    void RequireRoomForAll() const {
        RoomNeeded need{levels_.LxFolder, 0};
        for (const int32_t level : {0, 1, 2})
            need.Bytes +=
                BytesOfElevations(parts_.Terrain, levels_.LxFolder, level, grids_);
        for (const int32_t level : {3, 4, 5})
            need.Bytes += BytesOfFarLevel(parts_.Terrain, levels_.LxFolder, level);
        RequireRoom({need}, options_.FreeRoom);
    }

    void Save(int32_t level) {
        Begin("Saving L" + std::to_string(level) + " File...");
        if (level > 0)
            grids_.DownsampleLevel(level, method_);
        // Level 2 is open, so it is there.
        const bool notExists = level != 2 && LevelNotExists(levels_.LxFolder, level);
        if (level <= 2)
            SaveLevelElevations(levels_, grids_, level, notExists);
        else
            SaveFarLevelElevations(levels_, grids_, level, notExists);
    }

    const ElevationRebuildParts& parts_;
    const ElevationMaster& master_;
    Downsampling method_;
    const RebuildOptions& options_;
    ElevationGrids grids_;
    RebuildFiles files_;
    LevelParts levels_;
    int step_ = 0;
};

} // namespace

RebuildReport RebuildElevations(const ElevationRebuildParts& parts,
                                const ElevationMaster& master, Downsampling method,
                                const RebuildOptions& options) {
    return ElevationRebuild(parts, master, method, options).Run();
}

void SaveLevelElevations(const LevelParts& parts, const ElevationGrids& grids,
                         int32_t level, bool notExists) {
    const LevelGeometry geometry = GeometryOf(level, parts.Terrain.MapWidth);
    const LevelPair pair =
        level == 2 ? LevelPair{parts.Terrain.LFilename, parts.Terrain.OFilename}
                   : PairOfLevel(parts.LxFolder, level);
    RewriteLevel(
        parts, pair, geometry, notExists,
        [&](int32_t y, int32_t x, std::span<TerrainPost> block) {
            if (notExists)
                MakeFineBlock(parts.Terrain, geometry, y, x, true, block);
            TakeHeights(grids, level, y, x, block);
            return level != 2 &&
                   std::all_of(block.begin(), block.end(), [&](const TerrainPost& post) {
                       return post.TileOffset == geometry.Base && post.Elevation == 0;
                   });
        });
}

void SaveFarLevelElevations(const LevelParts& parts, const ElevationGrids& grids,
                            int32_t level, bool notExists) {
    const LevelGeometry geometry = GeometryOf(level, parts.Terrain.MapWidth);
    PostsUnder posts(parts.Terrain, geometry);
    RewriteLevel(parts, PairOfLevel(parts.LxFolder, level), geometry, notExists,
                 [&](int32_t y, int32_t x, std::span<TerrainPost> block) {
                     if (notExists)
                         throw MissingFarLevel(parts.LxFolder, level);
                     TakeHeights(grids, level, y, x, block);
                     return NothingUnder(posts, y, x);
                 });
}

void ReloadLFile(Terrain& terrain, RebuildView& view, DebugLog& log) {
    view.SetPB1_Max(RowsOfLevel(2, terrain.MapWidth));
    view.SetPB1_val(0);
    ReloadProgress progress(view);
    LoadLFile(terrain, progress, log);
}

} // namespace vardenix
