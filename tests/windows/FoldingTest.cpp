// How the panel finds room: rows that wrap, groups that fold, lines that end in dots, and
// the handle at its edge.
#include "platform/windows/ShortenedLabel.h"
#include "platform/windows/WrappingRow.h"
#include "windows/WindowTest.h"
#include "workspace/windows/EdgeHandle.h"
#include "workspace/windows/FoldingGroup.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

namespace vardenix {
namespace {

class WrappingRowTest : public testing::Test {
protected:
    QWidget& Add(int width, bool grows = false) {
        auto* part = new QWidget(&window_);
        part->setMinimumSize(width, 20);
        part->setMaximumHeight(20);
        if (!grows)
            part->setMaximumWidth(width);
        else
            part->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        row_->addWidget(part);
        part->show();
        return *part;
    }
    void Show(int width) {
        window_.resize(width, 200);
        window_.show();
        row_->setGeometry(QRect(0, 0, width, 200));
    }

    QWidget window_;
    WrappingRow* row_ = new WrappingRow;
};

TEST_F(WrappingRowTest, GoesOnBelowWhereTheLineIsFull) {
    window_.setLayout(row_);
    row_->setSpacing(10);
    const QWidget& first = Add(100);
    const QWidget& second = Add(100);
    const QWidget& third = Add(100);
    Show(330);
    EXPECT_EQ(first.x(), 0);
    EXPECT_EQ(second.x(), 110);
    EXPECT_EQ(third.x(), 220);
    EXPECT_EQ(third.y(), 0);
    Show(319); // one pixel too few for the third
    EXPECT_EQ(second.y(), 0);
    EXPECT_EQ(third.x(), 0);
    EXPECT_EQ(third.y(), 25); // half the gap between parts
    EXPECT_EQ(row_->heightForWidth(320), 20);
    EXPECT_EQ(row_->heightForWidth(319), 45);
    EXPECT_EQ(row_->heightForWidth(100), 70);
}

TEST_F(WrappingRowTest, WhatCanGrowSharesWhatIsLeft) {
    window_.setLayout(row_);
    row_->setSpacing(10);
    Add(100);
    const QWidget& grows = Add(50, true);
    Show(300);
    EXPECT_EQ(grows.x(), 110);
    EXPECT_EQ(grows.width(), 190);
}

TEST_F(WrappingRowTest, HiddenPartsTakeNoRoom) {
    window_.setLayout(row_);
    row_->setSpacing(10);
    Add(100).hide();
    const QWidget& second = Add(100);
    Show(300);
    EXPECT_EQ(second.x(), 0);
    EXPECT_EQ(row_->heightForWidth(100), 20);
}

TEST_F(WrappingRowTest, TakesThePlaceOfARow) {
    auto* column = new QVBoxLayout(&window_);
    auto* plain = new QHBoxLayout;
    auto* button = new QPushButton("x", &window_);
    plain->addWidget(button);
    plain->addStretch();
    column->addWidget(new QPushButton("above", &window_));
    column->addLayout(plain);
    delete row_;
    row_ = WrappingRow::InPlaceOf(plain);
    EXPECT_EQ(column->indexOf(row_), 1);
    ASSERT_EQ(row_->count(), 1); // the stretch has gone
    EXPECT_EQ(row_->itemAt(0)->widget(), button);
}

class FoldingGroupTest : public testing::Test {
protected:
    FoldingGroupTest() {
        column_->addWidget(inside_);
        outer_->addWidget(&box_);
        outer_->addStretch();
        box_.setObjectName("Frame9");
        group_ = new FoldingGroup(box_);
        window_.resize(300, 300);
        window_.show();
    }

    QWidget window_;
    QVBoxLayout* outer_ = new QVBoxLayout(&window_);
    QGroupBox box_{"Zoom"};
    QVBoxLayout* column_ = new QVBoxLayout(&box_);
    QPushButton* inside_ = new QPushButton("x");
    FoldingGroup* group_ = nullptr;
};

TEST_F(FoldingGroupTest, FoldsToItsTitleAndBack) {
    const QSignalSpy toggled(group_, &FoldingGroup::Toggled);
    const int height = box_.height();
    tests::Find<QAbstractButton>(box_, "foldFrame9").click();
    EXPECT_TRUE(group_->IsFolded());
    EXPECT_TRUE(inside_->isHidden());
    EXPECT_LT(box_.maximumHeight(), height / 2);
    tests::Find<QAbstractButton>(box_, "foldFrame9").click();
    EXPECT_FALSE(group_->IsFolded());
    EXPECT_FALSE(inside_->isHidden());
    EXPECT_GE(box_.maximumHeight(), height);
    EXPECT_EQ(toggled.size(), 2);
}

TEST_F(FoldingGroupTest, AClickOnTheTitleFoldsOneBelowItDoesNot) {
    QTest::mouseClick(&box_, Qt::LeftButton, {}, {20, box_.height() - 3});
    EXPECT_FALSE(group_->IsFolded());
    QTest::mouseClick(&box_, Qt::LeftButton, {}, {20, 3});
    EXPECT_TRUE(group_->IsFolded());
}

TEST_F(FoldingGroupTest, TheProgramFoldsWithoutAWord) {
    const QSignalSpy toggled(group_, &FoldingGroup::Toggled);
    group_->Fold(true);
    EXPECT_TRUE(inside_->isHidden());
    EXPECT_EQ(toggled.size(), 0);
    EXPECT_EQ(group_->Name(), "Frame9");
}

TEST(ShortenedLabel, EndsInDotsWhereItHasNoRoom) {
    ShortenedLabel label;
    label.setText("theater.L2 saved at 14:05");
    const int whole = label.fontMetrics().horizontalAdvance(label.text());
    label.resize(whole, 20);
    EXPECT_EQ(label.Shown(), label.text());
    label.resize(whole - 1, 20);
    EXPECT_TRUE(label.Shown().endsWith("..."));
    EXPECT_TRUE(label.text().startsWith(label.Shown().chopped(3)));
    EXPECT_LE(label.fontMetrics().horizontalAdvance(label.Shown()), whole - 1);
    label.resize(1, 20);
    EXPECT_EQ(label.Shown(), "...");
    EXPECT_LT(label.minimumSizeHint().width(), whole / 4);
}

TEST(EdgeHandle, IsClickedOrDrawnButNotBoth) {
    EdgeHandle handle(nullptr);
    handle.resize(9, 100);
    handle.show();
    const QSignalSpy clicked(&handle, &QAbstractButton::clicked);
    const QSignalSpy dragged(&handle, &EdgeHandle::Dragged);
    QTest::mouseClick(&handle, Qt::LeftButton);
    EXPECT_EQ(clicked.size(), 1);
    QTest::mousePress(&handle, Qt::LeftButton, {}, {4, 50});
    QTest::mouseMove(&handle, {44, 50});
    QTest::mouseMove(&handle, {34, 50});
    QTest::mouseRelease(&handle, Qt::LeftButton, {}, {34, 50});
    EXPECT_EQ(clicked.size(), 1);
    ASSERT_EQ(dragged.size(), 2);
    EXPECT_EQ(dragged.at(0).at(0).toInt(), 40);
    EXPECT_EQ(dragged.at(1).at(0).toInt(), -10);
}

} // namespace
} // namespace vardenix
