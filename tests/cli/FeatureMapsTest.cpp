// features export and import as maps, held against the field's own program.
#include "cli/WorldTheater.h"
#include "support/HttpServer.h"

#include <filesystem>

namespace vardenix::tests {
namespace {

namespace fs = std::filesystem;

// Whole posts, as feature files have them.
constexpr const char* Features = "AIRPORT 1 10,20 3 West Field\r\n"
                                 "CITY 5 5,5 5,9 9,9 9,5 5,5 2\r\n"
                                 "COAST 3 0,0 30,31 63,63 1\r\n"
                                 "LABEL 1 40,41 0 Caf\xE9 Nord\r\n"
                                 "RIVER 2 7,8 9,10 -4\r\n"
                                 "ROAD 2 60,1 60,90 5\r\n";

class FeatureMaps : public WorldTheater {
protected:
    FeatureMaps() { told_ = folder_.Write("in.tdf", Features); }
    ProgramResult Export(const std::string& out, bool overwrite = false) {
        std::vector<std::string> line{"features", "export", "0",     "0", "63",
                                      "63",       told_,    "--out", out};
        if (overwrite)
            line.emplace_back("--overwrite");
        return Run(line);
    }
    ProgramResult Import(std::vector<std::string> maps,
                         const std::vector<std::string>& more = {}) {
        fs::remove(folder_.File("out.tdf"));
        maps.insert(maps.begin(), {"features", "import"});
        maps.insert(maps.end(), {"--out", folder_.File("out.tdf")});
        maps.insert(maps.end(), more.begin(), more.end());
        return Run(maps);
    }
    std::string Out() { return Slurp(folder_.File("out.tdf")); }
    static std::string OgrInfo(const std::string& map) {
        return RunProgram({"/usr/bin/ogrinfo", "-al", map}).Output;
    }
    std::string told_;
};

TEST_F(FeatureMaps, ComeBackFromGeoJsonAndGeoPackage) {
    for (const char* form : {"map.geojson", "map.gpkg"}) {
        SCOPED_TRACE(form);
        const std::string map = folder_.File(form);
        const ProgramResult written = Export(map);
        ASSERT_EQ(written.ExitCode, 0) << written.Errors;
        EXPECT_EQ(written.Output, map + "\n");
        const ProgramResult read = Import({map});
        EXPECT_EQ(read.ExitCode, 0) << read.Errors;
        EXPECT_EQ(Out(), Features);
    }
}

TEST_F(FeatureMaps, ShapefilesHoldOneFormOfShapesEach) {
    const ProgramResult written = Export(folder_.File("map.shp"));
    ASSERT_EQ(written.ExitCode, 0) << written.Errors;
    const std::string areas = folder_.File("map-areas.shp");
    const std::string lines = folder_.File("map-lines.shp");
    const std::string points = folder_.File("map-points.shp");
    EXPECT_EQ(written.Output, areas + "\n" + lines + "\n" + points + "\n");
    const ProgramResult read = Import({points, areas, lines});
    EXPECT_EQ(read.ExitCode, 0) << read.Errors;
    EXPECT_EQ(Out(), Features);
    EXPECT_NE(OgrInfo(lines).find("Feature Count: 3"), std::string::npos)
        << OgrInfo(lines);
    EXPECT_FALSE(fs::exists(folder_.File("map.shp")));
}

TEST_F(FeatureMaps, TheFieldsOwnProgramReadsPlacesKindsAndNames) {
    ASSERT_EQ(Run({"place", "set", "--system", "EPSG:32632", "--left", "500000",
                   "--bottom", "5200000", "--post", "1000"})
                  .ExitCode,
              0);
    const std::string map = folder_.File("map.gpkg");
    ASSERT_EQ(Export(map).ExitCode, 0);
    const std::string told = OgrInfo(map);
    // The middles of posts 10,20 and 40,41.
    for (const char* part :
         {"POINT (510500 5220500)", "POINT (540500 5241500)", "kind (String) = AIRPORT",
          "name (String) = Café Nord", "LINESTRING (507500 5208500,509500 5210500)",
          "value (Integer) = -4"})
        EXPECT_NE(told.find(part), std::string::npos) << part << told;
    const std::string json = folder_.File("map.json");
    ASSERT_EQ(Export(json).ExitCode, 0);
    const std::string degrees = OgrInfo(json);
    // 9 degrees east is the middle of the zone, 500 km.
    EXPECT_NE(degrees.find("POINT (9.1"), std::string::npos) << degrees;
}

TEST_F(FeatureMaps, FilesThatAreThereStayUnlessToldOtherwise) {
    const std::string map = folder_.Write("map.geojson", "mine");
    const ProgramResult refused = Export(map);
    EXPECT_EQ(refused.ExitCode, 2);
    EXPECT_EQ(Slurp(map), "mine");
    EXPECT_EQ(Export(map, true).ExitCode, 0);
    EXPECT_EQ(Import({map}).ExitCode, 0);
    // One of several.
    folder_.Write("roads-lines.dbf", "mine");
    EXPECT_EQ(Export(folder_.File("roads.shp")).ExitCode, 2);
    EXPECT_FALSE(fs::exists(folder_.File("roads-lines.shp")));
    EXPECT_EQ(Run({"features", "import", map, "--out", map}).ExitCode, 2);
}

TEST_F(FeatureMaps, AMapWantsATheater) {
    const ProgramResult result =
        RunProgram({VARDENIX_CLI, "features", "export", "0", "0", "63", "63", told_,
                    "--out", folder_.File("map.gpkg")});
    EXPECT_EQ(result.ExitCode, 2);
    EXPECT_NE(result.Errors.find("--theater"), std::string::npos) << result.Errors;
}

// As the map of a stranger may be: other words, other names of attributes, no value.
constexpr const char* Strange = R"({"type":"FeatureCollection","features":[
{"type":"Feature","properties":{"class":"motorway","title":"A 1"},
 "geometry":{"type":"MultiLineString","coordinates":[[[8.6,47.1],[8.7,47.1]],[[8.7,47.2],[8.8,47.2]]]}},
{"type":"Feature","properties":{"class":"town","title":"B"},
 "geometry":{"type":"Polygon","coordinates":[[[8.6,47.1],[8.7,47.1],[8.7,47.2],[8.6,47.1]]]}},
{"type":"Feature","properties":{"class":"town","title":"C"},"geometry":null},
{"type":"Feature","properties":{"class":"town","title":"Far"},
 "geometry":{"type":"Point","coordinates":[120,-33]}}]})";

