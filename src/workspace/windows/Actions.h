#pragma once

#include <QKeySequence>
#include <QString>

#include <span>

class QMainWindow;

namespace vardenix {

// What a user can ask for by menu or key. The names are those of the controls.
struct Action {
    enum class Kind {
        MenuEntry,  // of the control panel
        TwinEntry,  // of its menus: presses the control that it stands for
        ToolEntry,  // of its menus: a tool of the map
        PopupEntry, // of the map's context menu
        Button,     // of the control panel
        Key         // looked after by the window itself
    };
    Kind What;
    const char* Name;
    const char* Caption;
    const char* Keys;    // as Qt writes them, in English; several are parted by a blank
    const char* ToolTip; // may be empty
    // Of a TwinEntry and a ToolEntry, whose keys are those of that control.
    const char* Control = "";
};

// In the order of the menus and of the panel.
std::span<const Action> PanelActions();

// Gives the menu entries of `panel` their captions and keys, its buttons their tool tips,
// accessible names and keys. The keys hold in every window of the program while the panel
// can be used. Twin entries press their controls, and look as these do whenever their
// menu comes up; tool entries say keys that the map listens to.
void ApplyActions(QMainWindow& panel);

// The caption of a row of the kind PopupEntry, by its name.
QString CaptionOf(const char* name);

// The first key of a row of the kind Key, by its name.
QKeySequence KeyOf(const char* name);
// Its caption, and its tool tip behind caption and keys.
QString CaptionOfKey(const char* name);
QString KeyTip(const char* name);

// The manual's list of keys, a Markdown table.
QString ShortcutList();

} // namespace vardenix
