// info, check and get: what can be told of a theater without a picture.
#include "catalogue/TileCheck.h"
#include "catalogue/TypeNames.h"
#include "cli/Arguments.h"
#include "cli/Commands.h"
#include "cli/Outputs.h"
#include "cli/Printing.h"
#include "files/FileNames.h"
#include "levels/TerrainStore.h"
#include "texts/Cutting.h"
#include "texts/Windows1252.h"
#include "workspace/MapInteraction.h"

#include <algorithm>
#include <memory>

namespace vardenix {

namespace {

JsonObject InfoOf(const ProgramState& state) {
    const auto posts = state.Terrain.LxArr.Values();
    const auto lower = [](const TerrainPost& a, const TerrainPost& b) {
        return a.Elevation < b.Elevation;
    };
    const auto [lowest, highest] = std::minmax_element(posts.begin(), posts.end(), lower);
    const auto land =
        std::count_if(posts.begin(), posts.end(), [](const TerrainPost& post) {
            return post.TileOffset != 0 || post.Elevation != 0;
        });
    const TileLookup& lookup = state.Catalogue.Lookup;
    const auto missing =
        std::count_if(lookup.begin(), lookup.end(), [](const TileInfo& tile) {
            return tile.Terrain != -1 && tile.HasImage != 1;
        });
    return {{"L2 file", state.Terrain.LFilename},
            {"Texture.bin", state.Catalogue.BinPath},
            {"theater.map", state.MAPFile},
            {"DDS folder", state.Catalogue.DDSFolder},
            {"posts a side", state.Terrain.MapWidth},
            {"segments a side", state.Terrain.MapWidth / SegmentSide},
            {"posts that are not sea", land},
            {"lowest post, feet", posts.empty() ? 0 : int32_t{lowest->Elevation}},
            {"highest post, feet", posts.empty() ? 0 : int32_t{highest->Elevation}},
            {"sets", state.Catalogue.Bin.NumSets},
            {"tiles", state.Catalogue.Bin.NumTiles},
            {"tiles without a picture", missing}};
}

JsonObject PlaceOf(const Terrain& terrain, int32_t serial) {
    const PostXY post = SerialToXY(serial, terrain.MapWidth);
    return {{"x", static_cast<int>(post.X) - 1},
            {"y", static_cast<int>(post.Y) - 1},
            {"tile", int32_t{terrain.LxArr(serial).TileOffset}}};
}

JsonObject PostOf(const TerrainPost& post, const TileLookup& lookup, int32_t x,
                  int32_t y) {
    const auto number = static_cast<size_t>(post.TileOffset);
    const bool known =
        post.TileOffset >= 0 && number < lookup.size() && lookup[number].Terrain != -1;
    return {{"x", x},
            {"y", y},
            {"tile", int32_t{post.TileOffset}},
            {"name", Utf8FromBytes(TileNameOf(post.TileOffset, lookup))},
            {"terrain",
             known ? TerrainName(static_cast<uint8_t>(lookup[number].Terrain)) : ""},
            {"elevation", int32_t{post.Elevation}},
            {"palette", post.Palette},
            {"x1", post.X1},
            {"x2", post.X2}};
}

struct TheaterOptions {
    explicit TheaterOptions(Command& command) : Files(command) {}
    TheaterFiles Files;
    bool AsJson = false;
    std::string Report;
    int32_t X = 0;
    int32_t Y = 0;
};

std::shared_ptr<TheaterOptions> AddTo(Command& command) {
    auto options = std::make_shared<TheaterOptions>(command);
    command.Flag("--json", options->AsJson, "Print JSON");
    return options;
}

// A post that `check` found.
void PrintPlace(const Terrain& terrain, int32_t serial) {
    const PostXY post = SerialToXY(serial, terrain.MapWidth);
    Print("X " + std::to_string(static_cast<int>(post.X) - 1) + ", Y " +
          std::to_string(static_cast<int>(post.Y) - 1) + ": tile " +
          std::to_string(int32_t{terrain.LxArr(serial).TileOffset}));
}

void PrintPlaces(const Terrain& terrain, const std::vector<int32_t>& serials,
                 bool asJson) {
    JsonArray list;
    for (const int32_t serial : serials)
        if (asJson)
            list.emplace_back(PlaceOf(terrain, serial));
        else
            PrintPlace(terrain, serial);
    if (asJson)
        PrintJson(list);
}

} // namespace

void AddInfo(Command& all) {
    Command command = all.AddCommand("info", "Tell the sizes of a theater");
    const auto options = AddTo(command);
    command.Run([options](CommandContext& context) {
        context.Open(options->Files);
        PrintValues(InfoOf(context.State), options->AsJson);
        return ExitDone;
    });
}

void AddCheck(Command& all) {
    Command command = all.AddCommand(
        "check",
        "List the posts whose tile is not in the catalogue; exit 1 if there are any");
    const auto options = AddTo(command);
    // A report is text; behind the bytes of a theater it would be damage.
    command.Output("--report", options->Report,
                   "Append the report to this file, as the editor does", MadeFiles());
    command.Run([options](CommandContext& context) {
        context.Open(options->Files);
        const Terrain& terrain = context.State.Terrain;
        const std::vector<int32_t> unknown =
            CountTileUse(terrain, context.State.Catalogue.Lookup);
        if (!options->Report.empty() && !unknown.empty())
            AppendReport(options->Report,
                         UnknownTilesReport(terrain, unknown, context.Clock.Now()));
        PrintPlaces(terrain, unknown, options->AsJson);
        return unknown.empty() ? ExitDone : ExitFound;
    });
}

void AddGet(Command& all) {
    Command command = all.AddCommand("get", "Tell everything of one post");
    const auto options = AddTo(command);
    AddPost(command, "X", options->X, "Y", options->Y);
    command.Check([options] {
        RequireInside(
            {"X", options->X, "Y", options->Y}, options->Files,
            [](int32_t width) { return width; }, options->Files.L2File());
    });
    command.Run([options](CommandContext& context) {
        const LevelReader posts = context.OpenToLookUp(options->Files, true);
        RequireInside({"X", options->X, "Y", options->Y}, context.State.Terrain.MapWidth,
                      context.State.Terrain.LFilename);
        PrintValues(PostOf(posts.PostAt(options->X + 1, options->Y + 1),
                           context.State.Catalogue.Lookup, options->X, options->Y),
                    options->AsJson);
        return ExitDone;
    });
}

} // namespace vardenix
