#include "platform/windows/clsToolTip.h"

#include "platform/windows/ColorImage.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QScreen>

#include <algorithm>

namespace vardenix {

namespace {

// Beside the cursor, where it hides nothing of the text.
constexpr QPoint BesideCursor{14, 18};

} // namespace

clsToolTip::clsToolTip(QObject* parent) : QObject(parent) {}

clsToolTip::~clsToolTip() = default;

void clsToolTip::Create(QWidget& window) {
    window_ = &window;
    tools_.clear();
    shown_ = nullptr;
    tip_ = std::make_unique<QLabel>(nullptr, Qt::ToolTip | Qt::BypassGraphicsProxyWidget);
    tip_->setObjectName("ToolTip");
    tip_->setAttribute(Qt::WA_ShowWithoutActivating);
    tip_->setAttribute(Qt::WA_TransparentForMouseEvents);
    tip_->setFrameStyle(static_cast<int>(QFrame::Box) | static_cast<int>(QFrame::Plain));
    tip_->setAutoFillBackground(true);
    Dress();
}

QWidget* clsToolTip::ToolTipHandle() const { return tip_.get(); }

void clsToolTip::AddTool(QWidget& tool) {
    if (HasToolTip(tool))
        return;
    tools_.insert(&tool);
    tool.installEventFilter(this);
    connect(&tool, &QObject::destroyed, this, [this](const QObject* gone) {
        tools_.remove(gone);
        if (shown_ == gone)
            Hide();
    });
}

void clsToolTip::RemoveTool(QWidget& tool) {
    tool.removeEventFilter(this);
    tool.disconnect(this);
    tools_.remove(&tool);
    if (shown_ == &tool)
        Hide();
}

bool clsToolTip::HasToolTip(const QWidget& tool) const { return tools_.contains(&tool); }

QString clsToolTip::ToolText(const QWidget& tool) { return tool.toolTip(); }

void clsToolTip::SetToolText(QWidget& tool, const QString& text) {
    tool.setToolTip(text);
    if (shown_ == &tool)
        ShowText();
}

void clsToolTip::SetToolTipHeader(const QString& header) {
    header_ = header;
    ShowText();
}

void clsToolTip::SetToolTipHeaderShow(bool show) {
    headerShow_ = show;
    ShowText();
}

void clsToolTip::SetBackColor(uint32_t color) {
    backColor_ = color;
    Dress();
}

void clsToolTip::SetForeColor(uint32_t color) {
    foreColor_ = color;
    Dress();
}

void clsToolTip::SetMaxTipWidth(int pixels) {
    maxTipWidth_ = pixels;
    ShowText();
}

void clsToolTip::SetMargin(int pixels) {
    margin_ = pixels;
    Dress();
}

void clsToolTip::Dress() {
    if (!tip_)
        return;
    QPalette colors = tip_->palette();
    colors.setColor(QPalette::Window, ColorOf(backColor_));
    colors.setColor(QPalette::WindowText, ColorOf(foreColor_));
    tip_->setPalette(colors);
    tip_->setMargin(margin_);
    ShowText();
}

bool clsToolTip::eventFilter(QObject* watched, QEvent* event) {
    auto* tool = qobject_cast<QWidget*>(watched);
    if (tool == nullptr || !HasToolTip(*tool))
        return false;
    switch (event->type()) {
    case QEvent::ToolTip:
        Show(*tool, static_cast<QHelpEvent*>(event)->globalPos());
        return true;
    case QEvent::MouseMove:
        if (shown_ == tool)
            MoveTo(static_cast<QMouseEvent*>(event)->globalPosition().toPoint());
        return false;
    case QEvent::Leave:
    case QEvent::Hide:
    case QEvent::MouseButtonPress:
    case QEvent::KeyPress:
    case QEvent::WindowDeactivate:
        if (shown_ == tool)
            Hide();
        return false;
    default:
        return false;
    }
}

void clsToolTip::timerEvent(QTimerEvent* event) {
    if (event->timerId() == autoPop_.timerId())
        Hide();
    else
        QObject::timerEvent(event);
}

void clsToolTip::Show(QWidget& tool, QPoint cursor) {
    if (!tip_)
        return;
    shown_ = &tool;
    cursor_ = cursor;
    ShowText();
    autoPop_.start(delayTime_, this);
}

void clsToolTip::Hide() {
    shown_ = nullptr;
    autoPop_.stop();
    if (tip_)
        tip_->hide();
}

void clsToolTip::ShowText() {
    if (!tip_ || shown_ == nullptr)
        return;
    const QString text = shown_->toolTip();
    if (text.isEmpty()) {
        tip_->hide();
        return;
    }
    QString rich = text.toHtmlEscaped();
    rich.replace("\r\n", "\n")
        .replace("\n", "<br>")
        .replace("    ", "&nbsp;&nbsp;&nbsp; ");
    if (headerShow_)
        rich = "<b>" + header_.toHtmlEscaped() + "</b><br>" + rich;
    tip_->setTextFormat(Qt::RichText);
    tip_->setText(rich);
    tip_->setWordWrap(false);
    tip_->setMinimumWidth(0);
    tip_->setMaximumWidth(QWIDGETSIZE_MAX);
    const bool wraps = tip_->sizeHint().width() > maxTipWidth_;
    tip_->setWordWrap(wraps);
    if (wraps)
        tip_->setFixedWidth(maxTipWidth_);
    tip_->adjustSize();
    MoveTo(cursor_);
    tip_->show();
}

// Below the cursor, or above it where the screen ends.
void clsToolTip::MoveTo(QPoint cursor) {
    cursor_ = cursor;
    const QRect room = window_->screen()->availableGeometry();
    QPoint place = cursor + BesideCursor;
    if (place.y() + tip_->height() > room.bottom())
        place.setY(cursor.y() - tip_->height() - BesideCursor.x() / 2);
    place.setX(std::max(room.left(), std::min(place.x(), room.right() - tip_->width())));
    place.setY(std::max(room.top(), place.y()));
    tip_->move(place);
}

} // namespace vardenix

#include "moc_clsToolTip.cpp"
