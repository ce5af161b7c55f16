// vardenix-world: reads and writes maps of the real world for the editor and the command
// line program, in a process of its own that holds nothing of the user's. What it cannot
// do it says on its standard output, as one sentence, and ends with 1.
#include "world/gdal/Datasets.h"
#include "world/gdal/Limits.h"
#include "world/gdal/PointGrid.h"
#include "world/gdal/Rasters.h"
#include "world/gdal/Shapes.h"

#include <CLI/CLI.hpp>

#include <cpl_error.h>
#include <cstdio>
#include <functional>
#include <new>

namespace vardenix {
namespace {

CLI::App& AddCommand(CLI::App& all, const char* name, RasterRequest& request) {
    CLI::App& command = *all.add_subcommand(name);
    command.add_option("--system", request.System);
    command.add_option("--edges", request.Edges)->allow_extra_args(false);
    return command;
}

CLI::App& AddRasterCommand(CLI::App& all, const char* name, RasterRequest& request) {
    CLI::App& command = AddCommand(all, name, request);
    command.add_option("from", request.From)->required();
    command.add_option("to", request.To)->required();
    command.add_option("--size", request.Size)->required()->check(CLI::PositiveNumber);
    command.add_flag("--whole", request.Whole);
    return command;
}

CLI::App& AddShapeCommand(CLI::App& all, const char* name, ShapeRequest& request) {
    CLI::App& command = *all.add_subcommand(name);
    command.add_option("from", request.From)->required();
    command.add_option("to", request.To)->required();
    command.add_option("--system", request.System)->required();
    command.add_option("--kind-field", request.KindField);
    command.add_option("--name-field", request.NameField);
    return command;
}

int Say(const std::string& sentence, int code) {
    std::fputs(sentence.c_str(), stdout);
    return code;
}

int Run(int count, char** arguments) {
    CLI::App all;
    all.require_subcommand(1);
    RasterRequest request;
    CLI::App& read = AddRasterCommand(all, "read", request);
    read.add_option("--resample", request.Resample);
    read.add_option("--map-system", request.MapSystem);
    read.add_option("--no-data", request.NoData);
    const CLI::App& write = AddRasterCommand(all, "write", request);
    AddCommand(all, "corners", request);
    CLI::App& grid = AddCommand(all, "grid", request);
    grid.add_option("--size", request.Size)->required()->check(CLI::Range(2, 1000));
    ShapeRequest shapes;
    CLI::App& readShapes = AddShapeCommand(all, "read-shapes", shapes);
    readShapes.add_option("--map-system", shapes.MapSystem);
    CLI::App& writeShapes = AddShapeCommand(all, "write-shapes", shapes);
    writeShapes.add_option("--form", shapes.Form)->required();
    writeShapes.add_option("--stem", shapes.Stem)->required();
    CLI11_PARSE(all, count, arguments);
    LimitThisProcess();
    CPLSetErrorHandler(CPLQuietErrorHandler);
    KnowFewDrivers();
    if (read.parsed())
        ReadRaster(request);
    else if (write.parsed())
        WriteRaster(request);
    else if (grid.parsed())
        return Say(PointGridOf(request), 0);
    else if (readShapes.parsed())
        ReadShapes(shapes);
    else if (writeShapes.parsed())
        WriteShapes(shapes);
    else
        return Say(CornersOf(request), 0);
    return 0;
}

int RunGuarded(int count, char** arguments) {
    try {
        return Run(count, arguments);
    } catch (const MapRefused& refused) {
        return Say(refused.what(), 1);
    } catch (const std::bad_alloc&) {
        return Say("the memory that a map may take is not enough for this one", 1);
    } catch (const std::exception& error) {
        return Say(error.what(), 1);
    }
}

} // namespace
} // namespace vardenix

int main(int count, char** arguments) { return vardenix::RunGuarded(count, arguments); }
