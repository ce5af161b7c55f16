#include "platform/windows/HeldEvents.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QShortcutEvent>

#include <memory>

namespace vardenix {

namespace {

// What windows act upon. Whatever asks for an answer at once, or tells of objects that
// may be gone later, is not among them.
bool IsForLater(QEvent::Type type) {
    switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::NonClientAreaMouseButtonPress:
    case QEvent::NonClientAreaMouseButtonRelease:
    case QEvent::NonClientAreaMouseButtonDblClick:
    case QEvent::NonClientAreaMouseMove:
    case QEvent::Wheel:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::TabletMove:
    case QEvent::ContextMenu:
    case QEvent::InputMethod:
    case QEvent::Enter:
    case QEvent::Leave:
    case QEvent::FocusIn:
    case QEvent::FocusOut:
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
    case QEvent::WindowStateChange:
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Close:
    case QEvent::Quit:
    case QEvent::Expose:
    case QEvent::UpdateRequest:
    case QEvent::LayoutRequest:
    case QEvent::Timer:
        return true;
    default:
        return false;
    }
}

// Ask for an answer about something that windows would do at once.
bool IsRefused(QEvent::Type type) {
    return type == QEvent::ShortcutOverride || type == QEvent::DragEnter ||
           type == QEvent::DragMove || type == QEvent::Drop;
}

// The key itself, or what a window made of it.
bool IsEsc(const QEvent& event) {
    if (event.type() == QEvent::Shortcut)
        return static_cast<const QShortcutEvent&>(event).key() ==
               QKeySequence(Qt::Key_Escape);
    return event.type() == QEvent::KeyPress &&
           static_cast<const QKeyEvent&>(event).key() == Qt::Key_Escape;
}

} // namespace

void HeldEvents::Begin() {
    returned_.clear();
    Look();
}

bool HeldEvents::Look() {
    pressed_ = false;
    QCoreApplication::instance()->installEventFilter(this);
    QCoreApplication::processEvents(QEventLoop::ExcludeSocketNotifiers);
    QCoreApplication::instance()->removeEventFilter(this);
    PutBack();
    return pressed_;
}

bool HeldEvents::eventFilter(QObject* receiver, QEvent* event) {
    const QEvent::Type type = event->type();
    if (!IsForLater(type) && !IsRefused(type))
        return false;
    const bool seen = returned_.erase(event) != 0;
    pressed_ = pressed_ || (IsEsc(*event) && !seen);
    if (IsForLater(type))
        held_.emplace_back(receiver, event->clone());
    // A window whose closing is not refused would be closed without having been asked.
    event->setAccepted(type != QEvent::Close && !IsRefused(type));
    return true;
}

void HeldEvents::PutBack() {
    for (const auto& [receiver, event] : std::exchange(held_, {})) {
        std::unique_ptr<QEvent> owned(event);
        if (receiver.isNull())
            continue;
        returned_.insert(event);
        QCoreApplication::postEvent(receiver, owned.release());
    }
}

} // namespace vardenix
