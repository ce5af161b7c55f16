#include "workspace/windows/Actions.h"

#include "platform/windows/RunTimeBarrier.h"

#include <QAbstractButton>
#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QShortcut>

#include <algorithm>
#include <array>

namespace vardenix {

namespace {

using Kind = Action::Kind;

constexpr auto Table = std::to_array<Action>({
    {Kind::TwinEntry, "mnuSave", "&Save", "", "Over the files that were opened",
     "CmdSaveTheater"},
    {Kind::MenuEntry, "mnuSaveAs", "Save &as...", "Ctrl+Shift+S",
     "Under a name that you are asked for"},
    {Kind::TwinEntry, "mnuLoadHeights", "Load &heights...", "",
     "A file of the finest elevations, L0 or ELV", "cmdLoadL0Elv"},
    {Kind::MenuEntry, "mnuOpenTheater", "&Open another theater...", "Ctrl+O",
     "Leaves this theater, and starts the program anew"},
    {Kind::MenuEntry, "mnyExit", "E&xit", "Ctrl+Q", "Leave the program"},
    {Kind::TwinEntry, "mnuUndo", "&Undo", "", "", "cmdUndo"},
    {Kind::TwinEntry, "mnuRedo", "&Redo", "", "", "cmdRedo"},
    {Kind::ToolEntry, "mnuBrush", "&Brush", "", "", "cmdBrush"},
    {Kind::ToolEntry, "mnuRectangle", "Re&ctangle", "", "", "cmdRectangle"},
    {Kind::ToolEntry, "mnuFill", "&Fill", "", "", "cmdFill"},
    {Kind::ToolEntry, "mnuPick", "&Pick a tile", "", "", "cmdPick"},
    {Kind::TwinEntry, "mnuShowAreas", "&Areas and paths", "", "", "chkShowAreas"},
    {Kind::TwinEntry, "mnuShowGrid", "&Grid", "", "", "chkShowGrid"},
    {Kind::TwinEntry, "mnuShowExport", "&Export area", "", "", "chkShowExport"},
    {Kind::TwinEntry, "mnuShowHeights", "&Heights", "", "", "chkShowHeights"},
    {Kind::TwinEntry, "mnuShowSegments", "&Segments", "", "", "chkShowSegments"},
    {Kind::TwinEntry, "mnuApplyNight", "&Night colors", "", "", "chkApplyNight"},
    {Kind::TwinEntry, "mnuApplyMAP", "&MAP color", "", "", "chkApplyMAP"},
    {Kind::TwinEntry, "mnuWinMain", "Ma&in window", "", "", "chkShowMain"},
    {Kind::TwinEntry, "mnuWinTheater", "Theater &preview", "", "", "chkShowTheater"},
    {Kind::TwinEntry, "mnuWinResults", "Search &results", "", "", "chkShowResults"},
    {Kind::TwinEntry, "mnuWinTile", "&Tile palette", "", "", "chkShowTile"},
    {Kind::TwinEntry, "mnuWinFeatures", "&Features", "", "", "chkShowFeatures"},
    {Kind::MenuEntry, "mnuOneWindow", "&One window", "F11",
     "All windows of the workspace in one, or each on its own"},
    {Kind::MenuEntry, "mnuBringAll", "&Bring all to front", "F12",
     "Every window of the program comes over those of others"},
    {Kind::MenuEntry, "mnumkMEA", "Make MEA F&ile", "",
     "Highest elevation of every 8 by 8 posts"},
    {Kind::MenuEntry, "mnumkTHR", "Ma&ke THR File", "",
     "Does nothing: there is no such file to make"},
    {Kind::MenuEntry, "mnumktc", "Make t&c File", "", "How often each tile is used"},
    {Kind::MenuEntry, "mnumktm", "Make t&m File", "", "The tile number of every post"},
    {Kind::MenuEntry, "mnusearchTiles", "&Search Tiles...", "Ctrl+F", ""},
    {Kind::MenuEntry, "mnuRebuildTheater", "Re&build Entire Theater...", "", ""},
    {Kind::MenuEntry, "mnuThStats", "Theater Sta&tistics...", "", ""},
    {Kind::MenuEntry, "mnuSaveScreeshot", "Sa&ve Map Screenshot...", "Ctrl+P", ""},
    {Kind::MenuEntry, "mnuOnlineHelp", "O&nline Help", "F1", ""},
    {Kind::MenuEntry, "mnuAbout", "&About...", "", ""},

    {Kind::Button, "CmdSaveTheater", "Save", "Ctrl+S",
     "Use shift for save with a different name."},
    {Kind::Button, "CmdImport", "Import", "Ctrl+I",
     "Stamp a region from a file. It cannot be undone: create a restore point first."},
    {Kind::Button, "CmdExport", "Export", "Ctrl+E",
     "Use SHIFT to export TDFs (Features)."},
    {Kind::Button, "cmdUndo", "Undo", "Ctrl+Z", "Undo (not for importing)"},
    {Kind::Button, "cmdRedo", "Redo", "Ctrl+Y Ctrl+Shift+Z", "Redo (not for importing)"},
    {Kind::Button, "cmdLoadL0Elv", "Load a L0 or ELV file", "Ctrl+L", ""},
    {Kind::Button, "chkL0ELV", "L0/ELV Edit mode", "F2", ""},
    {Kind::Button, "chkShowAreas", "Show Areas/Paths", "Ctrl+1", ""},
    {Kind::Button, "chkShowGrid", "ShowGrid", "Ctrl+2", ""},
    {Kind::Button, "chkShowExport", "Show Export Area", "Ctrl+3", ""},
    {Kind::Button, "chkShowHeights", "Show Heights", "Ctrl+4", ""},
    {Kind::Button, "chkShowSegments", "Show Segments", "Ctrl+5", ""},
    {Kind::Button, "chkApplyNight", "Apply Night Colors", "Ctrl+6", ""},
    {Kind::Button, "chkApplyMAP", "Apply MAP Color", "Ctrl+7", ""},
    {Kind::Button, "chkShowMain", "Show Main Window", "F5", ""},
    {Kind::Button, "chkShowTheater", "Show Theater Preview", "F6", ""},
    {Kind::Button, "chkShowResults", "Show Results window", "F7", ""},
    {Kind::Button, "chkShowTile", "Show Tile Palette", "F8", ""},
    {Kind::Button, "chkShowFeatures", "Show Features Window", "F9", ""},
    {Kind::Button, "cmdplus", "Nearer", "", "Zoom in: fewer posts in a cell"},
    {Kind::Button, "cmdminus", "Farther", "", "Zoom out: more posts in a cell"},
    {Kind::Button, "cmdZoomin", "Fewer grid cells",
     "Ctrl++ Ctrl+=", "One grid cell fewer a side"},
    {Kind::Button, "cmdZoomOut", "More grid cells", "Ctrl+-",
     "One grid cell more a side"},
    {Kind::Button, "cmdGoXY", "Go to the position", "",
     "Show the post at X, Y in the map's lower left corner"},
    {Kind::Button, "cmdTransMinus", "MAP color fainter", "", "Fainter"},
    {Kind::Button, "cmdTransPlus", "MAP color stronger", "", "Stronger"},
    {Kind::Button, "cmdBMinus", "Darker", "", "Darker"},
    {Kind::Button, "cmdBPlus", "Brighter", "", "Brighter"},
    {Kind::Button, "cmdBrightReset", "Usual brightness", "", "Back to 0"},
    {Kind::Button, "cmdAreasOptions", "Areas and paths options", "",
     "What is shown of areas and paths, and their colors"},
    {Kind::Button, "cmdFont", "Font of the heights", "", "Font of the heights"},
    {Kind::Button, "CmdGridCol", "Color of the grid", "", "Color of the grid"},
    {Kind::Button, "CmdExpAreaCol", "Color of the export area", "",
     "Color of the export area"},
    {Kind::Button, "CmdHeightCol", "Colors of the heights", "", "Colors of the heights"},
    {Kind::Button, "CmdSegCol", "Color of the segments", "", "Color of the segments"},

    {Kind::PopupEntry, "mnuTileProperties", "&Tile Properties...", "", ""},
    {Kind::PopupEntry, "mnuLocInBIN", "Locate in &BIN Editor", "", ""},
    {Kind::PopupEntry, "mnuLocColMAP", "Locate Color in &MAP Editor", "", ""},

    {Kind::Key, "LabelX", "Go to the position, in its boxes", "Return", ""},
    {Kind::Key, "PicShow", "Move the map by one post", "Left Right Up Down", ""},
    {Kind::Key, "PicShow", "Move the map up or down by a page", "PgUp PgDown", ""},
    {Kind::Key, "PicShow", "Move the map left or right by a page", "Home End", ""},
    {Kind::Key, "PicShow",
     "Stop painting the map, or waiting for a corner; in the palette, choose no tile",
     "Esc", ""},
    {Kind::Key, "cmdBrush", "Brush", "B", "Paints every post that the pointer crosses"},
    {Kind::Key, "cmdRectangle", "Rectangle", "R",
     "Press at one corner, let go at the opposite one"},
    {Kind::Key, "cmdFill", "Fill", "F",
     "Fills the connected posts of the same tile, as far as the segments in view reach; "
     "with Shift as far as the tile does"},
    {Kind::Key, "cmdPick", "Pick a tile", "I",
     "Takes the tile of a post; Alt and a click do so with any tool"},
    {Kind::Key, "spnBrushSize", "Smaller brush, wider brush", "[ ]",
     "Posts along a side of the brush"},
    {Kind::Key, "PicShow", "Zoom in or out round the pointer", "+ = -", ""},
    {Kind::Key, "PicShow", "While held: the left button moves the map", "Space", ""},
    {Kind::Key, "PicShow", "Context menu of the post under the cursor", "Menu Shift+F10",
     ""},
});

QList<QKeySequence> KeysOf(const Action& action) {
    QList<QKeySequence> keys;
    for (const QString& key : QString(action.Keys).split(' ', Qt::SkipEmptyParts))
        keys.append(QKeySequence(key, QKeySequence::PortableText));
    return keys;
}

void Apply(const Action& action, QAction& entry) {
    entry.setText(action.Caption);
    entry.setToolTip(action.ToolTip);
    entry.setShortcuts(KeysOf(action));
    entry.setShortcutContext(Qt::ApplicationShortcut);
}

const Action* ButtonRow(const char* control) {
    for (const Action& action : Table)
        if (action.What == Kind::Button &&
            QLatin1String(action.Name) == QLatin1String(control))
            return &action;
    return nullptr;
}

// A tip that says the key as well; the tips below are known by heart as they are.
QString TipOf(const Action& action) {
    static constexpr auto known =
        std::to_array<const char*>({"CmdSaveTheater", "CmdExport", "cmdUndo", "cmdRedo",
                                    "cmdLoadL0Elv", "chkL0ELV", "chkApplyMAP"});
    QString tip = action.ToolTip;
    const bool isKnown =
        std::any_of(known.begin(), known.end(), [&action](const char* name) {
            return QLatin1String(action.Name) == QLatin1String(name);
        });
    const QList<QKeySequence> keys = KeysOf(action);
    if (isKnown || keys.isEmpty())
        return tip;
    const QString key = keys.first().toString(QKeySequence::NativeText);
    return tip.isEmpty() ? key : tip + " (" + key + ")";
}

void ApplyTwin(const Action& action, QMainWindow& panel) {
    auto* entry = panel.findChild<QAction*>(action.Name);
    auto* control = panel.findChild<QAbstractButton*>(action.Control);
    entry->setCheckable(control->isCheckable());
    entry->setToolTip(action.ToolTip);
    // Told only: the control itself listens to its keys, and two listeners are none.
    const Action* row = ButtonRow(action.Control);
    const QKeySequence key = row == nullptr ? QKeySequence() : KeysOf(*row).value(0);
    entry->setText(action.Caption + ("\t" + key.toString(QKeySequence::NativeText)));
    OnSignal(entry, &QAction::triggered, control, [control] { control->click(); });
    for (QMenu* menu : panel.findChildren<QMenu*>())
        if (menu->actions().contains(entry))
            OnSignal(menu, &QMenu::aboutToShow, entry, [entry, control] {
                entry->setEnabled(control->isEnabled());
                entry->setChecked(control->isChecked());
            });
}

// Their keys are letters, which belong to whoever writes in a box of another window.
void ApplyTool(const Action& action, QMainWindow& panel) {
    auto* entry = panel.findChild<QAction*>(action.Name);
    const QString key = KeyOf(action.Control).toString(QKeySequence::NativeText);
    entry->setText(action.Caption + ("\t" + key));
    entry->setToolTip(KeyTip(action.Control));
    entry->setCheckable(true);
}

void Apply(const Action& action, QMainWindow& panel, QAbstractButton& button) {
    button.setToolTip(TipOf(action));
    button.setAccessibleName(action.Caption);
    for (const QKeySequence& key : KeysOf(action)) {
        auto* shortcut = new QShortcut(key, &panel);
        shortcut->setContext(Qt::ApplicationShortcut);
        OnSignal(shortcut, &QShortcut::activated, &button, [&button] { button.click(); });
    }
}

} // namespace

std::span<const Action> PanelActions() { return Table; }

void ApplyActions(QMainWindow& panel) {
    for (const Action& action : Table) {
        if (action.What == Kind::MenuEntry)
            Apply(action, *panel.findChild<QAction*>(action.Name));
        else if (action.What == Kind::Button)
            Apply(action, panel, *panel.findChild<QAbstractButton*>(action.Name));
        else if (action.What == Kind::TwinEntry)
            ApplyTwin(action, panel);
        else if (action.What == Kind::ToolEntry)
            ApplyTool(action, panel);
    }
}

QString CaptionOf(const char* name) {
    for (const Action& action : Table)
        if (action.What == Kind::PopupEntry &&
            QLatin1String(action.Name) == QLatin1String(name))
            return action.Caption;
    return {};
}

namespace {

const Action* KeyRow(const char* name) {
    for (const Action& action : Table)
        if (action.What == Kind::Key && QLatin1String(action.Name) == QLatin1String(name))
            return &action;
    return nullptr;
}

} // namespace

QKeySequence KeyOf(const char* name) {
    const Action* row = KeyRow(name);
    return row == nullptr ? QKeySequence() : KeysOf(*row).value(0);
}

QString CaptionOfKey(const char* name) {
    const Action* row = KeyRow(name);
    return row == nullptr ? QString() : QString(row->Caption);
}

QString KeyTip(const char* name) {
    const Action* row = KeyRow(name);
    if (row == nullptr)
        return {};
    const QString keys = QString(row->Keys).replace(' ', ", ");
    return QString("%1 (%2)\n%3").arg(row->Caption, keys, row->ToolTip);
}

QString ShortcutList() {
    QString list = "| Keys | What they do |\n|---|---|\n";
    for (const Action& action : Table) {
        if (*action.Keys == '\0')
            continue;
        const QString keys = QString(action.Keys).replace(' ', ", ");
        list += "| " + keys + " | " + QString(action.Caption).remove('&').remove("...") +
                " |\n";
    }
    return list;
}

} // namespace vardenix
