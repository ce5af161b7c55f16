// The whole table of commands, row by row: whether each is where it says, hears its keys
// and can be disabled; and the manual's list, which is made from it.
#include "app/OpenedWorkspace.h"
#include "windows/WindowTest.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"

#include <QMenu>
#include <QScrollArea>
#include <QToolBar>

#include <set>

namespace vardenix {
namespace {

using tests::Find;

int done = 0;
bool possible = true;

// What any row does here, so that no row's own work comes between.
void CountIt(Subsystems&) { ++done; }
bool IsPossible(const Subsystems&) { return possible; }

class CommandsTest : public tests::OpenedWorkspace {
protected:
    CommandsTest() {
        possible = true;
        for (Command& row : table_) {
            if (row.Do != nullptr)
                row.Do = CountIt;
            row.Can = IsPossible;
            row.Chosen = nullptr;
        }
    }

    QWidget& Panel() { return Window("FrmVXMain"); }
    QWidget& Map() { return Window("FrmVXMap"); }
    QAction& ActionOf(const Command& row) {
        return Find<QAction>(row.InMapMenu ? Map() : Panel(), row.Id);
    }
    // How often commands were done by what `work` does.
    template <typename Work>
    static int Done(Work work) {
        done = 0;
        work();
        return done;
    }
    static void Press(QWidget& window, const QKeySequence& key) {
        QTest::keyClick(&window, key[0].key(), key[0].keyboardModifiers());
    }
    static QStringList KeysOf(const char* told) {
        return QString(told).split(' ', Qt::SkipEmptyParts);
    }
    static int ClickOn(QWidget& window, QAbstractButton& button) {
        if (auto* scroll = window.findChild<QScrollArea*>("scroll");
            scroll != nullptr && scroll->isAncestorOf(&button))
            scroll->ensureWidgetVisible(&button);
        const QPoint inside(std::min(button.width() / 2, 20), button.height() / 2);
        return Done([&] {
            QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {},
                              button.mapTo(&window, inside));
        });
    }
};

TEST_F(CommandsTest, EveryRowStandsInItsMenu) {
    Open();
    for (const Command& row : table_) {
        SCOPED_TRACE(row.Id);
        if (row.Fill != nullptr) {
            auto& part = Find<QMenu>(Panel(), row.Id);
            EXPECT_TRUE(
                Find<QMenu>(Panel(), row.Menu).actions().contains(part.menuAction()));
            continue;
        }
        QAction& action = ActionOf(row);
        EXPECT_EQ(action.text().section('\t', 0, 0), row.Text);
        if (*row.Menu != '\0') {
            EXPECT_TRUE(Find<QMenu>(Panel(), row.Menu).actions().contains(&action));
        }
        if (row.InMapMenu) {
            EXPECT_TRUE(Find<QMenu>(Map(), "mnupup1").actions().contains(&action));
        }
        EXPECT_EQ(Done([&] { action.trigger(); }), row.Do != nullptr ? 1 : 0);
    }
}

TEST_F(CommandsTest, EveryButtonCallsItsRow) {
    Open();
    Panel().resize(Panel().width(), 900);
    for (const Command& row : table_) {
        SCOPED_TRACE(row.Id);
        if (*row.Button != '\0') {
            EXPECT_EQ(ClickOn(Panel(), Find<QAbstractButton>(Panel(), row.Button)), 1);
        }
        if (*row.MapButton != '\0') {
            EXPECT_EQ(ClickOn(Map(), Find<QAbstractButton>(Map(), row.MapButton)), 1);
        }
    }
}

TEST_F(CommandsTest, EveryKeyCallsItsRow) {
    Open();
    for (QWidget* window : {&Panel(), &Map()}) {
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
        const bool map = window == &Map();
        for (const Command& row : table_) {
            for (const QString& key : KeysOf(row.Keys))
                EXPECT_EQ(Done([&] { Press(*window, QKeySequence(key)); }), 1)
                    << row.Id << " " << key.toStdString();
            for (const QString& key : KeysOf(row.MapKeys))
                EXPECT_EQ(Done([&] { Press(*window, QKeySequence(key)); }), map ? 1 : 0)
                    << row.Id << " " << key.toStdString();
        }
    }
    // Letters are letters only by themselves.
    EXPECT_EQ(Done([this] { Press(Map(), QKeySequence("Alt+F")); }), 0);
}

TEST_F(CommandsTest, WhatCannotBeDoneIsDisabledEverywhere) {
    Open();
    possible = false;
    workspace_->CommandsChanged();
    for (const Command& row : table_) {
        SCOPED_TRACE(row.Id);
        if (row.Fill != nullptr)
            continue;
        EXPECT_FALSE(ActionOf(row).isEnabled());
        EXPECT_EQ(Done([&] { ActionOf(row).trigger(); }), 0);
        for (const QString& key : KeysOf(row.Keys))
            EXPECT_EQ(Done([&] { Press(Panel(), QKeySequence(key)); }), 0);
        for (const QString& key : KeysOf(row.MapKeys))
            EXPECT_EQ(Done([&] { Press(Map(), QKeySequence(key)); }), 0);
        if (*row.Button != '\0') {
            EXPECT_FALSE(Find<QWidget>(Panel(), row.Button).isEnabled());
        }
        if (*row.MapButton != '\0') {
            EXPECT_FALSE(Find<QWidget>(Map(), row.MapButton).isEnabled());
        }
    }
    possible = true;
    workspace_->CommandsChanged();
    for (const Command& row : table_)
        if (row.Fill == nullptr) {
            EXPECT_EQ(ActionOf(row).isEnabled(), row.Do != nullptr) << row.Id;
        }
}

TEST_F(CommandsTest, ALockedPanelDoesNothingButHelp) {
    Open();
    static_cast<FrmVXMain&>(Panel()).LockPanel(true);
    for (const Command& row : table_)
        if (row.Fill == nullptr) {
            EXPECT_EQ(Done([&] { ActionOf(row).trigger(); }), row.WhileLocked ? 1 : 0)
                << row.Id;
        }
    static_cast<FrmVXMain&>(Panel()).LockPanel(false);
}

TEST_F(CommandsTest, NoButtonOfThePanelIsWithoutAMeaning) {
    Open();
    // Those that belong to a slider beside them, which the panel looks after.
    std::set<std::string> known{"cmdTransMinus", "cmdTransPlus", "cmdBMinus", "cmdBPlus",
                                "cmdBrightReset"};
    for (const Command& row : table_)
        known.insert(row.Button);
    for (const QAbstractButton* button : Panel().findChildren<QAbstractButton*>()) {
        const std::string name = button->objectName().toStdString();
        EXPECT_TRUE(known.contains(name) || name.starts_with("qt_") ||
                    name.starts_with("fold"))
            << name;
    }
}

// A row alone, and its routine, make a command: it needs no form.
TEST_F(CommandsTest, ANewRowComesUpWhereItSays) {
    table_.push_back({.Id = "mnuNew",
                      .Text = "Ne&w",
                      .Keys = "Ctrl+F12",
                      .Tip = "Something new",
                      .Menu = "mnuTools",
                      .Line = true,
                      .Button = "cmdNew",
                      .MapButton = "cmdNewTool",
                      .Icon = ":/brush.png",
                      .InEditors = true,
                      .Can = IsPossible,
                      .Chosen = IsPossible,
                      .Do = CountIt});
    Open();
    const Command& row = table_.back();
    EXPECT_TRUE(ActionOf(row).isChecked());
    EXPECT_FALSE(ActionOf(row).icon().pixmap(16, 16).isNull());
    EXPECT_TRUE(ActionOf(row).isIconVisibleInMenu());
    const QList<QAction*> tools = Find<QMenu>(Panel(), "mnuTools").actions();
    EXPECT_EQ(tools.last(), &ActionOf(row));
    EXPECT_TRUE(tools.at(tools.size() - 2)->isSeparator());
    EXPECT_EQ(ClickOn(Panel(), Find<QAbstractButton>(Panel(), "cmdNew")), 1);
    EXPECT_EQ(ClickOn(Map(), Find<QAbstractButton>(Map(), "cmdNewTool")), 1);
    EXPECT_EQ(Find<QWidget>(Panel(), "cmdNew").toolTip(), "Something new (Ctrl+F12)");
    // The editor has the screen alone, and its key with it.
    subsystems_->BinEditor.Open();
    QWidget& editor = Window("FrmBINTileEdit");
    editor.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
    EXPECT_EQ(Done([&] { Press(editor, QKeySequence("Ctrl+F12")); }), 1);
    EXPECT_EQ(Done([&] { Press(editor, QKeySequence("Ctrl+F")); }), 0);
    auto& button = static_cast<QWidget&>(
        *Find<QToolBar>(editor, "commands").widgetForAction(&ActionOf(row)));
    EXPECT_TRUE(button.isVisible());
    EXPECT_EQ(ClickOn(editor, static_cast<QAbstractButton&>(button)), 1);
}

TEST(CommandTable, NamesEachKeyOnce) {
    QStringList keys;
    for (const Command& row : AllCommands())
        for (const char* told : {row.Keys, row.MapKeys})
            keys += QString(told).split(' ', Qt::SkipEmptyParts);
    for (const ControlKey& row : ControlKeys())
        keys += QString(row.Keys).split(' ', Qt::SkipEmptyParts);
    EXPECT_EQ(keys.removeDuplicates(), 0);
    EXPECT_GT(keys.size(), 40);
}

TEST(CommandTable, NamesEachRowOnce) {
    std::set<std::string> ids;
    for (const Command& row : AllCommands())
        EXPECT_TRUE(ids.insert(row.Id).second) << row.Id;
}

// When a key changes, this prints the table that the manual is to have.
TEST(Manual, ListsTheKeysThatThereAre) {
    const std::string manual = tests::Slurp(std::string(MANUAL_FOLDER) + "/manual.md");
    const std::string begin = "<!-- keys: begin -->\n";
    const size_t from = manual.find(begin) + begin.size();
    const size_t to = manual.find("<!-- keys: end -->");
    ASSERT_NE(to, std::string::npos);
    EXPECT_EQ(manual.substr(from, to - from), ShortcutList().toStdString());
}

} // namespace
} // namespace vardenix
