#include "app/Selecting.h"

#include "platform/windows/RunTimeBarrier.h"
#include "workspace/GridShapes.h"
#include "workspace/SelectTool.h"
#include "workspace/windows/FrmVXMap.h"
#include "workspace/windows/HeightsQuestion.h"

#include <QApplication>

namespace vardenix {

namespace {

// A letter for each field that comes along, as Desk.ini has them.
constexpr std::array<std::pair<char, bool ClipFields::*>, 5> FieldLetters{
    {{'T', &ClipFields::Tile},
     {'E', &ClipFields::Elevation},
     {'P', &ClipFields::Palette},
     {'1', &ClipFields::X1},
     {'2', &ClipFields::X2}}};

} // namespace

Selecting::Selecting(Workspace& workspace, Land& land)
    : workspace_(workspace), land_(land) {
    workspace.Join(*this);
}

void Selecting::WindowsMade() {
    const Desk desk = workspace_.Memory().Read();
    HandState& hand = workspace_.Interaction().Hand;
    if (desk.ClipFields)
        for (const auto& [letter, field] : FieldLetters)
            hand.Fields.*field = desk.ClipFields->find(letter) != std::string::npos;
    hand.EdgeInside = desk.EdgeInside.value_or(false);
    OnSignal(&workspace_.Map(), &FrmVXMap::ToolsShown, &workspace_.Map(),
             [this] { FollowTools(); });
}

void Selecting::StorePlaces() {
    const HandState& hand = workspace_.Interaction().Hand;
    std::string fields;
    for (const auto& [letter, field] : FieldLetters)
        if (hand.Fields.*field)
            fields += letter;
    workspace_.Memory().Change([&](Desk& desk) {
        desk.ClipFields = fields;
        desk.EdgeInside = hand.EdgeInside;
    });
}

void Selecting::All() {
    const int32_t width = workspace_.State().Terrain.MapWidth;
    Select(workspace_.Interaction(), SelectedBox({0, 0, width - 1, width - 1}, width),
           workspace_);
}

void Selecting::None() { Select(workspace_.Interaction(), {}, workspace_); }

void Selecting::Invert() {
    MapInteraction& interaction = workspace_.Interaction();
    Select(interaction,
           Inverted(interaction.Hand.Selected, workspace_.State().Terrain.MapWidth),
           workspace_);
}

void Selecting::Hits() {
    Select(workspace_.Interaction(),
           SelectedHits(workspace_.State().Search.Results,
                        workspace_.State().Terrain.MapWidth),
           workspace_);
}

void Selecting::BetweenHeights() {
    const auto range = AskForHeights(QApplication::activeWindow());
    if (!range)
        return;
    const Terrain& terrain = workspace_.State().Terrain;
    const auto posts = terrain.LxArr.Values();
    Select(workspace_.Interaction(),
           SelectedWhere(terrain.MapWidth,
                         [&](int32_t serial) {
                             const int16_t feet =
                                 posts[static_cast<size_t>(serial) - 1].Elevation;
                             return feet >= range->Low && feet <= range->High;
                         }),
           workspace_);
}

template <typename SortOf>
void Selecting::Connected(SortOf sortOf) {
    const Terrain& terrain = workspace_.State().Terrain;
    const int32_t width = terrain.MapWidth;
    const int32_t serial = workspace_.Interaction().PopupSerial;
    const auto posts = terrain.LxArr.Values();
    const auto sortAt = [&](int32_t x, int32_t y) {
        return sortOf(posts[static_cast<size_t>(y) * static_cast<size_t>(width) +
                            static_cast<size_t>(x)]
                          .TileOffset);
    };
    const PostPlace start{(serial - 1) % width, (serial - 1) / width};
    const int32_t wanted = sortAt(start.X, start.Y);
    Select(workspace_.Interaction(),
           Selection(
               FilledSpans({0, 0, width - 1, width - 1}, start,
                           [&](int32_t x, int32_t y) { return sortAt(x, y) == wanted; })),
           workspace_);
}

void Selecting::ConnectedTile() {
    Connected([](int32_t tile) { return tile; });
}

void Selecting::ConnectedKind() {
    Connected([&lookup = workspace_.State().Catalogue.Lookup](int32_t tile) {
        return KindOfTile(lookup, tile);
    });
}

void Selecting::TogglePainting(Painting what) {
    MapInteraction& interaction = workspace_.Interaction();
    HandState& hand = interaction.Hand;
    const bool back = hand.Paints == what;
    if (hand.Paints == Painting::Ground)
        hand.GroundTool = static_cast<int16_t>(interaction.ToolBeforePick);
    else if (hand.Paints == Painting::Tile)
        hand.TileTool = static_cast<int16_t>(interaction.ToolBeforePick);
    hand.Paints = back ? Painting::Tile : what;
    const auto paints = [](MapTool tool) {
        return tool == MapTool::Brush || tool == MapTool::Rectangle ||
               tool == MapTool::Fill;
    };
    MapTool tool = interaction.Tool;
    if (hand.Paints == Painting::Ground)
        tool = static_cast<MapTool>(hand.GroundTool);
    else if (back && what == Painting::Ground)
        tool = static_cast<MapTool>(hand.TileTool);
    workspace_.Map().ChooseTool(paints(tool) ? tool : MapTool::Brush);
}

void Selecting::EraseToPost() {
    MapInteraction& interaction = workspace_.Interaction();
    interaction.Hand.EraserTile =
        workspace_.State().Terrain.LxArr(interaction.PopupSerial).TileOffset;
    workspace_.Map().ChooseTool(MapTool::Eraser);
}

void Selecting::FollowTools() {
    HandState& hand = workspace_.Interaction().Hand;
    if (hand.Like == like_)
        return;
    like_ = hand.Like;
    const TileLookup& lookup = workspace_.State().Catalogue.Lookup;
    if (like_ == FillLike::Tile)
        hand.SortOf = nullptr;
    else if (like_ == FillLike::Kind)
        hand.SortOf = [&lookup](int32_t tile) { return KindOfTile(lookup, tile); };
    else
        hand.SortOf = [this](int32_t tile) { return land_.GroundOfTile(tile); };
}

} // namespace vardenix
