// settings: the first VX.ini of an install, for whoever sets the program up for others.
#include "cli/Commands.h"
#include "mapview/MapLayout.h"
#include "platform/FileNames.h"
#include "theater/ConfigurationFile.h"

#include <CLI/Option.hpp>
#include <CLI/Validators.hpp>

#include <cstdio>
#include <limits>
#include <memory>

namespace vardenix {

void AddSettings(CLI::App& app, CommandRun& run) {
    auto* command = app.add_subcommand(
        "settings", "Write VX.ini with the values of a first start, unless it is there");
    auto first = std::make_shared<Configuration>();
    command
        ->add_option("--theater-index", first->OptionTheaterListIndex,
                     "Entry of the theater list to begin with; 0 is the paths by hand")
        ->check(CLI::Range(0, int{std::numeric_limits<int16_t>::max()}));
    command->add_option("--x", first->X, "Column at the map's left edge");
    command->add_option("--y", first->Y, "Row at the map's bottom edge");
    command->add_option("--zoom", first->Zoom, "Posts along a side of a grid cell")
        ->check(CLI::Range(ZoomRange.Min, ZoomRange.Max));
    command->callback([first, &run] {
        run = [first](CommandContext& context) {
            const std::string path = context.State.Folders.AppPath + "VX.ini";
            if (FileExists(path)) {
                std::printf("%s is there already\n", path.c_str());
                return ExitDone;
            }
            // The identifier is made by the reading.
            first->P = context.State.Configuration.P;
            WriteConfiguration(context.State.Folders.AppPath, *first);
            std::printf("%s\n", path.c_str());
            return ExitDone;
        };
    });
}

} // namespace vardenix
