// The corners of regions, and files that are dropped on the map.
#include "windows/MapWindowTest.h"

#include <QImage>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>

namespace vardenix {
namespace {

// The view begins at post (0, 0), four posts of 64 pixels a side.
class FrmVXMapRegionTest : public tests::MapWindowTest {
protected:
    FrmVXMapRegionTest() : MapWindowTest(1) {
        world_.View.ExportColor = 0x0000FF; // red
        Open();
    }

    void MoveTo(QPoint at) {
        QMouseEvent event(QEvent::MouseMove, at, PicShow().mapToGlobal(at), Qt::NoButton,
                          Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&PicShow(), &event);
    }
    void Press(QPoint at) { QTest::mousePress(&PicShow(), Qt::LeftButton, {}, at); }
    bool Red(int x, int y) {
        return PicShow().grab().toImage().pixelColor(x, y) == QColor(255, 0, 0);
    }
    // A drop on the map of files with these names.
    bool Drop(const QStringList& names) {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString& name : names)
            urls += QUrl::fromLocalFile("/a folder/" + name);
        data.setUrls(urls);
        QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
        enter.setAccepted(false);
        QApplication::sendEvent(&window_, &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent drop({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&window_, &drop);
        QApplication::processEvents();
        return true;
    }
};

TEST_F(FrmVXMapRegionTest, TheBoxFollowsTheMouseBetweenTheCorners) {
    interaction_.WaitExportCorner1 = true;
    MoveTo({100, 100});
    EXPECT_FALSE(Red(128, 100));
    Press({32, 224}); // post 0,0
    commands_.Story.clear();
    MoveTo({100, 150}); // post 1,1: two posts a side
    EXPECT_TRUE(Red(0, 140) && Red(128, 140) && Red(60, 128));
    MoveTo({160, 150}); // post 2,1
    EXPECT_TRUE(Red(192, 140));
    EXPECT_FALSE(Red(128, 140));
    EXPECT_EQ(commands_.Story, ""); // without a repaint
    Press({160, 150});
    EXPECT_FALSE(Red(192, 140));
    EXPECT_EQ(world_.View.ExportX2, 2);
    EXPECT_EQ(world_.View.ExportY2, 1);
    EXPECT_EQ(commands_.Story, " nohint refresh export");
}

TEST_F(FrmVXMapRegionTest, TheStampIsFramedBeforeItIsMade) {
    interaction_.WaitImportCorner = true;
    interaction_.ImportWidth = interaction_.ImportHeight = 2;
    MoveTo({100, 150}); // post 1,1
    EXPECT_TRUE(Red(64, 100) && Red(192, 100) && Red(100, 64) && Red(100, 192));
}

TEST_F(FrmVXMapRegionTest, EscGivesUpWaiting) {
    for (bool MapInteraction::*wait :
         {&MapInteraction::WaitExportCorner1, &MapInteraction::WaitExportCorner2,
          &MapInteraction::WaitImportCorner}) {
        interaction_.*wait = true;
        MoveTo({100, 150});
        commands_.Story.clear();
        QTest::keyClick(&window_, Qt::Key_Escape);
        EXPECT_FALSE(interaction_.Waits());
        EXPECT_EQ(commands_.Story, " nohint");
        EXPECT_FALSE(state_.AbortPaint);
    }
}

TEST_F(FrmVXMapRegionTest, DroppedFeatureFilesLoad) {
    EXPECT_TRUE(Drop({"one.tdf", "other.txt", "TWO.TDF"}));
    EXPECT_EQ(commands_.Story, " load /a folder/one.tdf load /a folder/TWO.TDF");
}

TEST_F(FrmVXMapRegionTest, OtherFilesAreNotTaken) {
    EXPECT_FALSE(Drop({"other.txt", "tdf"}));
    EXPECT_EQ(commands_.Story, "");
}

} // namespace
} // namespace vardenix
