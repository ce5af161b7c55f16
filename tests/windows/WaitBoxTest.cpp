#include "platform/windows/WaitBox.h"

#include "windows/WindowTest.h"

#include <QAbstractButton>
#include <QDialog>
#include <QLabel>
#include <QTest>

namespace vardenix {
namespace {

QDialog* Shown() {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->objectName() == "WaitBox" && widget->isVisible())
            return static_cast<QDialog*>(widget);
    return nullptr;
}

QAbstractButton* ButtonOf(QDialog& box, const QString& caption) {
    for (auto* button : box.findChildren<QAbstractButton*>())
        if (button->text().remove('&') == caption && button->isVisible())
            return button;
    return nullptr;
}

LockWait WaitFor(bool mayPassOver) {
    return {"/theater/terrain", {{123, "other", 7, "max", false}}, mayPassOver};
}

TEST(WaitBox, SaysForWhomTheProgramWaitsUntilThatIsOver) {
    WaitBox watcher;
    EXPECT_EQ(watcher.Waiting(WaitFor(false)), WaitAnswer::GoOn);
    ASSERT_NE(Shown(), nullptr);
    EXPECT_EQ(Shown()->findChild<QLabel*>()->text(),
              "Waiting for other (process 123 of max), which reads or saves the files of "
              "/theater/terrain...");
    EXPECT_EQ(ButtonOf(*Shown(), "Save all the same"), nullptr);
    EXPECT_EQ(watcher.Waiting(WaitFor(true)), WaitAnswer::GoOn);
    EXPECT_NE(ButtonOf(*Shown(), "Save all the same"), nullptr);
    watcher.WaitIsOver();
    EXPECT_EQ(Shown(), nullptr);
}

TEST(WaitBox, GivesUpByCancelAndEscAndPassesOverByItsButton) {
    WaitBox watcher;
    const auto after = [&](auto press) {
        EXPECT_EQ(watcher.Waiting(WaitFor(true)), WaitAnswer::GoOn);
        press(*Shown());
        const WaitAnswer answer = watcher.Waiting(WaitFor(true));
        watcher.WaitIsOver();
        return answer;
    };
    EXPECT_EQ(after([](QDialog& box) { ButtonOf(box, "Cancel")->click(); }),
              WaitAnswer::GiveUp);
    EXPECT_EQ(after([](QDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); }),
              WaitAnswer::GiveUp);
    EXPECT_EQ(after([](QDialog& box) { QTest::keyClick(&box, Qt::Key_Return); }),
              WaitAnswer::GiveUp);
    EXPECT_EQ(after([](QDialog& box) { ButtonOf(box, "Save all the same")->click(); }),
              WaitAnswer::PassOver);
    EXPECT_EQ(after([](QDialog& box) { box.close(); }), WaitAnswer::GiveUp);
}

} // namespace
} // namespace vardenix