TEST_F(FeatureMaps, UnknownKindsAreNamedOnceWithWhatToDo) {
    const std::string map = folder_.Write("strange.geojson", Strange);
    const std::vector<std::string> fields{"--kind-field", "class", "--name-field",
                                          "title"};
    const ProgramResult unknown = Import({map}, fields);
    EXPECT_EQ(unknown.ExitCode, 2);
    EXPECT_NE(unknown.Errors.find("\"motorway\" (2), \"town\" (2)"), std::string::npos)
        << unknown.Errors;
    EXPECT_NE(unknown.Errors.find("--kind \"motorway=road\""), std::string::npos);
    EXPECT_FALSE(fs::exists(folder_.File("out.tdf")));
    std::vector<std::string> told = fields;
    told.insert(told.end(), {"--kind", "motorway=road", "--kind", "town=label"});
    const ProgramResult read = Import({map}, told);
    EXPECT_EQ(read.ExitCode, 0) << read.Errors;
    // 0.1 degrees are 7.6 km there, and 11.1 northward; the label is in the middle.
    EXPECT_NE(Out().find("LABEL 1 11,16 0 B\r\n"), std::string::npos) << Out();
    EXPECT_NE(Out().find("ROAD 2 7,11 15,11 0\r\nROAD 2 15,22 22,22 0\r\n"),
              std::string::npos)
        << Out();
    EXPECT_NE(read.Errors.find("1 without a point on the theater"), std::string::npos)
        << read.Errors;
    EXPECT_EQ(Import({map}, {"--kind", "strange=-"}).ExitCode, 1);
    EXPECT_EQ(Import({map}, {"--kind", "strange=highway"}).ExitCode, 2);
    EXPECT_EQ(Import({map}, {"--kind", "strange"}).ExitCode, 2);
}

TEST_F(FeatureMaps, ALayersNameIsTheKindOfAMapWithoutKinds) {
    const std::string map = folder_.Write(
        "Roads.geojson", R"({"type":"FeatureCollection","features":[{"type":"Feature",
"properties":{},"geometry":{"type":"LineString","coordinates":[[8.6,47.1],[8.7,47.1]]}}]})");
    EXPECT_EQ(Import({map}).ExitCode, 0);
    EXPECT_EQ(Out(), "ROAD 2 7,11 15,11 0\r\n");
}

TEST_F(FeatureMaps, AMapThatNamesAnAddressMakesNobodyAskThere) {
    const HttpServer server(std::string("HTTP/1.0 200 OK\r\n\r\n"));
    const std::string map = folder_.Write(
        "link.geojson",
        R"({"type":"FeatureCollection","crs":{"type":"link","properties":{"href":")" +
            server.Address() +
            R"(/crs.wkt","type":"ogcwkt"}},"features":[{"type":"Feature",
"properties":{"kind":"road"},"geometry":{"type":"Point","coordinates":[8.6,47.1]}}]})");
    const ProgramResult result = Import({map});
    EXPECT_GE(result.ExitCode, 0);
    EXPECT_EQ(server.Requests(), "");
}

TEST_F(FeatureMaps, WhatIsNoMapEndsInASentenceAndLeavesNoFile) {
    const std::string whole = folder_.File("whole.gpkg");
    ASSERT_EQ(Export(whole).ExitCode, 0);
    ASSERT_EQ(Export(folder_.File("roads.shp")).ExitCode, 0);
    fs::remove(folder_.File("roads-lines.prj"));
    const std::string bytes = Slurp(whole);
    for (const std::string& map :
         {folder_.Write("text.geojson", "no map at all"), folder_.Write("empty.gpkg", ""),
          folder_.Write("cut.gpkg", bytes.substr(0, 5000)),
          folder_.Write("cut.geojson", std::string(Strange).substr(0, 300)),
          folder_.File("roads-lines.shp"), // tells no system
          folder_.File("is not there.gpkg"), folder_.Path(),
          std::string("/vsimem/x.geojson")}) {
        const ProgramResult result = Import({map});
        EXPECT_EQ(result.ExitCode, 3) << map << result.Errors;
        EXPECT_NE(result.Errors.find(':'), std::string::npos) << result.Errors;
        EXPECT_FALSE(fs::exists(folder_.File("out.tdf"))) << map;
    }
    const std::string names = folder_.Names();
    EXPECT_EQ(names.find("-journal"), std::string::npos) << names;
    EXPECT_EQ(names.find("-wal"), std::string::npos) << names;
}

} // namespace
} // namespace vardenix::tests
