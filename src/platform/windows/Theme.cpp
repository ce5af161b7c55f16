#include "platform/windows/Theme.h"

#include "platform/windows/ColorImage.h"

#include <QApplication>
#include <QIcon>
#include <QPalette>
#include <QStyleFactory>
#include <QToolTip>

// The macro that Qt gives for this works outside namespaces only.
static void KnowResources() { Q_INIT_RESOURCE(vardenix); }

namespace vardenix {

namespace {

QPalette LightPalette() {
    const QColor ink(0x1E, 0x25, 0x2E);
    const QColor faint(0x8A, 0x90, 0x96);
    const QColor sea(0x24, 0x54, 0x8B);
    QPalette palette(QColor(0xE6, 0xE6, 0xE3), OffColor());
    palette.setColor(QPalette::WindowText, ink);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xF3, 0xF4, 0xF2));
    palette.setColor(QPalette::Text, ink);
    palette.setColor(QPalette::ButtonText, ink);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, QColor(0xFF, 0xFB, 0xE6));
    palette.setColor(QPalette::ToolTipText, ink);
    palette.setColor(QPalette::Highlight, sea);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, sea);
    palette.setColor(QPalette::LinkVisited, sea);
    palette.setColor(QPalette::PlaceholderText, faint);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    palette.setColor(QPalette::Disabled, QPalette::Base, OffColor());
    palette.setColor(QPalette::Disabled, QPalette::Highlight, faint);
    return palette;
}

} // namespace

QColor OffColor() { return ColorOf(15264490); }

void ApplyTheme() {
    KnowResources();
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QApplication::setPalette(LightPalette());
    QToolTip::setPalette(LightPalette());
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256})
        icon.addFile(QString(":/DEF%1.png").arg(size));
    QApplication::setWindowIcon(icon);
}

} // namespace vardenix
