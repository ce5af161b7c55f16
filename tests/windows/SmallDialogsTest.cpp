#include "mapview/windows/FrmVXAreasPathsOptions.h"
#include "mapview/windows/FrmVXHeightCols.h"
#include "platform/windows/ColorButton.h"
#include "support/FakePlatform.h"
#include "texts/RuntimeError.h"
#include "windows/FrmVXMainTest.h"
#include "workspace/windows/FrmAbout.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QTreeWidget>

namespace vardenix {
namespace {

using tests::Find;

class FrmVXHeightColsTest : public testing::Test {
protected:
    FrmVXHeightColsTest() {
        settings_.HeightColorList = {{0x0000FF, 0, 100}, {0x00FF00, 100, 200}};
    }

    void Open() {
        window_ = std::make_unique<FrmVXHeightCols>(settings_, dialogs_, workspace_);
        window_->show();
    }
    void Click(const char* name) { Find<QAbstractButton>(*window_, name).click(); }
    QTreeWidget& Table() { return Find<QTreeWidget>(*window_, "ListView1"); }
    void Select(int row) { Table().setCurrentItem(Table().topLevelItem(row)); }
    QLineEdit& Box(const char* name) { return Find<QLineEdit>(*window_, name); }
    // "0-100 100-200 "
    std::string Rows() {
        std::string rows;
        for (int i = 0; i < Table().topLevelItemCount(); ++i)
            rows += Table().topLevelItem(i)->text(0).toStdString() + "-" +
                    Table().topLevelItem(i)->text(1).toStdString() + " ";
        return rows;
    }

