#include "app/Commands.h"

#include "app/Subsystems.h"
#include "platform/windows/InkIcons.h"
#include "platform/windows/OwnKeys.h"
#include "platform/windows/RunTimeBarrier.h"
#include "platform/windows/Theme.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"
#include "workspace/windows/MapToolStrip.h"

#include <QAction>
#include <QBoxLayout>
#include <QMainWindow>
#include <QMenu>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalBlocker>
#include <QToolBar>

namespace vardenix {

namespace {

bool Says(const char* text) { return *text != '\0'; }

QList<QKeySequence> KeysOf(const char* told) {
    QList<QKeySequence> keys;
    for (const QString& key : QString(told).split(' ', Qt::SkipEmptyParts))
        keys.append(QKeySequence(key, QKeySequence::PortableText));
    return keys;
}

QString FirstKey(const char* told) {
    return KeysOf(told).value(0).toString(QKeySequence::NativeText);
}

QString NameOf(const Command& row) {
    return Says(row.Name) ? QString(row.Name)
                          : QString(row.Text).remove('&').remove("...");
}

// "Fill (F)" and what it does below that.
QString TipWithName(const QString& name, const char* keys, const char* tip) {
    return QString("%1 (%2)\n%3").arg(name, QString(keys).replace(' ', ", "), tip);
}

QString ButtonTip(const Command& row) {
    if (Says(row.MapKeys))
        return TipWithName(NameOf(row), row.MapKeys, row.Tip);
    QString tip = row.ButtonTip == nullptr ? row.Tip : row.ButtonTip;
    if (!row.KeyInTip || !Says(row.Keys))
        return tip;
    return tip.isEmpty() ? FirstKey(row.Keys) : tip + " (" + FirstKey(row.Keys) + ")";
}

// An entry that a button stands for says its key in its own words, as do those whose key
// only the map listens to.
QString EntryText(const Command& row) {
    const bool told = Says(row.MapKeys) || Says(row.Button);
    const QString key = FirstKey(Says(row.MapKeys) ? row.MapKeys : row.Keys);
    return told && !key.isEmpty() ? QString(row.Text) + "\t" + key : QString(row.Text);
}

// Where the buttons of commands come that a window's form has no place for.
QToolBar& RowOfCommands(QWidget& window) {
    if (auto* row = window.findChild<QToolBar*>("commands"))
        return *row;
    auto* row = new QToolBar(&window);
    row->setObjectName("commands");
    row->setMovable(false);
    row->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    if (auto* main = qobject_cast<QMainWindow*>(&window))
        main->addToolBar(Qt::BottomToolBarArea, row);
    else if (auto* column = qobject_cast<QBoxLayout*>(window.layout()))
        column->addWidget(row);
    return *row;
}

QAbstractButton* NewButton(QWidget& window, const Command& row) {
    auto* button = new QPushButton(NameOf(row), &window);
    button->setObjectName(row.Button);
    RowOfCommands(window).addWidget(button);
    return button;
}

} // namespace

std::vector<Command> AllCommands() {
    std::vector<Command> all;
    for (const auto& family :
         {FileCommands(), EditCommands(), SelectionCommands(), ViewCommands(),
          ToolCommands(), HelpCommands(), MapMenuCommands()})
        all.insert(all.end(), family.begin(), family.end());
    return all;
}

QString ShortcutList() {
    QString list = "| Keys | What they do |\n|---|---|\n";
    const auto add = [&list](const char* keys, const QString& name) {
        if (Says(keys))
            list += "| " + QString(keys).replace(' ', ", ") + " | " + name + " |\n";
    };
    for (const Command& row : AllCommands())
        add(row.Keys, NameOf(row));
    for (const Command& row : AllCommands())
        add(row.MapKeys, NameOf(row));
    for (const ControlKey& row : ControlKeys())
        add(row.Keys, row.Name);
    return list;
}

Commands::Commands(Subsystems& subsystems, std::vector<Command> table)
    : subsystems_(subsystems) {
    for (const Command& row : table)
        commands_.push_back({row, nullptr, {}});
    subsystems.Workspace.Join(*this);
}

Commands::~Commands() = default;

void Commands::WindowsMade() {
    for (Made& made : commands_) {
        if (made.Row.Fill == nullptr)
            MakeAction(made);
        FillMenus(made);
        DressPanel(made);
        DressMap(made);
    }
    made_ = true;
    for (QWidget* editor : editors_)
        if (editor != nullptr)
            DressEditor(*editor);
    DressControls();
    FrmVXMap& map = subsystems_.Workspace.Map();
    QList<QMenu*> menus = subsystems_.Workspace.Panel().findChildren<QMenu*>();
    menus.append(&map.Popup());
    for (QMenu* menu : menus)
        OnSignal(menu, &QMenu::aboutToShow, &here_, [this] { Refresh(); });
    OnSignal(&map, &FrmVXMap::ToolsShown, &here_, [this] { Refresh(); });
    Refresh();
}

void Commands::MakeAction(Made& made) {
    const Command& row = made.Row;
    FrmVXMain& panel = subsystems_.Workspace.Panel();
    FrmVXMap& map = subsystems_.Workspace.Map();
    QWidget& owner = row.InMapMenu ? static_cast<QWidget&>(map) : panel;
    auto* action = new QAction(EntryText(row), &owner);
    action->setObjectName(row.Id);
    action->setToolTip(Says(row.MapKeys) ? ButtonTip(row) : QString(row.Tip));
    action->setCheckable(row.Chosen != nullptr);
    if (Says(row.Icon))
        action->setIcon(IconFor(row.Icon));
    action->setShortcuts(KeysOf(row.Keys));
    action->setShortcutContext(Qt::ApplicationShortcut);
    if (Says(row.Keys))
        panel.addAction(action);
    if (Says(row.MapKeys)) {
        SetOwnKeys(*action, KeysOf(row.MapKeys));
        map.addAction(action);
    }
    OnSignal(action, &QAction::triggered, &here_, [this, &row] { Do(row); });
    made.Action = action;
}

void Commands::FillMenus(Made& made) {
    const Command& row = made.Row;
    if (Says(row.Menu)) {
        auto* menu = subsystems_.Workspace.Panel().findChild<QMenu*>(row.Menu);
        if (row.Line)
            menu->addSeparator();
        if (row.Fill != nullptr)
            MakeSubmenu(row, *menu);
        else
            menu->addAction(made.Action);
    }
    if (row.InMapMenu)
        subsystems_.Workspace.Map().Popup().addAction(made.Action);
}

void Commands::MakeSubmenu(const Command& row, QMenu& menu) {
    QMenu* part = menu.addMenu(row.Text);
    part->setObjectName(row.Id);
    part->setToolTipsVisible(true);
    OnSignal(part, &QMenu::aboutToShow, &here_, [this, &row, part] {
        part->clear();
        row.Fill(subsystems_, *part);
    });
    OnSignal(&menu, &QMenu::aboutToShow, &here_,
             [this, &row, part] { part->setEnabled(Can(row)); });
}

void Commands::DressPanel(Made& made) {
    const Command& row = made.Row;
    if (!Says(row.Button))
        return;
    FrmVXMain& panel = subsystems_.Workspace.Panel();
    auto* button = panel.findChild<QAbstractButton*>(row.Button);
    Join(made, button != nullptr ? *button : *NewButton(panel, row));
}

void Commands::DressMap(Made& made) {
    if (!Says(made.Row.MapButton))
        return;
    QAbstractButton& button =
        subsystems_.Workspace.Map().Strip().AddTool(made.Row.MapButton);
    button.setIcon(IconFor(made.Row.Icon));
    Join(made, button);
}

// The first may come before the panel, to which the actions belong.
void Commands::EditorMade(QWidget& editor) {
    editors_.emplace_back(&editor);
    if (made_)
        DressEditor(editor);
}

void Commands::DressEditor(QWidget& editor) {
    for (Made& made : commands_)
        if (made.Row.InEditors)
            RowOfCommands(editor).addAction(made.Action);
}

void Commands::DressControls() {
    for (const ControlKey& row : ControlKeys())
        if (auto* control = subsystems_.Workspace.Map().findChild<QWidget*>(row.Control);
            control != nullptr && Says(row.Tip)) {
            control->setToolTip(TipWithName(row.Name, row.Keys, row.Tip));
            control->setAccessibleName(row.Name);
        }
}

void Commands::Join(Made& made, QAbstractButton& button) {
    if (const QString tip = ButtonTip(made.Row); !tip.isEmpty())
        button.setToolTip(tip);
    if (Says(made.Row.Name) || Says(made.Row.Text))
        button.setAccessibleName(NameOf(made.Row));
    QAction* action = made.Action;
    OnSignal(&button, &QAbstractButton::clicked, action, [action] { action->trigger(); });
    made.Buttons.emplace_back(&button);
}

// Keys come here also while the panel is locked, as do the menus of one window.
void Commands::Do(const Command& row) {
    const auto refresh = qScopeGuard([this] { Refresh(); });
    if (row.Do == nullptr ||
        (!row.WhileLocked && !subsystems_.Workspace.Panel().isEnabled()))
        return;
    // No command meets posts that the log does not know of.
    subsystems_.Workspace.Map().StopPending();
    row.Do(subsystems_);
}

void Commands::ShowIcons() {
    if (darkIcons_ == IsDark())
        return;
    darkIcons_ = IsDark();
    for (Made& made : commands_)
        if (made.Action != nullptr && Says(made.Row.Icon))
            made.Action->setIcon(IconFor(made.Row.Icon));
}

bool Commands::Can(const Command& row) const {
    return (row.Do != nullptr || row.Fill != nullptr) &&
           (row.Can == nullptr || row.Can(subsystems_));
}

void Commands::Refresh() {
    ShowIcons();
    for (Made& made : commands_) {
        if (made.Action == nullptr)
            continue;
        const bool can = Can(made.Row);
        const bool chosen = made.Row.Chosen != nullptr && made.Row.Chosen(subsystems_);
        made.Action->setEnabled(can);
        made.Action->setChecked(chosen);
        for (QAbstractButton* button : made.Buttons)
            if (button != nullptr) {
                const QSignalBlocker quiet(button);
                button->setEnabled(can);
                button->setChecked(chosen);
            }
    }
}

} // namespace vardenix
