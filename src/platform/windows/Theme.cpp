#include "platform/windows/Theme.h"

#include "platform/windows/ColorImage.h"
#include "platform/windows/InkIcons.h"

#include <QApplication>
#include <QEvent>
#include <QIcon>
#include <QStyleFactory>
#include <QToolTip>
#include <QWidget>

// The macro that Qt gives for this works outside namespaces only.
static void KnowResources() { Q_INIT_RESOURCE(vardenix); }

namespace vardenix {

namespace {

QColor OffInLight() { return ColorOf(15264490); }

// What a palette of ours is made of.
struct Look {
    QColor Ground;
    QColor Button;
    QColor Base;
    QColor Other; // every second row
    QColor Ink;
    QColor Faint;    // to be read, though less wanted
    QColor Disabled; // cannot be used
    QColor Chosen;   // the ground of what is chosen
    QColor Link;
};

Look LightLook() {
    const QColor sea(0x24, 0x54, 0x8B);
    return {OffInLight(),
            {0xE6, 0xE6, 0xE3},
            Qt::white,
            {0xF3, 0xF4, 0xF2},
            {0x1E, 0x25, 0x2E},
            {0x62, 0x68, 0x6F},
            {0x8A, 0x90, 0x96},
            sea,
            sea};
}

Look DarkLook() {
    return {{0x27, 0x29, 0x2D}, {0x3A, 0x3D, 0x43}, {0x34, 0x37, 0x3D},
            {0x2E, 0x31, 0x36}, {0xE8, 0xE8, 0xE4}, {0xAE, 0xB4, 0xBC},
            {0x7C, 0x82, 0x8A}, {0x2F, 0x67, 0xA8}, {0x86, 0xB8, 0xF2}};
}

// Of tips, in both looks.
constexpr QRgb TipGround = 0xFFFFFBE6;

QPalette PaletteOf(const Look& look) {
    QPalette palette(look.Button, look.Ground);
    palette.setColor(QPalette::WindowText, look.Ink);
    palette.setColor(QPalette::Base, look.Base);
    palette.setColor(QPalette::AlternateBase, look.Other);
    palette.setColor(QPalette::Text, look.Ink);
    palette.setColor(QPalette::ButtonText, look.Ink);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, QColor(TipGround));
    palette.setColor(QPalette::ToolTipText, LightLook().Ink);
    palette.setColor(QPalette::Highlight, look.Chosen);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, look.Link);
    palette.setColor(QPalette::LinkVisited, look.Link);
    palette.setColor(QPalette::PlaceholderText, look.Faint);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, look.Disabled);
    palette.setColor(QPalette::Disabled, QPalette::Base, look.Ground);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, look.Disabled);
    return palette;
}

bool desktopDark = false; // as it was when the program began
bool dark = false;

Look LookNow() { return dark ? DarkLook() : LightLook(); }

// Keeps a control marked when all colours change.
class DangerMark : public QObject {
public:
    explicit DangerMark(QWidget& control) : QObject(&control), control_(control) {
        control.installEventFilter(this);
        Dress();
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::PaletteChange)
            Dress();
        return false;
    }

private:
    void Dress() {
        QPalette colors;
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
            colors.setColor(group, QPalette::ButtonText, DangerColor());
        control_.setPalette(colors);
    }

    QWidget& control_;
};

} // namespace

QColor OffColor() { return LookNow().Ground; }

QColor PictureGround() { return {0x40, 0x40, 0x40}; }

QColor DangerColor() {
    return dark ? QColor(0xFF, 0x9C, 0x92) : QColor(0xA8, 0x1C, 0x12);
}

QPalette PaletteOn(const QColor& ground) {
    Look look = LightLook();
    look.Ground = ground;
    return PaletteOf(look);
}

void MarkDanger(QWidget& control) { new DangerMark(control); }

void UseScheme(Scheme scheme) {
    dark = scheme == Scheme::Dark || (scheme == Scheme::Desktop && desktopDark);
    QApplication::setPalette(PaletteOf(LookNow()));
    QToolTip::setPalette(PaletteOf(LookNow()));
    DressIcons(dark);
}

bool IsDark() { return dark; }

void ApplyTheme() {
    KnowResources();
    const QPalette desktop = QApplication::palette();
    desktopDark = desktop.color(QPalette::Window).lightness() <
                  desktop.color(QPalette::WindowText).lightness();
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    LightenIconsOf(*qApp);
    UseScheme(Scheme::Desktop);
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256})
        icon.addFile(QString(":/DEF%1.png").arg(size));
    QApplication::setWindowIcon(icon);
}

} // namespace vardenix
