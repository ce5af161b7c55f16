#include "cli/ReliefOptions.h"

namespace vardenix {

void AddReliefOptions(Command& command, ReliefOptions& options) {
    command.Number("--relief", options.Strength, "Strength of the layer relief, percent",
                   {0, 100});
    command.Number("--contour-step", options.ContourStep,
                   "Feet from line to line of the layer contours", {1, 32767});
}

} // namespace vardenix
