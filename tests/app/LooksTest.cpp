// Every control of every window says what it is, and can be read in the light look and in
// the dark one.
#include "app/OpenedWorkspace.h"
#include "platform/windows/Theme.h"
#include "support/TheaterMaker.h"
#include "workspace/windows/FrmVXMain.h"

#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QToolTip>

#include <cmath>

namespace vardenix {
namespace {

// Of two colours, from 1 to 21, as the guidelines for readable pages have it.
double Brightness(const QColor& color) {
    const auto part = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) +
           0.0722 * part(color.blueF());
}

double Contrast(const QColor& a, const QColor& b) {
    const double lighter = std::max(Brightness(a), Brightness(b));
    const double darker = std::min(Brightness(a), Brightness(b));
    return (lighter + 0.05) / (darker + 0.05);
}

class LooksTest : public tests::OpenedWorkspace {
protected:
    LooksTest() {
        state_.Configuration.PalWinVis = true;
        state_.Catalogue.Lookup[1].Terrain = 1;
        state_.Catalogue.Lookup[1].Name = "HSEA";
    }
    ~LooksTest() override { UseScheme(Scheme::Light); }

    void OpenAll() {
        Open();
        subsystems_->Features.Show(true);
        subsystems_->Search.ShowOptions();
        subsystems_->Search.ShowResults(true);
        subsystems_->History.Show(true);
    }

    // Windows hear of it when events come next.
    static void Use(Scheme scheme) {
        UseScheme(scheme);
        QCoreApplication::processEvents();
    }
    static QString Place(const QWidget& control) {
        return control.window()->objectName() + " " + control.metaObject()->className() +
               " " + control.objectName();
    }
    static double ContrastOf(const QWidget& control) {
        const auto color = [&control](QPalette::ColorRole role) {
            return control.palette().color(QPalette::Active, role);
        };
        if (qobject_cast<const QLineEdit*>(&control) != nullptr ||
            qobject_cast<const QAbstractSpinBox*>(&control) != nullptr)
            return std::min(
                Contrast(color(QPalette::Text), color(QPalette::Base)),
                Contrast(color(QPalette::PlaceholderText), color(QPalette::Base)));
        if (qobject_cast<const QComboBox*>(&control) != nullptr)
            return Contrast(color(QPalette::ButtonText), color(QPalette::Button));
        return Contrast(color(control.foregroundRole()), color(control.backgroundRole()));
    }
    static void EachControl(const std::function<void(QWidget&)>& look) {
        for (QWidget* window : QApplication::topLevelWidgets())
            for (QWidget* control : window->findChildren<QWidget*>())
                if (!control->objectName().startsWith("qt_") && !control->isHidden() &&
                    !control->window()->inherits("QComboBoxPrivateContainer"))
                    look(*control);
    }
    void ExpectReadable() {
        EachControl([](QWidget& control) {
            EXPECT_GE(ContrastOf(control), 4.5) << Place(control).toStdString();
        });
        const QPalette tips = QToolTip::palette();
        EXPECT_GE(Contrast(tips.color(QPalette::ToolTipText),
                           tips.color(QPalette::ToolTipBase)),
                  4.5);
        const QPalette all = QApplication::palette();
        for (const auto& [ink, ground] :
             {std::pair{QPalette::HighlightedText, QPalette::Highlight},
              std::pair{QPalette::Link, QPalette::Base},
              std::pair{QPalette::Link, QPalette::Window},
              std::pair{QPalette::Text, QPalette::AlternateBase}})
            EXPECT_GE(Contrast(all.color(ink), all.color(ground)), 4.5) << ink;
        EXPECT_GE(Contrast(DangerColor(), all.color(QPalette::Button)), 4.5);
    }
};

TEST_F(LooksTest, ControlsCanBeReadInBothLooks) {
    OpenAll();
    Use(Scheme::Light);
    ExpectReadable();
    Use(Scheme::Dark);
    EXPECT_TRUE(IsDark());
    ExpectReadable();
    EXPECT_LT(OffColor().lightness(), 128);
}

TEST_F(LooksTest, TheYellowOfHeightsIsTheSameInBothLooks) {
    OpenAll();
    const auto ground = [this] {
        return workspace_->Panel().palette().color(QPalette::Window);
    };
    workspace_->Panel().ChangeControlsForL0Edit(true);
    const QColor yellow = ground();
    Use(Scheme::Dark);
    EXPECT_EQ(ground(), yellow);
    ExpectReadable();
    workspace_->Panel().ChangeControlsForL0Edit(false);
    EXPECT_EQ(ground(), OffColor());
    Use(Scheme::Light);
    EXPECT_EQ(ground(), OffColor());
}

TEST_F(LooksTest, EveryControlThatTakesTheKeyboardHasAName) {
    OpenAll();
    int controls = 0;
    EachControl([&controls](QWidget& control) {
        if (control.focusPolicy() == Qt::NoFocus || control.focusProxy() != nullptr)
            return;
        const QAccessibleInterface* told =
            QAccessible::queryAccessibleInterface(&control);
        ASSERT_NE(told, nullptr);
        // A box within a box is read as that.
        const bool inner = qobject_cast<QAbstractSpinBox*>(control.parentWidget()) ||
                           qobject_cast<QComboBox*>(control.parentWidget());
        EXPECT_TRUE(inner || !told->text(QAccessible::Name).isEmpty())
            << Place(control).toStdString();
        ++controls;
    });
    EXPECT_GT(controls, 80);
}

} // namespace
} // namespace vardenix
