// settings: the first VX.ini of an install, for whoever sets the program up for others.
#include "cli/Commands.h"
#include "cli/Printing.h"
#include "files/FileNames.h"
#include "files/OwnFolders.h"
#include "mapview/MapLayout.h"
#include "program/ConfigurationFile.h"

#include <memory>

namespace vardenix {

void AddSettings(Command& all) {
    Command command = all.AddCommand(
        "settings", "Write VX.ini with the values of a first start, unless it is there");
    const auto first = std::make_shared<Configuration>();
    command.Number("--theater-index", first->OptionTheaterListIndex,
                   "Entry of the theater list to begin with; 0 is the paths by hand",
                   {0, FittingField<int16_t>.Max});
    command.Number("--x", first->X, "Column at the map's left edge");
    command.Number("--y", first->Y, "Row at the map's bottom edge");
    command.Number("--zoom", first->Zoom, "Posts along a side of a grid cell",
                   {ZoomRange.Min, ZoomRange.Max});
    command.Run([first](CommandContext& context) {
        MakeOwnFilesFolder(OwnFilesFolder(ProgramFolder()));
        const std::string path = context.State.Folders.AppPath + "VX.ini";
        if (FileExists(path)) {
            Print(ShownPath(path) + " is there already");
            return ExitDone;
        }
        // The identifier is made by the reading.
        first->P = context.State.Configuration.P;
        WriteConfiguration(context.State.Folders.AppPath, *first);
        Print(ShownPath(path));
        return ExitDone;
    });
}

} // namespace vardenix
