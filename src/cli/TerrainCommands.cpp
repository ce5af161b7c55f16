// terrain fill, mend and seams: the land painted by what fits with what.
#include "cli/Arguments.h"
#include "cli/Brushing.h"
#include "cli/Commands.h"
#include "cli/Printing.h"
#include "grounds/TerrainBrush.h"
#include "workspace/PostFields.h"

#include <memory>

namespace vardenix {

namespace {

struct BrushLine {
    explicit BrushLine(Command& command) : Files(command) {}

    void RequireCornersInside() const {
        RequireInside({"X1", Box.X1, "Y1", Box.Y1}, Files, SavedWidth, Files.L2File());
        RequireInside({"X2", Box.X2, "Y2", Box.Y2}, Files, SavedWidth, Files.L2File());
    }

    TheaterFiles Files;
    PostBox Box;
    std::vector<int32_t> Corners; // of a box that need not be given
    int32_t Like = 0;
    BrushOptions Brush;
    bool AsJson = false;
    bool DryRun = false;
    bool Overwrite = false;
};

std::vector<RowSpan> RowsOf(const PostBox& box) {
    const PostBox ordered = Ordered(box);
    std::vector<RowSpan> spans;
    for (int32_t y = ordered.Y1; y <= ordered.Y2; ++y)
        spans.push_back({y, ordered.X1, ordered.X2});
    return spans;
}

void Finish(CommandContext& context, const BrushLine& line, const BrushResult& result) {
    Terrain& terrain = context.State.Terrain;
    const std::vector<TileRun> runs = KeptRuns(result.Runs, terrain.MapWidth);
    if (!line.DryRun && !runs.empty()) {
        WriteNew(terrain.LxArr, runs);
        SaveLevel2(context, line.Overwrite);
    }
    PrintValues({{"posts changed", CountOf<int32_t>(runs)},
                 {"outside the rectangle", result.Outside},
                 {"seams left open", result.OpenSeams},
                 {"posts without a fitting tile", result.Unfilled}},
                line.AsJson);
}

void AddBrushOptions(Command& command, BrushLine& line) {
    command.Number("--seed", line.Brush.Seed,
                   "Another draw among tiles that are as good");
    command.Flag("--dry-run", line.DryRun, "Tell what would change, and save nothing");
    command.Flag("--json", line.AsJson, "Print JSON");
    AddOverwrite(command, line.Overwrite);
}

void AddRectangle(Command& command, const std::shared_ptr<BrushLine>& line) {
    AddPost(command, "X1", line->Box.X1, "Y1", line->Box.Y1);
    AddPost(command, "X2", line->Box.X2, "Y2", line->Box.Y2);
    command.Check([line] { line->RequireCornersInside(); });
}

void AddTerrainFill(Command& family) {
    Command command = family.AddCommand(
        "fill", "Paint a rectangle of posts with the ground of a tile, join it to the "
                "land round it by what fits, and save");
    const auto line = std::make_shared<BrushLine>(command);
    AddRectangle(command, line);
    command
        .Number("--like", line->Like, "Tile number of the ground",
                {0, FittingField<int32_t>.Max})
        .Required();
    command.Flag("--inside", line->Brush.Inside,
                 "The transition lies in the rectangle; nothing outside changes");
    command.Flag("--keep-ways", line->Brush.KeepWays,
                 "Leave posts with a river, road or railroad out");
    AddBrushOptions(command, *line);
    command.Run([line](CommandContext& context) {
        context.OpenToWrite(line->Files);
        const LearnedLand land = LearnLand(context.State);
        Finish(context, *line,
               PaintGround(land, context.State.Terrain, RowsOf(line->Box), line->Like,
                           line->Brush));
        return ExitDone;
    });
}

void AddTerrainMend(Command& family) {
    Command command = family.AddCommand(
        "mend", "Give the posts of a rectangle other tiles so that their seams fit, and "
                "save");
    const auto line = std::make_shared<BrushLine>(command);
    AddRectangle(command, line);
    AddBrushOptions(command, *line);
    command.Run([line](CommandContext& context) {
        context.OpenToWrite(line->Files);
        const LearnedLand land = LearnLand(context.State);
        Finish(context, *line,
               MendSeams(land, context.State.Terrain, RowsOf(line->Box), line->Brush));
        return ExitDone;
    });
}

void AddTerrainSeams(Command& family) {
    Command command = family.AddCommand(
        "seams", "List the seams between posts that do not fit; exit 1 if there are any");
    const auto line = std::make_shared<BrushLine>(command);
    command.NumberRow("--in", line->Corners, 4,
                      "Only those of the rectangle of posts X1 Y1 X2 Y2");
    command.Flag("--json", line->AsJson, "Print JSON");
    command.Check([line] {
        if (line->Corners.empty())
            return;
        line->Box = {line->Corners[0], line->Corners[1], line->Corners[2],
                     line->Corners[3]};
        line->RequireCornersInside();
    });
    command.Run([line](CommandContext& context) {
        context.Open(line->Files);
        const Terrain& terrain = context.State.Terrain;
        const PostBox all{0, 0, terrain.MapWidth - 1, terrain.MapWidth - 1};
        const std::vector<Seam> seams = BadSeams(LearnLand(context.State), terrain,
                                                 line->Corners.empty() ? all : line->Box);
        JsonArray list;
        for (const auto& [post, how] : seams) {
            const char* const side = how == Meeting::Eastward ? "east" : "north";
            if (line->AsJson)
                list.emplace_back(
                    JsonObject{{"x", post.X}, {"y", post.Y}, {"side", side}});
            else
                Print("X " + std::to_string(post.X) + ", Y " + std::to_string(post.Y) +
                      ": " + side);
        }
        if (line->AsJson)
            PrintJson(list);
        return seams.empty() ? ExitDone : ExitFound;
    });
}

} // namespace

void AddTerrain(Command& all) {
    Command family =
        all.AddCommand("terrain", "Grounds and their transitions, learned from the map "
                                  "and the tiles' pictures");
    AddTerrainFill(family);
    AddTerrainMend(family);
    AddTerrainSeams(family);
}

} // namespace vardenix
