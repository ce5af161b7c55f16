#include "texts/RuntimeError.h"
#include "windows/WindowTest.h"

#include <QPushButton>
#include <QTest>

#include <new>

namespace vardenix {
namespace {

using tests::Barrier;
using tests::BarrierAnswers;

// A window whose button runs what a test wants.
class Window : public QWidget {
public:
    explicit Window(std::function<void()> work) : button_(this) {
        OnSignal(&button_, &QAbstractButton::clicked, this, std::move(work));
        show();
    }
    void Click() { QTest::mouseClick(&button_, Qt::LeftButton); }

private:
    QPushButton button_;
};

class RunTimeBarrierTest : public testing::Test {
protected:
    RunTimeBarrierTest() {
        Barrier().OnEnd = [this] { ++ends_; };
    }
    ~RunTimeBarrierTest() override { Barrier().OnEnd = nullptr; }

    BarrierAnswers answers_;
    int ends_ = 0;
};

TEST_F(RunTimeBarrierTest, TellsNumberDescriptionAndDetail) {
    Window window([] { throw RuntimeError(ErrorNumber::DiskFull, "writing a b.L2"); });
    answers_.ExpectBox("Vardenix", "Run-time error '61':\n\nDisk full\nwriting a b.L2",
                       BoxAnswer::Continue);
    window.Click();
    EXPECT_TRUE(answers_.AllAnswered());
    EXPECT_EQ(answers_.LastButtons(), BoxButtons::ContinueEnd);
    EXPECT_EQ(answers_.LastIcon(), BoxIcon::Critical);
    EXPECT_EQ(ends_, 0);
}

TEST_F(RunTimeBarrierTest, OutOfMemoryIsError7) {
    Window window([] { throw std::bad_alloc(); });
    answers_.ExpectBox("Vardenix", "Run-time error '7':\n\nOut of memory",
                       BoxAnswer::Continue);
    window.Click();
    EXPECT_TRUE(answers_.AllAnswered());
}

TEST_F(RunTimeBarrierTest, AnyOtherErrorGivesItsText) {
    Window window([] { throw std::logic_error("posts out of order"); });
    answers_.ExpectBox("Vardenix", "posts out of order", BoxAnswer::Continue);
    window.Click();
    EXPECT_TRUE(answers_.AllAnswered());
}

TEST_F(RunTimeBarrierTest, ContinueGivesDisabledWindowsAndThePointerBack) {
    QWidget panel;
    Window window([&panel] {
        panel.setEnabled(false);
        QApplication::setOverrideCursor(Qt::WaitCursor);
        throw RuntimeError(ErrorNumber::Overflow);
    });
    answers_.ExpectBox("Vardenix", "Run-time error '6':\n\nOverflow",
                       BoxAnswer::Continue);
    window.Click();
    EXPECT_TRUE(panel.isEnabled());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(RunTimeBarrierTest, ContinueLeavesAPanelAloneThatRunningWorkHasLocked) {
    QWidget panel;
    panel.setEnabled(false);
    panel.setProperty(LockedByWork, true);
    Window window([] { throw RuntimeError(ErrorNumber::Overflow); });
    answers_.ExpectBox("Vardenix", "Run-time error '6':\n\nOverflow",
                       BoxAnswer::Continue);
    window.Click();
    EXPECT_FALSE(panel.isEnabled());
}

TEST_F(RunTimeBarrierTest, EndRunsTheWayOut) {
    Window window([] { throw RuntimeError(ErrorNumber::Overflow); });
    answers_.ExpectBox("Vardenix", "Run-time error '6':\n\nOverflow", BoxAnswer::End);
    window.Click();
    EXPECT_EQ(ends_, 1);
}

TEST_F(RunTimeBarrierTest, AnErrorOfTheWayOutIsToldToo) {
    Barrier().OnEnd = [] { throw RuntimeError(ErrorNumber::PermissionDenied); };
    Window window([] { throw RuntimeError(ErrorNumber::Overflow); });
    answers_.ExpectBox("Vardenix", "Run-time error '6':\n\nOverflow", BoxAnswer::End);
    answers_.ExpectBox("Vardenix", "Run-time error '70':\n\nPermission denied",
                       BoxAnswer::Continue);
    window.Click();
    EXPECT_TRUE(answers_.AllAnswered());
}

TEST_F(RunTimeBarrierTest, OneBoxAtATime) {
    Window other([] { throw RuntimeError(ErrorNumber::TypeMismatch); });
    Window window([] { throw RuntimeError(ErrorNumber::Overflow); });
    answers_.ExpectBox("Vardenix", "Run-time error '6':\n\nOverflow",
                       BoxAnswer::Continue);
    answers_.WhileBoxIsUp = [&other] { other.Click(); };
    window.Click();
    EXPECT_TRUE(answers_.AllAnswered());
}

TEST_F(RunTimeBarrierTest, HandlersOfEventsAreBehindTheBarrierToo) {
    class Failing : public QObject {
        bool event(QEvent*) override { throw RuntimeError(ErrorNumber::Overflow); }
    };
    Failing failing;
    answers_.ExpectBox("Vardenix", "Run-time error '6':\n\nOverflow",
                       BoxAnswer::Continue);
    QCoreApplication::postEvent(&failing, new QEvent(QEvent::User));
    QCoreApplication::sendPostedEvents(&failing, QEvent::User);
    EXPECT_TRUE(answers_.AllAnswered());
}

TEST_F(RunTimeBarrierTest, ASignalsArgumentsArriveWhereTheyAreWanted) {
    QPushButton button;
    button.setCheckable(true);
    bool seen = false;
    int calls = 0;
    OnSignal(&button, &QAbstractButton::toggled, &button, [&](bool on) { seen = on; });
    OnSignal(&button, &QAbstractButton::toggled, &button, [&] { ++calls; });
    button.click();
    EXPECT_TRUE(seen);
    EXPECT_EQ(calls, 1);
}

} // namespace
} // namespace vardenix
