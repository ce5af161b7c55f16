#pragma once

#include "app/Workspace.h"
#include "workspace/RegionExchange.h"

#include <optional>

namespace vardenix {

// Regions of the map that go to a file or come from one, from the panel's buttons to the
// clicks that say where.
class Regions {
public:
    // Borrowed.
    explicit Regions(Workspace& workspace) : workspace_(workspace) {}

    // The next two clicks give the corners of what is exported: the posts, or with Shift
    // on the panel the features.
    void Export();
    // Asks for the file whose region the next click stamps.
    void Import();
    // Of a file that is named already.
    void ImportFrom(const std::string& path);

    // The corners have been clicked.
    void ExportTiles();
    void SubExportTDFs();
    void ImportTiles();

private:
    void WaitFor(std::optional<TileRegion> region);

    Workspace& workspace_;
    std::optional<TileRegion> region_; // waits for the click that stamps it
};

} // namespace vardenix
