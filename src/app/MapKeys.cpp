#include "app/MapKeys.h"

#include "app/Workspace.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QWindow>

#include <algorithm>
#include <array>

namespace vardenix {

namespace {

// Beside the mnemonics in the titles, Alt+L, Alt+O and Alt+P.
struct MenuLetter {
    int Key;
    const char* Menu;
};
constexpr std::array MenuLetters{MenuLetter{Qt::Key_F, "mnuFile"},
                                 MenuLetter{Qt::Key_T, "mnuTools"},
                                 MenuLetter{Qt::Key_H, "mnuHelp"}};

bool KeepsLetters(const QWidget& control) {
    if (const auto* line = qobject_cast<const QLineEdit*>(&control))
        return !line->isReadOnly();
    if (const auto* text = qobject_cast<const QTextEdit*>(&control))
        return !text->isReadOnly();
    if (const auto* text = qobject_cast<const QPlainTextEdit*>(&control))
        return !text->isReadOnly();
    return qobject_cast<const QAbstractSpinBox*>(&control) != nullptr ||
           qobject_cast<const QComboBox*>(&control) != nullptr ||
           qobject_cast<const QAbstractItemView*>(&control) != nullptr;
}

} // namespace

MapKeys::MapKeys(Workspace& workspace) : workspace_(workspace) { workspace.Join(*this); }

void MapKeys::WindowsMade() { qApp->installEventFilter(this); }

// A key that its control leaves alone goes on to what the control lies in; only the first
// of them counts.
bool MapKeys::eventFilter(QObject* watched, QEvent* event) {
    const bool press = event->type() == QEvent::KeyPress;
    if ((!press && event->type() != QEvent::ShortcutOverride) || !watched->isWidgetType())
        return false;
    const auto* control = static_cast<const QWidget*>(watched);
    const QWidget* focused = QApplication::focusWidget();
    if (focused != nullptr && focused != control)
        return false;
    const auto& key = *static_cast<QKeyEvent*>(event);
    QAction* menu = MenuOf(*control, key);
    if (!press) {
        // A label of the same letter must not have it first.
        event->setAccepted(menu != nullptr);
        return menu != nullptr;
    }
    if (menu == nullptr)
        return Press(*control, key);
    control->window()->findChild<QMenuBar*>()->setActiveAction(menu);
    return true;
}

QAction* MapKeys::MenuOf(const QWidget& control, const QKeyEvent& event) const {
    const auto* letter = std::ranges::find(MenuLetters, event.key(), &MenuLetter::Key);
    const QWidget* window = control.window();
    if (event.modifiers() != Qt::AltModifier || letter == MenuLetters.end() ||
        (window != &workspace_.Panel() && window != workspace_.Map().window()))
        return nullptr;
    const auto* menu = window->findChild<QMenu*>(letter->Menu);
    return menu == nullptr ? nullptr : menu->menuAction();
}

bool MapKeys::Press(const QWidget& control, const QKeyEvent& event) {
    if (QApplication::activePopupWidget() != nullptr ||
        QApplication::activeModalWidget() != nullptr || !OfWorkspace(*control.window()))
        return false;
    FrmVXMap& map = workspace_.Map();
    if (event.key() == Qt::Key_Escape)
        return map.Escape();
    // On the map and its controls the map sees to them itself.
    if (&control == &map || map.isAncestorOf(&control))
        return false;
    return !KeepsLetters(control) && map.TakeToolKey(event);
}

// Panel, map, the one window, and what is kept over them.
bool MapKeys::OfWorkspace(const QWidget& window) const {
    const QWidget* base = workspace_.Map().window();
    return &window == base || &window == &workspace_.Panel() ||
           (window.windowHandle() != nullptr &&
            window.windowHandle()->transientParent() != nullptr &&
            window.windowHandle()->transientParent() == base->windowHandle());
}

} // namespace vardenix
