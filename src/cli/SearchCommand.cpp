// search: posts by a pattern of conditions, told or overwritten.
#include "cli/Commands.h"
#include "cli/Printing.h"
#include "cli/SearchCells.h"
#include "companion/Vardenix.h"
#include "levels/TerrainStore.h"
#include "search/SearchHits.h"
#include "search/TileSearch.h"
#include "texts/Numbers.h"
#include "workspace/PostFields.h"

#include <algorithm>
#include <charconv>
#include <memory>
#include <set>
#include <utility>

namespace vardenix {

namespace {

struct SearchOptions {
    explicit SearchOptions(Command& command) : Files(command) {}
    TheaterFiles Files;
    std::vector<std::string> Cells;
    std::vector<std::string> Sets;
    std::string Named;
    bool AsJson = false;
    bool CountOnly = false;
    bool Overwrite = false;
    // What the texts above say.
    SearchPattern Pattern;
    PostChange Change;
};

template <typename Field>
void TakeField(const std::string& text, std::string_view value,
               std::optional<Field>& field, int64_t least = FittingField<Field>.Min) {
    int64_t number = 0;
    const auto read = std::from_chars(value.data(), value.data() + value.size(), number);
    if (!IsWhole(value) || read.ec != std::errc() || number < least ||
        number > FittingField<Field>.Max)
        throw UsageError("--set", "'" + text + "' is no whole number from " +
                                      std::to_string(least) + " to " +
                                      std::to_string(FittingField<Field>.Max));
    if (field)
        throw UsageError("--set", text.substr(0, text.find('=')) + " is given twice");
    field = static_cast<Field>(number);
}

// "palette=7".
void TakeSet(const std::string& text, PostChange& change) {
    const size_t equals = std::min(text.find('='), text.size());
    const std::string_view word = std::string_view(text).substr(0, equals);
    if (equals == text.size() || SearchFieldOf(word) == nullptr)
        throw UsageError("--set",
                         "'" + text + "' is not FIELD=VALUE, FIELD " + SearchFieldList);
    const std::string_view value = std::string_view(text).substr(equals + 1);
    if (word == "tile") // a theater with a negative tile number cannot be opened
        TakeField(text, value, change.TileOffset, 0);
    else if (word == "elevation")
        TakeField(text, value, change.Elevation);
    else if (word == "palette")
        TakeField(text, value, change.Palette);
    else
        TakeField(text, value, word == "x1" ? change.X1 : change.X2);
}

void TakeTexts(SearchOptions& options) {
    options.Pattern = PatternOfCells(options.Cells);
    for (const std::string& set : options.Sets)
        TakeSet(set, options.Change);
    if (!options.Sets.empty() && options.Cells.empty() && options.Named.empty())
        throw UsageError("--set", "would set every post of the terrain; say with --cell "
                                  "or --named which, or use fill");
}

std::pair<int, int> PlaceOf(int32_t serial, int32_t mapWidth) {
    const PostXY post = SerialToXY(serial, mapWidth);
    return {static_cast<int>(post.X) - 1, static_cast<int>(post.Y) - 1};
}

void PrintHits(const SearchResults& hits, int32_t mapWidth,
               const SearchOptions& options) {
    const size_t count = hits.size() - 1;
    if (options.AsJson) {
        JsonObject told{{"count", count}};
        JsonArray places;
        for (size_t i = 1; i < hits.size() && !options.CountOnly; ++i) {
            const auto [x, y] = PlaceOf(hits[i], mapWidth);
            places.emplace_back(JsonArray{x, y});
        }
        if (!options.CountOnly)
            told.emplace_back("hits", std::move(places));
        return PrintJson(told);
    }
    if (options.CountOnly)
        return Print(std::to_string(count));
    for (size_t i = 1; i < hits.size(); ++i) {
        const auto [x, y] = PlaceOf(hits[i], mapWidth);
        Print("X " + std::to_string(x) + ", Y " + std::to_string(y));
    }
}

// Without those beyond the last whole segment, which a save would lose.
SearchResults KeptHits(const SearchResults& hits, int32_t mapWidth) {
    SearchResults kept(1);
    const int32_t saved = SavedWidth(mapWidth);
    for (size_t i = 1; i < hits.size(); ++i) {
        const auto [x, y] = PlaceOf(hits[i], mapWidth);
        if (x < saved && y < saved)
            kept.push_back(hits[i]);
    }
    return kept;
}

// How many segments that hits lie in are all sea.
int32_t SeaSegmentsOf(const Terrain& terrain, const SearchResults& hits) {
    std::set<std::pair<int32_t, int32_t>> segments;
    for (size_t i = 1; i < hits.size(); ++i) {
        const auto [x, y] = PlaceOf(hits[i], terrain.MapWidth);
        segments.emplace(x / SegmentSide + 1, y / SegmentSide + 1);
    }
    return static_cast<int32_t>(std::ranges::count_if(segments, [&](const auto& segment) {
        return IsCommonSeg(terrain, segment.first, segment.second);
    }));
}

void SetAndSave(CommandContext& context, const SearchOptions& options,
                const SearchResults& hits) {
    Terrain& terrain = context.State.Terrain;
    const std::vector<uint8_t> all(hits.size(), 1);
    const int64_t count = SetHits(terrain, hits, all, options.Change);
    if (options.Change.Palette || options.Change.X1 || options.Change.X2)
        TellSharedSea(SeaSegmentsOf(terrain, hits));
    SaveLevel2(context, options.Overwrite);
    Tell(std::to_string(count) + (count == 1 ? " post" : " posts") + " set in " +
         NameOnDisk(terrain.LFilename));
}

} // namespace

void AddSearch(Command& all) {
    Command command = all.AddCommand(
        "search", "List the posts that a pattern fits; exit 1 if there are none");
    const auto options = std::make_shared<SearchOptions>(command);
    AddCells(command, options->Cells);
    command.Text("--named", options->Named,
                 "Only posts of tiles with this in their name, or of this kind; several "
                 "parted by commas");
    command.Texts("--set", options->Sets,
                  "FIELD=VALUE that all posts found are set to, and saved");
    command.Flag("--json", options->AsJson, "Print JSON");
    command.Flag("--count", options->CountOnly, "Print the number of posts alone");
    AddOverwrite(command, options->Overwrite);
    command.Check([options] { TakeTexts(*options); });
    command.Run([options](CommandContext& context) {
        const bool sets = !options->Change.Empty();
        sets ? context.OpenToWrite(options->Files) : context.Open(options->Files);
        const Terrain& terrain = context.State.Terrain;
        SearchResults hits;
        FindPosts(terrain, context.State.Catalogue.Lookup,
                  {options->Pattern, options->Named}, context.Progress, hits);
        if (sets)
            hits = KeptHits(hits, terrain.MapWidth);
        if (sets && hits.size() > 1)
            SetAndSave(context, *options, hits);
        PrintHits(hits, terrain.MapWidth, *options);
        return hits.size() > 1 ? ExitDone : ExitFound;
    });
}

} // namespace vardenix
