// stats: what a terrain is made of.
#include "catalogue/TileNumbers.h"
#include "catalogue/TypeNames.h"
#include "cli/Commands.h"
#include "cli/Printing.h"
#include "search/Statistics.h"
#include "texts/Numbers.h"
#include "texts/Windows1252.h"

#include <memory>

namespace vardenix {

namespace {

std::string KindName(int32_t code) { return TerrainName(static_cast<uint8_t>(code)); }

std::string TileName(const TileLookup& lookup, int32_t number) {
    return Utf8FromBytes(lookup.at(static_cast<size_t>(number)).Name);
}

JsonArray NumbersAsJson(const std::vector<int32_t>& numbers) {
    return {numbers.begin(), numbers.end()};
}

JsonObject AsJson(const Statistics& told, const TileLookup& lookup) {
    JsonArray kinds;
    for (const CountedPosts& kind : told.Kinds)
        kinds.emplace_back(
            JsonObject{{"kind", KindName(kind.Which)}, {"posts", kind.Posts}});
    JsonArray sets;
    for (const CountedPosts& set : told.Sets)
        sets.emplace_back(JsonObject{{"set", ShownSet(set.Which)}, {"posts", set.Posts}});
    JsonArray tiles;
    for (const CountedPosts& tile : told.Tiles)
        tiles.emplace_back(JsonObject{{"tile", tile.Which},
                                      {"name", TileName(lookup, tile.Which)},
                                      {"posts", tile.Posts}});
    JsonArray unknown;
    for (const CountedPosts& number : told.Unknown)
        unknown.emplace_back(JsonObject{{"tile", number.Which}, {"posts", number.Posts}});
    JsonArray bars;
    for (const HeightBar& bar : told.Heights)
        bars.emplace_back(JsonObject{{"from", bar.From}, {"posts", bar.Posts}});
    return {{"posts", told.Posts},
            {"sea, square km", SquareKilometersOf(told.SeaPosts)},
            {"lowest, feet", int32_t{told.Lowest}},
            {"highest, feet", int32_t{told.Highest}},
            {"mean, feet", told.MeanHeight},
            {"kinds", std::move(kinds)},
            {"sets", std::move(sets)},
            {"tiles", std::move(tiles)},
            {"unused tiles", NumbersAsJson(told.UnusedTiles)},
            {"unknown numbers", std::move(unknown)},
            {"tiles without a picture", NumbersAsJson(told.NoPicture)},
            {"feet a bar", told.BarStep},
            {"heights", std::move(bars)}};
}

// "12345 posts, 18.8 %".
std::string Share(int64_t posts, int64_t all) {
    const double percent =
        all == 0 ? 0 : 100 * static_cast<double>(posts) / static_cast<double>(all);
    return std::to_string(posts) + (posts == 1 ? " post, " : " posts, ") +
           FormatFixed(percent, 1) + " %";
}

void PrintTiles(const char* heading, const std::vector<int32_t>& numbers,
                const TileLookup& lookup) {
    Print(std::string(heading) + ": " + std::to_string(numbers.size()));
    for (const int32_t number : numbers)
        Print("  " + std::to_string(number) + " " + TileName(lookup, number));
}

void PrintPlain(const Statistics& told, const TileLookup& lookup) {
    Print("posts: " + std::to_string(told.Posts));
    Print("sea: " + Share(told.SeaPosts, told.Posts) + ", " +
          std::to_string(SquareKilometersOf(told.SeaPosts)) + " square km");
    Print("heights: " + std::to_string(told.Lowest) + " to " +
          std::to_string(told.Highest) + " feet, mean " +
          FormatFixed(told.MeanHeight, 1));
    Print("kinds:");
    for (const CountedPosts& kind : told.Kinds)
        Print("  " + KindName(kind.Which) + ": " + Share(kind.Posts, told.Posts));
    Print("sets:");
    for (const CountedPosts& set : told.Sets)
        Print("  " + std::to_string(ShownSet(set.Which)) + ": " +
              Share(set.Posts, told.Posts));
    Print("tiles in use: " + std::to_string(told.Tiles.size()));
    for (const CountedPosts& tile : told.Tiles)
        Print("  " + std::to_string(tile.Which) + " " + TileName(lookup, tile.Which) +
              ": " + Share(tile.Posts, told.Posts));
    PrintTiles("tiles not in use", told.UnusedTiles, lookup);
    Print("unknown numbers: " + std::to_string(told.Unknown.size()));
    for (const CountedPosts& number : told.Unknown)
        Print("  " + std::to_string(number.Which) + ": " +
              Share(number.Posts, told.Posts));
    PrintTiles("tiles without a picture", told.NoPicture, lookup);
    Print("heights, a bar of " + std::to_string(told.BarStep) + " feet each:");
    for (const HeightBar& bar : told.Heights)
        Print("  " + std::to_string(bar.From) + ": " + Share(bar.Posts, told.Posts));
}

} // namespace

void AddStatistics(Command& all) {
    struct Options {
        explicit Options(Command& command) : Files(command) {}
        TheaterFiles Files;
        bool Json = false;
    };
    Command command =
        all.AddCommand("stats", "Tell what the terrain is made of: kinds, sets, tiles, "
                                "heights, and what is unused, unknown or missing");
    const auto options = std::make_shared<Options>(command);
    command.Flag("--json", options->Json, "Print JSON");
    command.Run([options](CommandContext& context) {
        context.Open(options->Files);
        const TileLookup& lookup = context.State.Catalogue.Lookup;
        const Statistics told = StatisticsOf(context.State.Terrain, lookup);
        if (options->Json)
            PrintJson(AsJson(told, lookup));
        else
            PrintPlain(told, lookup);
        return ExitDone;
    });
}

} // namespace vardenix
