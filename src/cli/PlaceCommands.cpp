// place: where a theater lies on the earth, told, shown, and carried to another machine.
#include "cli/Commands.h"
#include "cli/GivenPlace.h"
#include "cli/Printing.h"
#include "cli/ScratchFolder.h"
#include "files/FileNames.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"
#include "world/KnownPlace.h"
#include "world/PlaceFile.h"
#include "world/WorldHelper.h"

#include <cmath>
#include <memory>
#include <optional>

namespace vardenix {

namespace {

struct PlaceOptions {
    explicit PlaceOptions(Command& command) : Files(command) {}

    TheaterFiles Files;
    std::string System;
    double Left = 0;
    double Bottom = 0;
    std::optional<double> Right;
    std::optional<double> Top;
    std::optional<double> Post;
    std::optional<double> PostHeight;
    std::string File;
    bool AsJson = false;
};

constexpr RealRange Anywhere{-1e9, 1e9};

void Require(const PlaceOptions& options) {
    if (options.Post.has_value() == options.Right.has_value() ||
        options.Right.has_value() != options.Top.has_value())
        throw UsageError("tell how wide a post is, with --post, or where the opposite "
                         "corner lies, with --right and --top");
    if (options.PostHeight && !options.Post)
        throw UsageError("--post-height", "goes with --post");
}

TheaterPlace PlaceOf(const PlaceOptions& options, int32_t posts) {
    const double width =
        options.Post ? *options.Post : (*options.Right - options.Left) / posts;
    const double height = options.PostHeight ? *options.PostHeight
                          : options.Post     ? *options.Post
                                             : (*options.Top - options.Bottom) / posts;
    return {options.System, options.Left, options.Bottom, width, height, false};
}

WorldHelper HelperIn(const ScratchFolder& scratch) {
    return OwnWorldHelper(scratch.Path());
}

std::string DegreesTo(double value, const char* side, const char* otherSide) {
    return FormatFixed(std::abs(value), 6) + (value < 0 ? otherSide : side);
}

// With the corners that follow from it, so that a mistake is seen at once.
void ShowPlace(const CommandContext& context, const TheaterPlace& place, bool asJson) {
    const int32_t posts = context.State.Terrain.MapWidth;
    const PlacedBox edges = EdgesOf(place, {0, 0, posts - 1, posts - 1});
    const ScratchFolder scratch;
    const auto corners = HelperIn(scratch).CornersOf({place.System, edges});
    constexpr std::array names{"south west", "south east", "north west", "north east"};
    JsonObject values{{"guessed", place.IsGuess},
                      {"system", place.System},
                      {"left", place.Left},
                      {"bottom", place.Bottom},
                      {"right", edges.Right},
                      {"top", edges.Top},
                      {"post width", place.PostWidth},
                      {"post height", place.PostHeight}};
    for (size_t i = 0; i < corners.size(); ++i) {
        const auto& [longitude, latitude] = corners[i];
        if (asJson)
            values.emplace_back(
                names[i], JsonObject{{"longitude", longitude}, {"latitude", latitude}});
        else
            values.emplace_back(names[i], DegreesTo(latitude, " north", " south") + ", " +
                                              DegreesTo(longitude, " east", " west"));
    }
    PrintValues(values, asJson);
}

void AddPlaceSet(Command& family) {
    Command command = family.AddCommand(
        "set", "Tell where a theater lies; kept in the user's own data");
    const auto options = std::make_shared<PlaceOptions>(command);
    command
        .Text("--system", options->System,
              "Reference system: an EPSG number (EPSG:32632), WKT or PROJ text")
        .Required();
    command
        .Real("--left", options->Left, "Of the lower left corner, in units of the system",
              Anywhere)
        .Required();
    command.Real("--bottom", options->Bottom, "Of the lower left corner", Anywhere)
        .Required();
    command.Real("--right", options->Right, "Of the upper right corner", Anywhere);
    command.Real("--top", options->Top, "Of the upper right corner", Anywhere);
    command.Real("--post", options->Post, "Width of a post", Anywhere);
    command.Real("--post-height", options->PostHeight,
                 "Height of a post, where it is another one", Anywhere);
    command.Check([options] { Require(*options); });
    command.Run([options](CommandContext& context) {
        context.OpenToLookUp(options->Files, false);
        const TheaterPlace place = PlaceOf(*options, context.State.Terrain.MapWidth);
        RequirePlace(place);
        // What the helper does not know is not kept.
        ShowPlace(context, place, false);
        WritePlace(place, PlaceFileOf(context.State.Terrain.LFilename));
        return ExitDone;
    });
}

void AddPlaceShow(Command& family) {
    Command command = family.AddCommand(
        "show", "Tell where a theater lies, or is guessed to lie by its theater.map");
    const auto options = std::make_shared<PlaceOptions>(command);
    command.Flag("--json", options->AsJson, "Print JSON");
    command.Run([options](CommandContext& context) {
        context.Open(options->Files);
        ShowPlace(context, PlaceOfTheater(context), options->AsJson);
        return ExitDone;
    });
}

void AddPlaceExport(Command& family) {
    Command command = family.AddCommand(
        "export", "Write where a theater lies into a file, for another machine");
    const auto options = std::make_shared<PlaceOptions>(command);
    command.Output("FILE", options->File, "The file to write").Required();
    command.Keeps([options] { return options->Files.AllFiles(); });
    command.Run([options](CommandContext& context) {
        context.Open(options->Files);
        WritePlace(PlaceOfTheater(context), options->File);
        return ExitDone;
    });
}

void AddPlaceImport(Command& family) {
    Command command =
        family.AddCommand("import", "Take where a theater lies from such a file");
    const auto options = std::make_shared<PlaceOptions>(command);
    command.Text("FILE", options->File, "The file to read").Required();
    command.Run([options](CommandContext& context) {
        context.OpenToLookUp(options->Files, false);
        const auto place = ReadPlace(options->File);
        if (!place)
            throw RuntimeError(ErrorNumber::FileNotFound, ShownPath(options->File));
        ShowPlace(context, *place, false);
        WritePlace(*place, PlaceFileOf(context.State.Terrain.LFilename));
        return ExitDone;
    });
}

} // namespace

TheaterPlace PlaceOfTheater(const CommandContext& context) {
    return KnownPlace(context.State.Terrain.LFilename, context.State.MapFileRecord);
}

void AddPlace(Command& all) {
    Command family = all.AddCommand("place", "Tell or change where a theater lies");
    AddPlaceSet(family);
    AddPlaceShow(family);
    AddPlaceExport(family);
    AddPlaceImport(family);
}

} // namespace vardenix
