#pragma once

#include "platform/Dialogs.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace vardenix {

// How the features of one kind are drawn.
struct FeatureStyle {
    uint32_t Color = 0;
    int32_t Size = 1;
};

// A row of the height colour table; both bounds belong to it.
struct HeightColorEntry {
    uint32_t Color = 0;
    int32_t Min = 0; // feet
    int32_t Max = 0; // feet
};

struct WindowPosition {
    int32_t Top = 0;  // twips
    int32_t Left = 0; // twips
};

// Whether an automatic version check is wanted.
enum AutoCheck : int16_t { AutoCheckOff = 0, AutoCheckOn = 1, AutoCheckUndecided = 2 };

// Every setting that outlives a run, with the values of a first start. Colours are
// 0x00BBGGRR. Values come from the file as they stand there: whoever uses one brings it
// into the range of its control. Texts are bytes as the file holds them.
struct Configuration {
    std::string OnlineHelp = "http://www.vardenix.example/manuals/vardenix/home";
    std::string VersionCheck = "http://www.vardenix.example/Vardenix/Version/Version.php";
    std::string P; // identifies the installation; only carried from run to run

    // The last paths opened by hand.
    std::string L2File;
    std::string BinFile;
    std::string MapFile;
    std::string DdsPath;

    FeatureStyle Airports{0x808000};
    FeatureStyle City{0x408080};
    FeatureStyle Coast{0xC08000};
    FeatureStyle Labels{0x8000FF};
    FeatureStyle Rivers{0xFF00};
    FeatureStyle Roads{0x4000};
    FontChoice AirportsFont{.Name = "Arial"};
    FontChoice LabelsFont{.Name = "Arial"};
    FontChoice HeightsFont{.Name = "Arial"}; // its colour is not stored

    uint32_t GridColor = 0;
    uint32_t ExportedAreaColor = 0x7AEF65;
    uint32_t SegmentColor = 0x60F0E9;
    uint32_t HeightDefaultColor = 0xFF;
    uint32_t PreviewSeaColor = 0x720000;
    // Of the eight elevation classes, the lowest first.
    std::array<uint32_t, 8> PreviewLevelColors{0xD3F7FF, 0xABF2FF, 0x99E0FF, 0x86CDED,
                                               0x75BCDC, 0x5FA6C6, 0x488FAF, 0x206787};
    uint32_t TileAreasColor = 0xD8E756;
    uint32_t TileAreasSelectedColor = 0x5157D2;
    uint32_t TilePathsColor = 0x5BF46F;
    uint32_t TilePathsSelectedColor = 0x4D61F0;
    uint32_t VXPathsRiverColor = 0xE2776B;
    uint32_t VXPathsRoadColor = 0x49DEDB;
    uint32_t VXPathsRailColor = 0x3E3E3E;
    uint32_t VXPathsBridgeColor = 0x5BF46F;
    uint32_t VXAreasWaterColor = 0xF2EA82;
    uint32_t VXAreasForestColor = 0x209B45;

    int16_t Zoom = 1;
    int32_t X = 0;
    int32_t Y = 0;
    int16_t AutoCheckForUpdates = AutoCheckUndecided;

    bool MainWinVis = false;      // FrmVXMap
    bool SearchResWinVis = false; // frmVXSearchResults
    bool FeatWinVis = false;      // FrmVXFeatures
    bool PalWinVis = false;       // FrmVXTilePal
    bool ThPrevWinVis = false;    // FrmVXTheaterPreview
    WindowPosition MainWinPos;
    WindowPosition SearchResWinPos;
    WindowPosition FeatWinPos;
    WindowPosition PalWinPos;
    WindowPosition ThPrevWinPos;
    WindowPosition MainControlWinPos; // FrmVXMain
    int32_t PalWinSizeH = 6795;       // twips
    int32_t PalWinSizeW = 9270;       // twips

    bool OptionShowGrid = false;
    bool OptionShowExpArea = false;
    bool OptionShowHeights = false;
    bool OptionShowSegments = false;
    int32_t OptionBrightness = 0;
    int16_t OptionTheaterListIndex = 0; // 0: paths given by hand
    int16_t GridSize = 5;
    int16_t TileSize = 3;
    bool UseSingleHeightColor = false;
    bool VXMasterPathsAreas = false;
    bool VXShowAreas = true;
    bool VXShowPaths = true;
    bool VXAreasFilled = false;

    bool AutoL2 = true;
    bool DefInsertAfter = false;
    int16_t MTile = 64; // pixels
    int16_t LTile = 32;
    int16_t TTile = 16;

    // Row N of the table is element N - 1; its length is ListNumber of the file.
    std::vector<HeightColorEntry> HeightColorList{
        {0xD3F7FF, 0, 50},      {0xABF2FF, 51, 100},     {0x99E0FF, 101, 500},
        {0x86CDED, 501, 1000},  {0x75BCDC, 1001, 1500},  {0x5FA6C6, 1501, 3000},
        {0x488FAF, 3001, 5000}, {0x206787, 5001, 999999}};
};

} // namespace vardenix
