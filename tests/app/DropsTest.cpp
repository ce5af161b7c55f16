// What a file manager drops on the map.
#include "app/OpenedWorkspace.h"
#include "support/TheaterMaker.h"
#include "workspace/windows/FrmVXMap.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace vardenix {
namespace {

using tests::Int32Bytes;
using tests::Posts;

class DropsTest : public tests::OpenedWorkspace {
protected:
    // False when the map does not want it.
    bool Drop(const std::vector<std::string>& paths) {
        QMimeData data;
        QList<QUrl> urls;
        for (const std::string& path : paths)
            urls += QUrl::fromLocalFile(QString::fromStdString(path));
        data.setUrls(urls);
        QDragEnterEvent enter({9, 9}, Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(&workspace_->Map(), &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent drop({9, 9}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&workspace_->Map(), &drop);
        QCoreApplication::processEvents();
        return true;
    }
};

TEST_F(DropsTest, ARegionWaitsForItsClick) {
    Open();
    EXPECT_TRUE(Drop({folder_.Write("in.EXP", Int32Bytes(2) + Int32Bytes(1) +
                                                  Int32Bytes(1) + Int32Bytes(1))}));
    EXPECT_TRUE(workspace_->Interaction().WaitImportCorner);
    EXPECT_EQ(workspace_->Interaction().ImportWidth, 2);
    std::string text;
    platform_.Dialogs.ExpectAnyBox("Error...", BoxAnswer::Ok, &text);
    EXPECT_TRUE(Drop({folder_.Write("bad.exp", "x")}));
    EXPECT_NE(text.find("bad.exp"), std::string::npos) << text;
}

TEST_F(DropsTest, HeightsAreLoaded) {
    Open();
    std::string bytes;
    for (int i = 0; i < 16 * Posts * Posts; ++i)
        bytes += tests::Int16Bytes(7);
    const std::string path = folder_.Write("heights.elv", bytes);
    EXPECT_TRUE(Drop({path}));
    EXPECT_EQ(state_.Terrain.Elevations.Kind, ElevationKind::Elv);
    EXPECT_EQ(state_.Terrain.Elevations.At(3, 3), 7);
}

TEST_F(DropsTest, ATheaterIsOpenedAfterAQuestion) {
    Open();
    folder_.Write("other/terrain/theater.L2", "x");
    const std::string theater = folder_.File("other");
    platform_.Dialogs.ExpectBox("Confirm", "Open the theater in\n" + theater + "?",
                                BoxAnswer::No);
    EXPECT_TRUE(Drop({theater + "/terrain"}));
    EXPECT_EQ(ends_, 0);
    platform_.Dialogs.ExpectBox("Confirm", "Open the theater in\n" + theater + "?",
                                BoxAnswer::Yes);
    EXPECT_TRUE(Drop({theater}));
    EXPECT_EQ(ends_, 1);
    EXPECT_TRUE(workspace_->NextProgram().ends_with("\"" + theater + "\""));
}

TEST_F(DropsTest, WhatTheMapCannotTakeIsLeftAlone) {
    Open();
    EXPECT_FALSE(Drop({folder_.Write("a.txt", "x")}));
    EXPECT_FALSE(Drop({folder_.Write("a.exp", "x"), folder_.Write("b.exp", "x")}));
    EXPECT_TRUE(platform_.Dialogs.AllAnswered());
}

} // namespace
} // namespace vardenix
