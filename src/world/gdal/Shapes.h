#pragma once

#include <string>

namespace vardenix {

// What is asked for on the command line of this program.
struct ShapeRequest {
    std::string From;
    std::string To;
    std::string System;
    std::string MapSystem; // for a map that does not tell its own
    std::string KindField = "kind";
    std::string NameField = "name";
    std::string Form; // geojson, gpkg or shp
    std::string Stem; // of the files that are made in the folder To
};

// Shapes of all layers in units of a reference system, into a file. Each is: a byte for
// its form (0 a point, 1 a line, 2 an area, 3 a hole in the area before it); kind and
// name, each as 32 bits of length and its UTF-8; 32 bits of value; 32 bits of points that
// its feature had, -1 where it does not tell; 32 bits of points, and as often two
// doubles. Parts of one shape are shapes of their own; what the system cannot tell is
// left out. Both: MapRefused.
void ReadShapes(const ShapeRequest& request);

// Such a file as a map; a .shp holds shapes of one form, so that several are made where
// there are several, and GeoPackages have a layer for each.
void WriteShapes(const ShapeRequest& request);

} // namespace vardenix
