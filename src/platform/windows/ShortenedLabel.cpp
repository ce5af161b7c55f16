#include "platform/windows/ShortenedLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace vardenix {

namespace {

constexpr const char* Dots = "...";

} // namespace

QString ShortenedLabel::Shown() const {
    if (fontMetrics().horizontalAdvance(text()) <= contentsRect().width())
        return text();
    QString shown = text();
    while (!shown.isEmpty() &&
           fontMetrics().horizontalAdvance(shown + Dots) > contentsRect().width())
        shown.chop(1);
    return shown + Dots;
}

QSize ShortenedLabel::minimumSizeHint() const {
    return {fontMetrics().horizontalAdvance(Dots), QLabel::minimumSizeHint().height()};
}

bool ShortenedLabel::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && Shown() != text()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
        return true;
    }
    return QLabel::event(event);
}

void ShortenedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const auto align =
        static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment()));
    style()->drawItemText(&painter, contentsRect(), align | Qt::TextSingleLine, palette(),
                          isEnabled(), Shown(), foregroundRole());
}

} // namespace vardenix

#include "moc_ShortenedLabel.cpp"
