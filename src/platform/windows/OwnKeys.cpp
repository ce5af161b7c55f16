#include "platform/windows/OwnKeys.h"

#include <QAction>
#include <QKeyEvent>
#include <QVariant>
#include <QWidget>

namespace vardenix {

namespace {

constexpr const char* OwnKeys = "ownKeys";

} // namespace

void SetOwnKeys(QAction& action, const QList<QKeySequence>& keys) {
    QVariantList codes;
    for (const QKeySequence& key : keys)
        codes.append(int{key[0].key()});
    action.setProperty(OwnKeys, codes);
}

bool TriggerByOwnKey(const QWidget& window, const QKeyEvent& event) {
    constexpr Qt::KeyboardModifiers others =
        Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    if ((event.modifiers() & others) != Qt::NoModifier)
        return false;
    for (QAction* action : window.actions())
        if (action->isEnabled() &&
            action->property(OwnKeys).toList().contains(event.key())) {
            action->trigger();
            return true;
        }
    return false;
}

} // namespace vardenix
