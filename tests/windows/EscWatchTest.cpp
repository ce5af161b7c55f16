// Esc on a platform that is not X11, as the one of these tests.
#include "platform/windows/EscWatch.h"

#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QShortcut>
#include <QTest>
#include <QTimerEvent>
#include <QWidget>
#include <gtest/gtest.h>

namespace vardenix::tests {
namespace {

// Tells what it was made to act upon.
class Window : public QWidget {
public:
    QString Story;
    int Timer = 0;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        Story += event->key() == Qt::Key_Escape ? "Esc " : event->text() + " ";
    }
    void mousePressEvent(QMouseEvent*) override { Story += "click "; }
    void timerEvent(QTimerEvent* event) override {
        // Those that waited come after it has ended.
        if (event->timerId() != Timer)
            return;
        killTimer(std::exchange(Timer, 0));
        Story += "timer ";
    }
    void closeEvent(QCloseEvent* event) override {
        Story += "close ";
        event->ignore();
    }
};

class EscWatchTest : public testing::Test {
protected:
    EscWatchTest() {
        window_.show();
        window_.activateWindow();
        QApplication::processEvents();
        window_.Story.clear();
    }
    void Press(Qt::Key key, const QString& text) {
        QApplication::postEvent(
            &window_, new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, text));
    }
    void PressEsc() { Press(Qt::Key_Escape, "\x1b"); }
    void Click() {
        QApplication::postEvent(
            &window_, new QMouseEvent(QEvent::MouseButtonPress, {1, 1}, {1, 1},
                                      Qt::LeftButton, Qt::LeftButton, Qt::NoModifier));
    }
    bool SoonPressed() {
        QElapsedTimer time;
        time.start();
        while (!watch_.Pressed() && !time.hasExpired(30000)) {
        }
        return watch_.Pressed();
    }
    // Whether it was pressed by the time at which what is queued now has been gone
    // through, some times over.
    bool PressedInAWhile() {
        bool pressed = false;
        for (int looks = 0; looks < 3; ++looks) {
            bool through = false;
            QMetaObject::invokeMethod(
                &window_, [&through] { through = true; }, Qt::QueuedConnection);
            while (!through && !pressed)
                pressed = watch_.Pressed();
        }
        return pressed;
    }

    Window window_;
    EscWatch watch_;
};

TEST_F(EscWatchTest, EscIsSeenAndStaysInTheQueue) {
    watch_.Begin();
    EXPECT_FALSE(PressedInAWhile());
    PressEsc();
    EXPECT_TRUE(SoonPressed());
    EXPECT_EQ(window_.Story, "");
    QApplication::processEvents();
    EXPECT_EQ(window_.Story, "Esc ");
}

TEST_F(EscWatchTest, EscFromBeforeDoesNotCountAndStaysInTheQueue) {
    PressEsc();
    watch_.Begin();
    EXPECT_FALSE(PressedInAWhile());
    watch_.Begin();
    EXPECT_FALSE(PressedInAWhile());
    PressEsc();
    EXPECT_TRUE(SoonPressed());
    QApplication::processEvents();
    EXPECT_EQ(window_.Story, "Esc Esc ");
}

TEST_F(EscWatchTest, WhatElseHappensWaitsInItsOrder) {
    watch_.Begin();
    window_.Timer = window_.startTimer(0);
    Press(Qt::Key_A, "a");
    Click();
    EXPECT_FALSE(PressedInAWhile());
    Press(Qt::Key_B, "b");
    QApplication::postEvent(&window_, new QCloseEvent);
    EXPECT_FALSE(PressedInAWhile());
    EXPECT_EQ(window_.Story, "");
    QApplication::processEvents();
    EXPECT_EQ(window_.Story.count("timer "), 1);
    EXPECT_EQ(window_.Story.remove("timer "), "a click b close ");
    EXPECT_TRUE(window_.isVisible());
}

TEST_F(EscWatchTest, EscThatIsAShortcutIsSeenAndWaits) {
    QShortcut shortcut(QKeySequence(Qt::Key_Escape), &window_);
    QObject::connect(&shortcut, &QShortcut::activated,
                     [this] { window_.Story += "shortcut "; });
    watch_.Begin();
    // As the platform hands it in: while events are handed out.
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    QMetaObject::invokeMethod(
        &window_, [this] { QTest::keyClick(&window_, Qt::Key_Escape); },
        Qt::QueuedConnection);
    EXPECT_TRUE(SoonPressed());
    EXPECT_EQ(window_.Story, "");
    QApplication::processEvents();
    EXPECT_EQ(window_.Story, "shortcut ");
}

TEST_F(EscWatchTest, EventsOfAWindowThatIsGoneGoWithIt) {
    auto gone = std::make_unique<Window>();
    watch_.Begin();
    QApplication::postEvent(gone.get(), new QCloseEvent);
    QMetaObject::invokeMethod(
        &window_, [&gone] { gone.reset(); }, Qt::QueuedConnection);
    EXPECT_FALSE(PressedInAWhile());
    QApplication::processEvents();
    EXPECT_EQ(window_.Story, "");
    EXPECT_EQ(gone, nullptr);
}

TEST_F(EscWatchTest, NothingIsPressedBeforeTheFirstBegin) {
    PressEsc();
    for (int calls = 0; calls < 100; ++calls)
        EXPECT_FALSE(watch_.Pressed());
    QApplication::processEvents();
    EXPECT_EQ(window_.Story, "Esc ");
}

} // namespace
} // namespace vardenix::tests
