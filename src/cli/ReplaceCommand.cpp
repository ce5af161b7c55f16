// replace: one tile gives way to another, or to several at random.
#include "cli/Arguments.h"
#include "cli/Commands.h"
#include "cli/Printing.h"
#include "search/Replacing.h"
#include "texts/Windows1252.h"
#include "workspace/PostFields.h"

#include <algorithm>
#include <memory>

namespace vardenix {

namespace {

struct ReplaceOptions {
    explicit ReplaceOptions(Command& command) : Files(command) {}

    void TakeCorners() {
        if (!Corners.empty())
            Box = {Corners[0], Corners[1], Corners[2], Corners[3]};
    }
    // `widthOf` gives the posts a side that a command may change.
    void RequireCornersInside(const std::function<int32_t(int32_t)>& widthOf) const {
        if (Corners.empty())
            return;
        RequireInside({"X1", Box.X1, "Y1", Box.Y1}, Files, widthOf, Files.L2File());
        RequireInside({"X2", Box.X2, "Y2", Box.Y2}, Files, widthOf, Files.L2File());
    }

    TheaterFiles Files;
    std::vector<int32_t> Old;
    std::string Named;
    std::vector<int32_t> New;
    std::vector<int32_t> Corners;
    PostBox Box{0, 0, MaxGridWidth, MaxGridWidth};
    uint32_t Seed = 0;
    bool CountOnly = false;
    bool Overwrite = false;
};

TileMarks OldTiles(const ReplaceOptions& options, const TileLookup& lookup) {
    TileMarks marks = MarksOf(options.Old);
    const TileMarks named = TilesMeant(lookup, BytesFromUtf8(options.Named));
    marks.resize(std::max(marks.size(), named.size()));
    for (size_t i = 0; i < named.size(); ++i)
        marks[i] |= named[i];
    return marks;
}

// Posts that a save keeps: the others would be changed for nothing.
std::vector<RowSpan> SpansIn(const PostBox& box, int32_t width) {
    const PostBox cut = CutToGrid(box, width);
    std::vector<RowSpan> spans;
    for (int32_t y = cut.Y1; y <= cut.Y2; ++y)
        spans.push_back({y, cut.X1, cut.X2});
    return spans;
}

int Replace(CommandContext& context, const ReplaceOptions& options) {
    Terrain& terrain = context.State.Terrain;
    const Replacement replacement{OldTiles(options, context.State.Catalogue.Lookup),
                                  options.New, options.Seed};
    const auto spans = SpansIn(options.Box, SavedWidth(terrain.MapWidth));
    const int64_t count = CountReplaced(terrain, replacement.Old, spans);
    const std::string posts = std::to_string(count) + (count == 1 ? " post" : " posts");
    if (options.CountOnly || count == 0) {
        Print(posts);
        return count == 0 ? ExitFound : ExitDone;
    }
    WriteNew(terrain.LxArr, ReplacedRuns(terrain, replacement, spans));
    SaveLevel2(context, options.Overwrite);
    Print(posts + " set in " + NameOnDisk(terrain.LFilename));
    return ExitDone;
}

} // namespace

void AddReplace(Command& all) {
    Command command =
        all.AddCommand("replace", "Give all posts of a tile another one, and save; exit "
                                  "1 if there are none");
    const auto options = std::make_shared<ReplaceOptions>(command);
    const NumberRange numbers{0, MostTileNumber};
    command.Numbers("--tile", options->Old, "Tile number that gives way", numbers);
    command.Text("--named", options->Named,
                 "Tiles that give way: part of their name, or their kind; several parted "
                 "by commas");
    command.Numbers("--by", options->New,
                    "Tile number in its place; of several one is drawn at each post",
                    numbers);
    command.NumberRow("--in", options->Corners, 4,
                      "Only the rectangle of posts X1 Y1 X2 Y2");
    command.Number("--seed", options->Seed, "Another draw of several tiles");
    command.Flag("--count", options->CountOnly, "Count the posts and change nothing");
    AddOverwrite(command, options->Overwrite);
    command.Check([options] {
        if (options->Old.empty() && options->Named.empty())
            throw UsageError("say with --tile or --named which tiles give way");
        if (options->New.empty() && !options->CountOnly)
            throw UsageError("say with --by which tile takes their place");
        options->TakeCorners();
        options->RequireCornersInside(SavedWidth);
    });
    command.Run([options](CommandContext& context) {
        options->CountOnly ? context.Open(options->Files)
                           : context.OpenToWrite(options->Files);
        return Replace(context, *options);
    });
}

} // namespace vardenix
