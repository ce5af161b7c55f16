#pragma once

#include "program/Configuration.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace vardenix {

// Which key holds which value, in the order in which the keys are written. A routine here
// calls `visit(section, key, value)` for every setting of `record`, so that reading and
// writing share one list; the type of the value says its form in the file:
//   std::string text, uint32_t colour, bool Boolean,
//   int16_t and int32_t number, float the shortest number text.

template <typename Record, typename Visit>
void VisitSystemAndFiles(Record& record, Visit visit) {
    visit("SYSTEM", "Online Help", record.OnlineHelp);
    visit("SYSTEM", "Version Check", record.VersionCheck);
    visit("SYSTEM", "P", record.P);
    visit("FILES", "L2_file", record.L2File);
    visit("FILES", "BIN_file", record.BinFile);
    visit("FILES", "MAP_file", record.MapFile);
    visit("FILES", "DDS_Path", record.DdsPath);
}

template <typename Record, typename Visit>
void VisitColorsAndSizes(Record& record, Visit visit) {
    const auto visitFeatures = [&](const char* section, auto member) {
        visit(section, "Airports", record.Airports.*member);
        visit(section, "City", record.City.*member);
        visit(section, "Coast", record.Coast.*member);
        visit(section, "Labels", record.Labels.*member);
        visit(section, "Rivers", record.Rivers.*member);
        visit(section, "Roads", record.Roads.*member);
    };
    visitFeatures("COLORS", &FeatureStyle::Color);
    visit("COLORS", "Grid", record.GridColor);
    visit("COLORS", "Exported_Area", record.ExportedAreaColor);
    visit("COLORS", "Segment", record.SegmentColor);
    visit("COLORS", "Heights", record.HeightDefaultColor);
    visit("COLORS", "Preview_Sea", record.PreviewSeaColor);
    for (size_t level = 0; level < record.PreviewLevelColors.size(); ++level)
        visit("COLORS", "Preview_Level_" + std::to_string(level + 1),
              record.PreviewLevelColors[level]);
    visit("COLORS", "TileAreas", record.TileAreasColor);
    visit("COLORS", "TileAreas_Selected", record.TileAreasSelectedColor);
    visit("COLORS", "TilePaths", record.TilePathsColor);
    visit("COLORS", "TilePaths_Selected", record.TilePathsSelectedColor);
    visitFeatures("SIZES", &FeatureStyle::Size);
}

template <typename Record, typename Visit>
void VisitFonts(Record& record, Visit visit) {
    const auto visitFonts = [&](const char* section, auto member) {
        visit(section, "Airports", record.AirportsFont.*member);
        visit(section, "Labels", record.LabelsFont.*member);
        // The heights' colour has a table of its own.
        if (section != std::string_view("FONT_COLOR"))
            visit(section, "Heights", record.HeightsFont.*member);
    };
    visitFonts("FONT_BOLD", &FontChoice::Bold);
    visitFonts("FONT_COLOR", &FontChoice::Color);
    visitFonts("FONT_ITALIC", &FontChoice::Italic);
    visitFonts("FONT_NAME", &FontChoice::Name);
    visitFonts("FONT_SIZE", &FontChoice::Size);
    visitFonts("FONT_STRIKE", &FontChoice::Strikethrough);
    visitFonts("FONT_UNDERLINE", &FontChoice::Underline);
}

template <typename Record, typename Visit>
void VisitLastSettings(Record& record, Visit visit) {
    const char* const section = "LAST_SETT";
    visit(section, "Zoom", record.Zoom);
    visit(section, "X", record.X);
    visit(section, "Y", record.Y);
    visit(section, "Auto_Check_for_Updates", record.AutoCheckForUpdates);
    visit(section, "Main_Win_Vis", record.MainWinVis);
    visit(section, "SearchRes_Win_Vis", record.SearchResWinVis);
    visit(section, "Feat_Win_Vis", record.FeatWinVis);
    visit(section, "Pal_Win_Vis", record.PalWinVis);
    visit(section, "ThPrev_Win_Vis", record.ThPrevWinVis);
    const auto visitPosition = [&](const std::string& window, auto& position) {
        visit(section, window + "_Pos_T", position.Top);
        visit(section, window + "_Pos_L", position.Left);
    };
    visitPosition("Main_Win", record.MainWinPos);
    visitPosition("SearchRes_Win", record.SearchResWinPos);
    visitPosition("Feat_Win", record.FeatWinPos);
    visitPosition("Pal_Win", record.PalWinPos);
    visitPosition("ThPrev_Win", record.ThPrevWinPos);
    visitPosition("MainControl_Win", record.MainControlWinPos);
    visit(section, "Pal_Win_Size_H", record.PalWinSizeH);
    visit(section, "Pal_Win_Size_W", record.PalWinSizeW);
    visit(section, "Option_Show_Grid", record.OptionShowGrid);
    visit(section, "Option_Show_ExpArea", record.OptionShowExpArea);
    visit(section, "Option_Show_Heights", record.OptionShowHeights);
    visit(section, "Option_Show_Segments", record.OptionShowSegments);
    visit(section, "Option_Brightness", record.OptionBrightness);
    visit(section, "Option_Theater_List_Index", record.OptionTheaterListIndex);
    visit(section, "Grid_Size", record.GridSize);
    // Twice, as it always was; the second changes nothing.
    visit(section, "Tile_Size", record.TileSize);
    visit(section, "Tile_Size", record.TileSize);
    visit(section, "Use_Single_Height_Color", record.UseSingleHeightColor);
}

template <typename Record, typename Visit>
void VisitBinSettings(Record& record, Visit visit) {
    visit("BIN_SETT", "Auto_L2", record.AutoL2);
    visit("BIN_SETT", "Def_Insert_After", record.DefInsertAfter);
    visit("BIN_SETT", "M_Tile", record.MTile);
    visit("BIN_SETT", "L_Tile", record.LTile);
    visit("BIN_SETT", "T_Tile", record.TTile);
}

// Rows count from 1.
template <typename Entry, typename Visit>
void VisitHeightColor(size_t row, Entry& entry, Visit visit) {
    const std::string number = std::to_string(row);
    visit("HEIGHT_COL_LIST", "ListCol" + number, entry.Color);
    visit("HEIGHT_COL_LIST", "ListMax" + number, entry.Max);
    visit("HEIGHT_COL_LIST", "ListMin" + number, entry.Min);
}

template <typename Record, typename Visit>
void VisitAreasAndPaths(Record& record, Visit visit) {
    visit("LAST_SETT", "VX_Master_Paths_Areas", record.VXMasterPathsAreas);
    visit("LAST_SETT", "VX_Show_Areas", record.VXShowAreas);
    visit("LAST_SETT", "VX_Show_Paths", record.VXShowPaths);
    visit("LAST_SETT", "VX_Areas_Filled", record.VXAreasFilled);
    visit("COLORS", "VXPaths_River_Color", record.VXPathsRiverColor);
    visit("COLORS", "VXPaths_Road_Color", record.VXPathsRoadColor);
    visit("COLORS", "VXPaths_Rail_Color", record.VXPathsRailColor);
    visit("COLORS", "VXPaths_Bridge_Color", record.VXPathsBridgeColor);
    visit("COLORS", "VXAreas_Water_Color", record.VXAreasWaterColor);
    visit("COLORS", "VXAreas_Forest_Color", record.VXAreasForestColor);
}

} // namespace vardenix
