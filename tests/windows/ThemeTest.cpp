#include "platform/windows/Theme.h"

#include "platform/windows/PictureLink.h"
#include "windows/WindowTest.h"

#include <QFile>
#include <QIcon>
#include <QPalette>
#include <QTest>

#include <set>

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

TEST(PictureLink, HasARingOfBlackAndWhiteWhileItHasTheKeyboard) {
    QWidget window;
    PictureLink link(&window);
    link.SetPicture(":/website.png", {64, 64});
    link.resize(link.sizeHint());
    link.setFocusPolicy(Qt::TabFocus);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const auto upperSide = [&link] {
        std::set<QRgb> colors;
        const QImage seen = link.grab().toImage();
        for (int x = 5; x < seen.width() - 5; ++x)
            colors.insert(seen.pixel(x, 3));
        return colors;
    };
    link.clearFocus();
    const auto without = upperSide();
    link.setFocus();
    const auto with = upperSide();
    EXPECT_FALSE(without.contains(qRgb(0, 0, 0)) &&
                 without.contains(qRgb(255, 255, 255)));
    EXPECT_TRUE(with.contains(qRgb(0, 0, 0)));
    EXPECT_TRUE(with.contains(qRgb(255, 255, 255)));
}

} // namespace
} // namespace vardenix
