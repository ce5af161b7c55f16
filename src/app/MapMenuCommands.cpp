// The context menu of the map, over the post of the last right click; and the keys that
// the map and other controls look after by themselves.

#include "app/Commands.h"
#include "app/Subsystems.h"
#include "workspace/windows/FrmVXMap.h"

#include <array>

namespace vardenix {

namespace {

bool OnPost(const Subsystems& all) { return all.Workspace.Interaction().PopupSerial > 0; }

const TerrainPost& Post(const Subsystems& all) {
    return all.Workspace.State().Terrain.LxArr(all.Workspace.Interaction().PopupSerial);
}

constexpr auto MapMenuRows = std::to_array<Command>({
    {.Id = "mnuTileProperties",
     .Text = "&Tile Properties...",
     .InMapMenu = true,
     .Can = OnPost,
     .Do = [](Subsystems& all) { all.Workspace.Map().mnuTileProperties(); }},
    {.Id = "mnuLocInBIN",
     .Text = "Locate in &BIN Editor",
     .InMapMenu = true,
     .Can = OnPost,
     .Do = [](Subsystems& all) { all.BinEditor.Locate(Post(all).TileOffset); }},
    {.Id = "mnuLocColMAP",
     .Text = "Locate Color in &MAP Editor",
     .InMapMenu = true,
     .Can = [](const Subsystems& all) { return OnPost(all) && all.MapEditor.CanOpen(); },
     .Do =
         [](Subsystems& all) {
             all.MapEditor.Locate(all.Workspace.Interaction().PopupSerial);
         }},
    {.Id = "mnuFindTile",
     .Text = "&Find this Tile",
     .InMapMenu = true,
     .Can = OnPost,
     .Do = [](Subsystems& all) { all.Search.FindTile(Post(all).TileOffset); }},
    {.Id = "mnuReplaceTile",
     .Text = "&Replace this Tile...",
     .InMapMenu = true,
     .Can = OnPost,
     .Do =
         [](Subsystems& all) { all.Search.ShowReplace(int32_t{Post(all).TileOffset}); }},
    {.Id = "mnuSelectTile",
     .Text = "Select connected posts of this ti&le",
     .InMapMenu = true,
     .Can = OnPost,
     .Do = [](Subsystems& all) { all.Selecting.ConnectedTile(); }},
    {.Id = "mnuSelectKind",
     .Text = "Select connected posts of this &kind",
     .InMapMenu = true,
     .Can = OnPost,
     .Do = [](Subsystems& all) { all.Selecting.ConnectedKind(); }},
    {.Id = "mnuEraseTo",
     .Text = "&Eraser leaves this tile",
     .InMapMenu = true,
     .Can = OnPost,
     .Do = [](Subsystems& all) { all.Selecting.EraseToPost(); }},
});

constexpr auto Keys = std::to_array<ControlKey>({
    {"LabelX", "Go to the position, in its boxes", "Return"},
    {"PicShow", "Move the map by one post", "Left Right Up Down"},
    {"PicShow", "Move the map up or down by a page", "PgUp PgDown"},
    {"PicShow", "Move the map left or right by a page", "Home End"},
    {"PicShow",
     "Stop painting the map, or waiting for a corner; in the palette, choose no tile",
     "Esc"},
    {"spnBrushSize", "Smaller brush, wider brush", "[ ]",
     "Posts along a side of the brush"},
    {"PicShow", "Zoom in or out round the pointer", "+ = -"},
    {"PicShow", "While held: the left button moves the map", "Space"},
    {"PicShow", "Context menu of the post under the cursor", "Menu Shift+F10"},
    {"menus", "Menus File, Tools and Help, beside Alt+L, Alt+O and Alt+P",
     "Alt+F Alt+T Alt+H"},
});

} // namespace

std::span<const Command> MapMenuCommands() { return MapMenuRows; }

std::span<const ControlKey> ControlKeys() { return Keys; }

} // namespace vardenix