    Configuration settings_;
    tests::ScriptedDialogs dialogs_;
    tests::ToldWorkspace workspace_;
    std::unique_ptr<FrmVXHeightCols> window_;
};

TEST_F(FrmVXHeightColsTest, ShowsTheTableWithEachRowsColor) {
    settings_.UseSingleHeightColor = true;
    Open();
    EXPECT_EQ(Rows(), "0-100 100-200 ");
    EXPECT_TRUE(Find<QRadioButton>(*window_, "Option1_0").isChecked());
    EXPECT_EQ(Find<ColorButton>(*window_, "cmdDefCol").Color(), 0xFFu);
    Select(1);
    const QImage seen = Table().viewport()->grab().toImage();
    for (const int row : {0, 1}) {
        const QRect cell = Table().visualItemRect(Table().topLevelItem(row));
        const QPoint inColor(Table().columnViewportPosition(2) + 10, cell.center().y());
        EXPECT_EQ(seen.pixelColor(inColor),
                  row == 0 ? QColor(0xFF, 0, 0) : QColor(0, 0xFF, 0));
    }
    EXPECT_EQ(Box("txtMin").text().toStdString(), "100");
    EXPECT_EQ(Box("txtMax").text().toStdString(), "200");
    EXPECT_EQ(Find<ColorButton>(*window_, "cmdCol").Color(), 0x00FF00u);
}

TEST_F(FrmVXHeightColsTest, AddsBehindTheSelectedRowOnly) {
    Open();
    EXPECT_FALSE(Find<QWidget>(*window_, "cmdAdd").isEnabled());
    Select(0);
    Box("txtMin").setText("101");
    Box("txtMax").setText("150");
    Click("cmdAdd");
    EXPECT_EQ(Rows(), "0-100 101-150 100-200 ");
}

TEST_F(FrmVXHeightColsTest, ChangesAndDeletesTheSelectedRow) {
    Open();
    Select(1);
    Box("txtMax").setText("900");
    dialogs_.ExpectColor(0x00FF00, 0x123456);
    Click("cmdCol");
    dialogs_.ExpectCancel();
    Click("cmdCol");
    Click("cmdChange");
    EXPECT_EQ(Rows(), "0-100 100-900 ");
    Select(0);
    Click("cmdDelete");
    EXPECT_EQ(Rows(), "100-900 ");
    Click("cmdDelete");
    EXPECT_EQ(Rows(), "");
    EXPECT_FALSE(Find<QWidget>(*window_, "cmdDelete").isEnabled());
    Click("cmdAdd"); // an empty table takes its first row
    EXPECT_EQ(Rows(), "100-900 ");
    Click("cmdOK");
    ASSERT_EQ(settings_.HeightColorList.size(), 1u);
    EXPECT_EQ(settings_.HeightColorList[0].Color, 0x123456u);
    EXPECT_EQ(settings_.HeightColorList[0].Max, 900);
}

TEST_F(FrmVXHeightColsTest, ARowThatIsNotSelectedIsNotActedOn) {
    const auto nothingCanBeDone = [this] {
        return !Find<QWidget>(*window_, "cmdAdd").isEnabled() &&
               !Find<QWidget>(*window_, "cmdChange").isEnabled() &&
               !Find<QWidget>(*window_, "cmdDelete").isEnabled();
    };
    Open();
    // Where the keyboard stands, as when Tab has come to the table.
    Table().setCurrentItem(Table().topLevelItem(0), 0, QItemSelectionModel::NoUpdate);
    QTest::mouseClick(Table().viewport(), Qt::LeftButton, Qt::ControlModifier,
                      Table().visualItemRect(Table().topLevelItem(1)).center());
    EXPECT_FALSE(nothingCanBeDone());
    QTest::mouseClick(Table().viewport(), Qt::LeftButton, Qt::ControlModifier,
                      Table().visualItemRect(Table().topLevelItem(1)).center());
    EXPECT_TRUE(Table().selectedItems().isEmpty());
    EXPECT_TRUE(nothingCanBeDone());
    EXPECT_EQ(Rows(), "0-100 100-200 ");
}

TEST_F(FrmVXHeightColsTest, TakesDigitsOnly) {
    Open();
    for (const char* name : {"txtMin", "txtMax"}) {
        Box(name).clear();
        QTest::keyClicks(&Box(name), "-7.5x");
        EXPECT_EQ(Box(name).text().toStdString(), "75");
    }
}

TEST_F(FrmVXHeightColsTest, OkStoresAndRepaints) {
    Open();
    Click("Option1_0");
    dialogs_.ExpectColor(0xFF, 0x445566);
    Click("cmdDefCol");
    Select(0);
    Click("cmdDelete");
    EXPECT_EQ(settings_.HeightColorList.size(), 2u);
    EXPECT_FALSE(settings_.UseSingleHeightColor);
    Click("cmdOK");
    EXPECT_TRUE(settings_.UseSingleHeightColor);
    EXPECT_EQ(settings_.HeightDefaultColor, 0x445566u);
    ASSERT_EQ(settings_.HeightColorList.size(), 1u);
    EXPECT_EQ(settings_.HeightColorList[0].Min, 100);
    EXPECT_EQ(workspace_.Story, "paint ");
    EXPECT_FALSE(window_->isVisible());
}

TEST_F(FrmVXHeightColsTest, CancelStoresNothing) {
    Open();
    Click("Option1_0");
    Select(0);
    Click("cmdDelete");
    Click("cmdCancel");
    EXPECT_FALSE(settings_.UseSingleHeightColor);
    EXPECT_EQ(settings_.HeightColorList.size(), 2u);
    EXPECT_EQ(workspace_.Story, "");
    EXPECT_FALSE(window_->isVisible());
}

TEST(FrmVXAreasPathsOptions, StoresAllNineSettingsAndRepaints) {
    Configuration settings;
    MapView view;
    tests::ScriptedDialogs dialogs;
    tests::ToldWorkspace workspace;
    FrmVXAreasPathsOptions window(settings, view, dialogs, workspace);
    EXPECT_EQ(window.windowTitle().toStdString(), "Areas/Paths Options");
    window.show();
    for (const char* name : {"chkShowAreas", "chkFilled", "chkShowPaths"})
        Find<QCheckBox>(window, name).click();
    struct Row {
        const char* Name;
        uint32_t Configuration::*Setting;
    };
    const std::vector<Row> rows{
        {"cmdAreasWaterColor", &Configuration::VXAreasWaterColor},
        {"cmdAreasForestCol", &Configuration::VXAreasForestColor},
        {"cmdPathsRoadColor", &Configuration::VXPathsRoadColor},
        {"cmdPathsRiverColor", &Configuration::VXPathsRiverColor},
        {"cmdPathsRailColor", &Configuration::VXPathsRailColor},
        {"cmdPathsBridgeColor", &Configuration::VXPathsBridgeColor}};
    const Configuration before = settings;
    uint32_t chosen = 0x010203;
    for (const Row& row : rows) {
        dialogs.ExpectColor(before.*row.Setting, chosen++);
        Find<QAbstractButton>(window, row.Name).click();
        dialogs.ExpectCancel();
        Find<QAbstractButton>(window, row.Name).click();
        EXPECT_EQ(settings.*row.Setting, before.*row.Setting) << row.Name;
    }
    EXPECT_TRUE(settings.VXShowAreas && settings.VXShowPaths);
    Find<QAbstractButton>(window, "Command1").click();
    EXPECT_FALSE(settings.VXShowAreas || settings.VXShowPaths);
    EXPECT_TRUE(settings.VXAreasFilled);
    EXPECT_FALSE(view.ShowAreas || view.ShowPaths);
    EXPECT_TRUE(view.AreasFilled);
    chosen = 0x010203;
    for (const Row& row : rows)
        EXPECT_EQ(settings.*row.Setting, chosen++) << row.Name;
    EXPECT_EQ(workspace.Story, "paint ");
    EXPECT_FALSE(window.isVisible());
}

TEST(FrmAbout, TellsTheVersionAndOpensThePage) {
    tests::FakePlatform platform;
    FrmAbout window(platform.All);
    window.show();
    EXPECT_EQ(Find<QLabel>(window, "lblVersion").text().toStdString(), "Vardenix v3.0.1");
    Find<QAbstractButton>(window, "Image1").click();
    EXPECT_EQ(platform.Processes.Story, "open http://www.vardenix.example/vardenix");
    Find<QAbstractButton>(window, "Command1").click();
    EXPECT_FALSE(window.isVisible());
}

TEST(FrmAbout, ALinkThatNothingOpensIsToldAsAnyCommandIs) {
    class NoBrowser : public tests::FakeProcesses {
    public:
        void Open(const std::string& address) override {
            throw RuntimeError(ErrorNumber::FileNotFound, "starting " + address);
        }
    } processes;
    tests::FakePlatform fake;
    const Platform platform{fake.Dialogs, fake.Registry, fake.Clock, processes};
    FrmAbout window(platform);
    window.show();
    fake.Dialogs.ExpectBox("Error...",
                           "ERROR number 53\nFile not found\nstarting "
                           "http://www.vardenix.example/vardenix",
                           BoxAnswer::Ok);
    Find<QAbstractButton>(window, "Image1").click();
    EXPECT_TRUE(fake.Dialogs.AllAnswered());
    EXPECT_TRUE(window.isVisible());
}

} // namespace
} // namespace vardenix
