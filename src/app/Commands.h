#pragma once

#include "app/WorkspacePart.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <optional>
#include <span>
#include <vector>

class QAbstractButton;
class QAction;
class QMenu;

namespace vardenix {

struct Subsystems;

// A row of the one table of commands. Menus, buttons, keys and tips, and the manual's
// list of keys, are made from it; a new command is a row in the file of its family, and
// what that row does. Rows stand in the order of their menus.
struct Command {
    // Of its action; a menu's entry is known by it.
    const char* Id;
    // As menus show it, with its mnemonic.
    const char* Text = "";
    // What the button and the manual call it, where Text is too short for that.
    const char* Name = "";
    // As Qt writes them, in English; several are parted by a blank. They hold in every
    // window of the program, while the panel (or an editor that has the command) is seen.
    const char* Keys = "";
    // Keys that only the map listens to, in the same way: letters and the like.
    const char* MapKeys = "";
    const char* Tip = "";
    // For the button, where that says something else.
    const char* ButtonTip = nullptr;
    // Tips end with the key, but for those that are known by heart, or that the panel
    // itself changes.
    bool KeyInTip = true;

    // Where it can be called. The name of a menu of the panel; `Line`: parted from the
    // entry before.
    const char* Menu = "";
    bool Line = false;
    // The name of a button of the panel: one of its form, or else a new one below.
    const char* Button = "";
    // The name of a button on the map's upper edge; the picture that this and menus show.
    const char* MapButton = "";
    const char* Icon = "";
    bool InMapMenu = false; // the map's context menu
    bool InEditors = false; // a button in the BIN editor and in the MAP editor

    // Without `Can` always; without `Chosen` there is nothing to tick.
    bool (*Can)(const Subsystems&) = nullptr;
    bool (*Chosen)(const Subsystems&) = nullptr;
    // Without it the entry is there, and never enabled.
    void (*Do)(Subsystems&) = nullptr;
    // In place of `Do`: a menu of its own, filled whenever it comes up.
    void (*Fill)(Subsystems&, QMenu&) = nullptr;
    // Also while long work has locked the panel.
    bool WhileLocked = false;
};

// A key that a control looks after by itself: for the manual, and for the control's tip.
struct ControlKey {
    const char* Control;
    const char* Name;
    const char* Keys;
    const char* Tip = "";
};

// The table, by family.
std::span<const Command> FileCommands();
std::span<const Command> EditCommands();
std::span<const Command> SelectionCommands();
std::span<const Command> ViewCommands();
std::span<const Command> ToolCommands();
std::span<const Command> HelpCommands();
std::span<const Command> MapMenuCommands();
std::span<const ControlKey> ControlKeys();

std::vector<Command> AllCommands();

// The manual's list of keys, a Markdown table.
QString ShortcutList();

// The table at work: an action for each of its rows, which whatever calls it follows.
class Commands : public WorkspacePart {
public:
    // Borrowed.
    explicit Commands(Subsystems& subsystems, std::vector<Command> table = AllCommands());
    ~Commands() override;

    // Enabled and ticked as the rows say now.
    void Refresh();

private:
    struct Made {
        Command Row;
        QPointer<QAction> Action;
        std::vector<QPointer<QAbstractButton>> Buttons;
    };

    void WindowsMade() override;
    void EditorMade(QWidget& editor) override;
    void CommandsChanged() override { Refresh(); }

    void MakeAction(Made& made);
    void FillMenus(Made& made);
    void MakeSubmenu(const Command& row, QMenu& menu);
    void DressPanel(Made& made);
    void DressMap(Made& made);
    void DressEditor(QWidget& editor);
    void DressControls();
    void Join(Made& made, QAbstractButton& button);
    void ShowIcons();
    void Do(const Command& row);
    bool Can(const Command& row) const;

    Subsystems& subsystems_;
    std::vector<Made> commands_;
    std::vector<QPointer<QWidget>> editors_;
    bool made_ = false; // the actions
    std::optional<bool> darkIcons_;
    QObject here_; // hears of actions and menus, which may outlive the table
};

} // namespace vardenix
