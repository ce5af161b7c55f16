#include "platform/windows/InkIcons.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QImage>
#include <QVariant>

namespace vardenix {

namespace {

constexpr const char* OwnIcon = "ownIcon";
bool lightInk = false;

constexpr int DarkestKept = 110; // of a colour's lightness, 0 to 255

QPixmap Lightened(const QPixmap& pixmap) {
    QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            QColor color = image.pixelColor(x, y);
            if (color.lightness() >= DarkestKept)
                continue;
            color.setHsl(color.hslHue(), color.hslSaturation(), 255 - color.lightness(),
                         color.alpha());
            image.setPixelColor(x, y, color);
        }
    return QPixmap::fromImage(image);
}

QIcon Lightened(const QIcon& icon) {
    QIcon light;
    for (const QSize& size : icon.availableSizes())
        for (const double dots : {1.0, 2.0})
            light.addPixmap(Lightened(icon.pixmap(size, dots)));
    return light;
}

void Dress(QAbstractButton& button) {
    QVariant own = button.property(OwnIcon);
    if (!own.isValid()) {
        if (!lightInk || button.icon().isNull())
            return;
        own = QVariant::fromValue(button.icon());
        button.setProperty(OwnIcon, own);
    }
    const auto icon = own.value<QIcon>();
    button.setIcon(lightInk ? Lightened(icon) : icon);
}

// Buttons that come up later.
class ButtonsToCome : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Polish)
            if (auto* button = qobject_cast<QAbstractButton*>(watched))
                Dress(*button);
        return false;
    }
};

} // namespace

QIcon IconFor(const char* resource) {
    const QIcon icon(resource);
    return lightInk ? Lightened(icon) : icon;
}

void LightenIconsOf(QObject& application) {
    application.installEventFilter(new ButtonsToCome(&application));
}

void DressIcons(bool light) {
    lightInk = light;
    for (QWidget* each : QApplication::allWidgets())
        if (auto* button = qobject_cast<QAbstractButton*>(each))
            Dress(*button);
}

} // namespace vardenix
