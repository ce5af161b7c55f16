#include "platform/windows/Theme.h"

#include "platform/windows/PictureLink.h"
#include "windows/WindowTest.h"

#include <QFile>
#include <QIcon>
#include <QPalette>

namespace vardenix {
namespace {

TEST(Theme, GivesEveryWindowTheOffGroundAndTheIcon) {
    QWidget window;
    window.resize(40, 40);
    EXPECT_EQ(window.grab().toImage().pixel(20, 20), qRgb(0xEA, 0xEA, 0xE8));
    EXPECT_EQ(window.windowIcon().availableSizes().size(), 7);
}

TEST(Theme, ShipsFourteenShortSounds) {
    for (int i = 1; i <= 14; ++i) {
        QFile sound(QString(":/S%1.wav").arg(i));
        ASSERT_TRUE(sound.open(QIODevice::ReadOnly)) << i;
        const QByteArray bytes = sound.readAll();
        EXPECT_EQ(bytes.mid(0, 4) + bytes.mid(8, 4), "RIFFWAVE") << i;
        EXPECT_LT(bytes.size(), 20000) << i;
    }
}

TEST(Theme, PicturesAreSharpAtTwiceTheDots) {
    for (const QString name : {":/logo", ":/heights", ":/browse", ":/show", ":/website"})
        EXPECT_EQ(QImage(name + "@2x.png").size(), QImage(name + ".png").size() * 2)
            << name.toStdString();
    EXPECT_EQ(QImage(":/browse.png").size(), QSize(24, 24));
}

TEST(PictureLink, FillsAGreaterWidthWithItsRightEdge) {
    PictureLink link;
    link.SetPicture(":/logo.png", {640, 120});
    EXPECT_EQ(link.sizeHint(), QSize(640, 120));
    link.resize(900, 120);
    const QImage seen = link.grab().toImage();
    for (const int y : {5, 60, 115})
        EXPECT_EQ(seen.pixel(899, y), seen.pixel(641, y)) << y;
    EXPECT_EQ(qBlue(seen.pixel(899, 60)), 0x50); // deep water
}

} // namespace
} // namespace vardenix
