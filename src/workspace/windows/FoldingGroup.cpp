#include "workspace/windows/FoldingGroup.h"

#include "platform/windows/RunTimeBarrier.h"

#include <QGroupBox>
#include <QMouseEvent>
#include <QToolButton>

namespace vardenix {

FoldingGroup::FoldingGroup(QGroupBox& box)
    : QObject(&box), box_(box), arrow_(new QToolButton(&box)) {
    arrow_->setObjectName("fold" + box.objectName());
    arrow_->setAutoRaise(true);
    arrow_->setArrowType(Qt::DownArrow);
    arrow_->setAccessibleName(tr("Fold or unfold %1").arg(box.title()));
    arrow_->setToolTip(arrow_->accessibleName());
    OnSignal(arrow_, &QAbstractButton::clicked, this, [this] { Toggle(); });
    // Before the controls of the group in the order of Tab.
    for (QWidget* control : box.findChildren<QWidget*>())
        if (control != arrow_ && control->focusPolicy() != Qt::NoFocus) {
            QWidget::setTabOrder(control->previousInFocusChain(), arrow_);
            QWidget::setTabOrder(arrow_, control);
            break;
        }
    box.installEventFilter(this);
}

QString FoldingGroup::Name() const { return box_.objectName(); }

int FoldingGroup::TitleHeight() const { return box_.fontMetrics().height() + 4; }

void FoldingGroup::Toggle() {
    Fold(!folded_);
    emit Toggled();
}

void FoldingGroup::Fold(bool folded) {
    if (folded == folded_)
        return;
    folded_ = folded;
    arrow_->setArrowType(folded ? Qt::RightArrow : Qt::DownArrow);
    for (QObject* child : box_.children())
        if (auto* control = qobject_cast<QWidget*>(child); control && control != arrow_)
            control->setVisible(!folded);
    box_.setFlat(folded);
    box_.setMaximumHeight(folded ? TitleHeight() : QWIDGETSIZE_MAX);
}

bool FoldingGroup::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) {
        const int side = TitleHeight() - 2;
        arrow_->setGeometry(box_.width() - side, 0, side, side);
    } else if (event->type() == QEvent::MouseButtonPress &&
               static_cast<QMouseEvent*>(event)->position().y() < TitleHeight()) {
        Toggle();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace vardenix

#include "moc_FoldingGroup.cpp"
