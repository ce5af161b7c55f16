#include "cli/CommandTable.h"

#include "cli/Commands.h"

#include <algorithm>
#include <string_view>

namespace vardenix {

namespace {

// What adds commands, and the names of those, by which a line calls them.
struct NamedCommands {
    std::vector<std::string_view> Names;
    void (*Add)(Command&);
};

std::vector<NamedCommands> AllCommands() {
    return {{{"info"}, AddInfo},
            {{"check"}, AddCheck},
            {{"get"}, AddGet},
            {{"set"}, AddSet},
            {{"fill"}, AddFill},
            {{"save-as"}, AddSaveAs},
            {{"elevation"}, AddElevation},
            {{"map"}, AddMap},
            {{"preview"}, AddPreview},
            {{"render"}, AddRender},
            {{"rebuild"}, AddRebuild},
            {{"rebuild-elevation"}, AddRebuildElevation},
            {{"far-tile"}, AddFarTile},
            {{"settings"}, AddSettings},
            {{"bin"}, AddBin},
            {{"features"}, AddFeatures},
            {{"search"}, AddSearch},
            {{"stats"}, AddStatistics},
            {{"replace"}, AddReplace},
            {{"terrain"}, AddTerrain},
            {{"place"}, AddPlace},
            {{"heights"}, AddHeights},
            {{"tiles"}, AddTiles},
            {{"region"}, AddRegion},
            {{"mea", "tc", "tm"}, AddDerived},
            {{"update"}, AddUpdate},
            {{"recovery"}, AddRecovery},
            {{"saves"}, AddSaves},
            {{"completion"}, AddCompletion}};
}

} // namespace

std::string AboutCommands() {
    return "Opens, checks, edits and paints the terrain of a theater. X and Y count from "
           "0, as the map shows them.";
}

std::string CommandsFooter() {
    return "Exit codes: 0 done, 1 a check found something or a search nothing, 2 usage, "
           "3 run-time error.";
}

void AddAllCommands(Command& all) {
    for (const NamedCommands& each : AllCommands())
        each.Add(all);
}

void AddCommandsFor(const std::vector<std::string>& line, Command& all) {
    for (const NamedCommands& each : AllCommands())
        if (!line.empty() && std::find(each.Names.begin(), each.Names.end(),
                                       line.front()) != each.Names.end())
            return each.Add(all);
    AddAllCommands(all);
}

} // namespace vardenix
