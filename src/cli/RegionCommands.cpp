// region export and region import: the tile numbers of a rectangle of posts.
#include "cli/Arguments.h"
#include "cli/Commands.h"
#include "cli/Printing.h"
#include "workspace/PostFields.h"
#include "workspace/RegionExchange.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace vardenix {

namespace {

struct RegionOptions {
    explicit RegionOptions(Command& command) : Files(command) {}

    // Both corners on the terrain, whose width `widthOf` makes of the files' own.
    void RequireCornersInside() const {
        const auto whole = [](int32_t width) { return width; };
        RequireInside({"X1", Corners.X1, "Y1", Corners.Y1}, Files, whole, Files.L2File());
        RequireInside({"X2", Corners.X2, "Y2", Corners.Y2}, Files, whole, Files.L2File());
    }

    TheaterFiles Files;
    std::string File;
    PostBox Corners;
    bool Clip = false;
    bool Overwrite = false;
};

// Only posts that a save keeps are stamped on, so nothing is lost without a word.
void RequireFit(const RegionOptions& options, const TileRegion& region, int32_t width) {
    const auto [x, y] = std::pair(options.Corners.X1, options.Corners.Y1);
    RequireInside({"X", x, "Y", y}, width, options.Files.L2File());
    if (!options.Clip && !RegionFits(region, x, y, width))
        throw UsageError("the region of " + std::to_string(region.RegionWidth) + " by " +
                         std::to_string(region.RegionHeight) +
                         " posts reaches past the edge of the terrain; give --clip to "
                         "import only the part that fits");
}

// The posts of a clipped region that a save keeps.
int64_t KeptPosts(const RegionOptions& options, const TileRegion& region, int32_t width) {
    return int64_t{std::min(region.RegionWidth, width - options.Corners.X1)} *
           std::min(region.RegionHeight, width - options.Corners.Y1);
}

void AddRegionExport(Command& family) {
    Command command = family.AddCommand(
        "export",
        "Write the tile numbers of a rectangle of posts, both corners included");
    const auto options = std::make_shared<RegionOptions>(command);
    command.Output("OUT", options->File, "The .exp file to write").Required();
    AddPost(command, "X1", options->Corners.X1, "Y1", options->Corners.Y1);
    AddPost(command, "X2", options->Corners.X2, "Y2", options->Corners.Y2);
    command.Check([options] { options->RequireCornersInside(); });
    command.Run([options](CommandContext& context) {
        context.Open(options->Files);
        WriteRegion(context.State.Terrain, options->Corners, options->File,
                    context.Progress);
        Print(NameOnDisk(options->File));
        return ExitDone;
    });
}

void AddRegionImport(Command& family) {
    Command command = family.AddCommand(
        "import", "Stamp a region on the terrain, its lower left post at X, Y, and save");
    const auto options = std::make_shared<RegionOptions>(command);
    command.Text("FILE", options->File, "The .exp file").Required();
    AddPost(command, "X", options->Corners.X1, "Y", options->Corners.Y1);
    command.Flag("--clip", options->Clip,
                 "Import only the part that fits on the terrain");
    AddOverwrite(command, options->Overwrite);
    command.Run([options](CommandContext& context) {
        const TileRegion region = ReadRegion(options->File);
        if (const auto width = options->Files.WidthOnDisk())
            RequireFit(*options, region, SavedWidth(*width));
        context.OpenToWrite(options->Files);
        Terrain& terrain = context.State.Terrain;
        RequireFit(*options, region, SavedWidth(terrain.MapWidth));
        StampRegion(terrain, region, options->Corners.X1, options->Corners.Y1,
                    context.Progress);
        SaveLevel2(context, options->Overwrite);
        const int64_t count = KeptPosts(*options, region, SavedWidth(terrain.MapWidth));
        Print(std::to_string(count) + (count == 1 ? " post" : " posts") + " set in " +
              NameOnDisk(terrain.LFilename));
        return ExitDone;
    });
}

} // namespace

void AddRegion(Command& all) {
    Command family = all.AddCommand("region", "The tile numbers of a rectangle of posts");
    AddRegionExport(family);
    AddRegionImport(family);
}

} // namespace vardenix
