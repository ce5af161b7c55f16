#include "platform/windows/QtDialogs.h"

#include "platform/windows/ColorButton.h"
#include "platform/windows/FileFilter.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"
#include "windows/WindowTest.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QClipboard>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFontDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

namespace vardenix {
namespace {

using tests::TestFolder;
using tests::WhenModal;

void Press(QDialog& dialog, const QString& caption) {
    for (auto* button : dialog.findChildren<QAbstractButton*>())
        if (button->text().remove('&') == caption)
            return button->click();
    ADD_FAILURE() << "no button " << caption.toStdString();
    dialog.reject();
}

void TypeName(QFileDialog& dialog, const std::string& name) {
    dialog.findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(name));
    dialog.findChild<QDialogButtonBox*>("buttonBox")->buttons().first()->click();
}

template <typename Work>
void ExpectCancelled(Work work) {
    try {
        work();
        ADD_FAILURE() << "no cancel";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.NumberValue(), 32755);
    }
}

TEST(QtDialogsBox, CopiesTheDetailsOfAnErrorAndStays) {
    QtDialogs dialogs;
    dialogs.Details = [] { return "Vardenix 3\nChanged last: Paint"; };
    const auto copied = [&](BoxButtons buttons, const QString& press) {
        QGuiApplication::clipboard()->clear();
        WhenModal<QMessageBox>([press](QMessageBox& box) {
            Press(box, "Copy details");
            EXPECT_TRUE(box.isVisible());
            if (press == "Esc")
                QTest::keyClick(&box, Qt::Key_Escape);
            else if (press == "Enter")
                QTest::keyClick(&box, Qt::Key_Return);
            else
                Press(box, press);
        });
        const BoxAnswer answer =
            dialogs.MessageBox("Disk full", "Error...", BoxIcon::Critical, buttons);
        EXPECT_EQ(QGuiApplication::clipboard()->text(),
                  "Error...\nDisk full\n\nVardenix 3\nChanged last: Paint");
        return answer;
    };
    EXPECT_EQ(copied(BoxButtons::Ok, "Esc"), BoxAnswer::Ok);
    EXPECT_EQ(copied(BoxButtons::Ok, "Enter"), BoxAnswer::Ok);
    EXPECT_EQ(copied(BoxButtons::ContinueEnd, "Enter"), BoxAnswer::Continue);
    EXPECT_EQ(copied(BoxButtons::ContinueEnd, "End"), BoxAnswer::End);
    EXPECT_EQ(copied(BoxButtons::YesNo, "Esc"), BoxAnswer::No);
}

TEST(QtDialogsBox, ShowsItsTextsAndGivesTheButtonPressed) {
    QtDialogs dialogs;
    const auto ask = [&dialogs](BoxButtons buttons, const QString& press) {
        WhenModal<QMessageBox>([press](QMessageBox& box) {
            EXPECT_EQ(box.text(), "Some <text>\nand more");
            EXPECT_EQ(box.windowTitle(), "Confirm");
            EXPECT_EQ(box.icon(), QMessageBox::Warning);
            if (press == "Esc")
                QTest::keyClick(&box, Qt::Key_Escape);
            else if (press == "Enter")
                QTest::keyClick(&box, Qt::Key_Return);
            else
                Press(box, press);
        });
        return dialogs.MessageBox("Some <text>\nand more", "Confirm", BoxIcon::Warning,
                                  buttons);
    };
    EXPECT_EQ(ask(BoxButtons::Ok, "Esc"), BoxAnswer::Ok);
    EXPECT_EQ(ask(BoxButtons::YesNo, "Yes"), BoxAnswer::Yes);
    EXPECT_EQ(ask(BoxButtons::YesNo, "No"), BoxAnswer::No);
    EXPECT_EQ(ask(BoxButtons::YesNo, "Enter"), BoxAnswer::No);
    EXPECT_EQ(ask(BoxButtons::YesNo, "Esc"), BoxAnswer::No);
    EXPECT_EQ(ask(BoxButtons::YesUnlessNo, "Yes"), BoxAnswer::Yes);
    EXPECT_EQ(ask(BoxButtons::YesUnlessNo, "No"), BoxAnswer::No);
    EXPECT_EQ(ask(BoxButtons::YesUnlessNo, "Enter"), BoxAnswer::Yes);
    EXPECT_EQ(ask(BoxButtons::YesUnlessNo, "Esc"), BoxAnswer::Yes);
    EXPECT_EQ(ask(BoxButtons::YesNoSaveAll, "Yes"), BoxAnswer::Yes);
    EXPECT_EQ(ask(BoxButtons::YesNoSaveAll, "Save all and exit"), BoxAnswer::SaveAll);
    EXPECT_EQ(ask(BoxButtons::YesNoSaveAll, "Enter"), BoxAnswer::No);
    EXPECT_EQ(ask(BoxButtons::YesNoSaveAll, "Esc"), BoxAnswer::No);
    EXPECT_EQ(ask(BoxButtons::YesNoCancel, "No"), BoxAnswer::No);
    EXPECT_EQ(ask(BoxButtons::YesNoCancel, "Esc"), BoxAnswer::Cancel);
    EXPECT_EQ(ask(BoxButtons::ContinueEnd, "End"), BoxAnswer::End);
    EXPECT_EQ(ask(BoxButtons::ContinueEnd, "Enter"), BoxAnswer::Continue);
    EXPECT_EQ(ask(BoxButtons::ContinueEnd, "Esc"), BoxAnswer::Continue);
}

TEST(QtDialogsBox, HasTheProgramsNameWithoutATitle) {
    WhenModal<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), "Vardenix");
        box.accept();
    });
    QtDialogs().Notice("File A.dds wasn't found.", "", BoxIcon::Warning);
}

TEST(QtDialogsBox, OneOfSeveralCanSpareTheOthers) {
    const auto tell = [](size_t others, bool tick) {
        WhenModal<QMessageBox>([=](QMessageBox& box) {
            EXPECT_EQ(box.text(), "File A.PCX wasn't found.");
            EXPECT_EQ(box.informativeText(), "/tiles/A.dds");
            auto* rest = box.findChild<QCheckBox*>("chkOthers");
            EXPECT_EQ(rest == nullptr, others == 0);
            if (rest != nullptr) {
                EXPECT_EQ(rest->text().remove('&').toStdString(),
                          "The other " + std::to_string(others) + " too");
                EXPECT_FALSE(rest->isChecked());
                rest->setChecked(tick);
            }
            box.accept();
        });
        return QtDialogs().NoticeOfSeveral("File A.PCX wasn't found.", "",
                                           BoxIcon::Information, "/tiles/A.dds", others);
    };
    EXPECT_TRUE(tell(347, true));
    EXPECT_FALSE(tell(347, false));
    EXPECT_FALSE(tell(0, true));
}

TEST(QtDialogsBox, ALongPathDoesNotMakeItWiderThanAScreen) {
    std::string path = "/home";
    for (int i = 0; i < 40; ++i)
        path += "/A RATHER_LONG_FOLDER_NAME";
    std::replace(path.begin(), path.end(), ' ', '_');
    WhenModal<QMessageBox>([](QMessageBox& box) {
        EXPECT_LE(box.width(), 1000);
        box.accept();
    });
    QtDialogs().Notice(path, "Error...", BoxIcon::Critical);
}

TEST(FileFilters, ArePairsWhoseBlanksDoNotCount) {
    const QList<FileFilter> filters = ParseFilter("L2 Files | *.l2|All |*.tga;*.JPG");
    ASSERT_EQ(filters.size(), 2);
    EXPECT_EQ(filters[0].Description, "L2 Files");
    EXPECT_EQ(filters[0].ToolkitText(), "L2 Files (*.[lL]2)");
    EXPECT_EQ(filters[0].Extension(), "l2");
    EXPECT_EQ(filters[1].ToolkitText(), "All (*.[tT][gG][aA] *.[jJ][pP][gG])");
    EXPECT_EQ(ParseFilter("All (*.*)|*.*")[0].ToolkitText(), "All (*.*) (*)");
    EXPECT_EQ(ParseFilter("All (*.*)|*.*")[0].Extension(), "");
    EXPECT_TRUE(ParseFilter("").isEmpty());
}

TEST(FileFilters, TheExtensionDecidesWhichOneAFileIsPickedBy) {
    const QList<FileFilter> both = ParseFilter("L0 (*.l0)|*.l0|ELV (*.elv)|*.elv");
    EXPECT_EQ(FilterOf("/a.elv/theater.L0", both, 1), 0);
    EXPECT_EQ(FilterOf("/a/heights.Elv", both, 0), 1);
    EXPECT_EQ(FilterOf("/a/heights.txt", both, 1), 1);
    EXPECT_EQ(FilterOf("/a.elv/heights", both, 0), 0);
    EXPECT_EQ(FilterOf("", both, 0), 0);
    const QList<FileFilter> all = ParseFilter("L2|*.l2|All|*.*");
    EXPECT_EQ(FilterOf("a.l2", all, 1), 1); // as it was chosen
    EXPECT_EQ(FilterOf("a.txt", all, 0), 1);
}

TEST(FileFilters, OnlyNamesWithoutAnExtensionOfAFilterAreCompleted) {
    const QList<FileFilter> pictures =
        ParseFilter("Bitmap (*.bmp)|*.bmp|JPEG (*.jpg)|*.jpg");
    const auto completed = [&](const QString& name, int chosen) {
        return CompletedName(name, pictures, chosen).toStdString();
    };
    EXPECT_EQ(completed("/a.b/map", 0), "/a.b/map.bmp");
    EXPECT_EQ(completed("map_1.5", 0), "map_1.5.bmp");
    EXPECT_EQ(completed("map_1.5", 1), "map_1.5.jpg");
    EXPECT_EQ(completed("victim.png", 0), "victim.png.bmp");
    EXPECT_EQ(completed("map.", 0), "map.bmp");
    EXPECT_EQ(completed("MAP.BMP", 0), "MAP.BMP");
    EXPECT_EQ(completed("m1.jpg", 0), "m1.jpg"); // a JPEG then
    EXPECT_EQ(completed("m1.jpeg", 1), "m1.jpeg");
    EXPECT_EQ(CompletedName("map", ParseFilter("All|*.*"), 0), "map");
    EXPECT_EQ(CompletedName("map", {}, 0), "map");
}

TEST(QtDialogsOpen, GivesTheFileAndTheFilterAsPicked) {
    const TestFolder folder;
    const std::string file = folder.Write("My Theater.L2", "x");
    WhenModal<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Open theater's L2 file...");
        auto* filters = dialog.findChild<QComboBox*>("fileTypeCombo");
        EXPECT_EQ(filters->itemText(0), "L2 Files");
        filters->setCurrentIndex(1);
        TypeName(dialog, file);
    });
    const FileAnswer answer = QtDialogs().OpenFile(
        {"Open theater's L2 file...", "L2 Files | *.l2 | All Files | *.*"});
    EXPECT_EQ(answer.Path, file);
    EXPECT_EQ(answer.FilterIndex, 2);
}

TEST(QtDialogsOpen, BeginsAtTheInitialFile) {
    const TestFolder folder;
    folder.Write("terrain/Theater.L2", "x");
    WhenModal<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.directory().path().toStdString(), folder.File("terrain"));
        EXPECT_EQ(dialog.findChild<QLineEdit*>("fileNameEdit")->text(), "Theater.L2");
        dialog.reject();
    });
    ExpectCancelled([&] {
        QtDialogs().OpenFile(
            {"Open", "L2|*.l2", folder.Path() + "\\TERRAIN\\THEATER.L2"});
    });
}

TEST(QtDialogsOpen, TheExtensionChoosesTheFilter) {
    constexpr const char* elevations = "L0 (*.l0)|*.l0|ELV (*.elv)|*.elv";
    const TestFolder folder;
    const std::string heights = folder.Write("heights.ELV", "x");
    // Of the file that it begins at.
    WhenModal<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QComboBox*>("fileTypeCombo")->currentIndex(), 1);
        dialog.reject();
    });
    ExpectCancelled([&] { QtDialogs().OpenFile({"", elevations, heights}); });
    // Of a name that is typed, which could not be opened otherwise.
    WhenModal<QFileDialog>([&](QFileDialog& dialog) {
        auto* filters = dialog.findChild<QComboBox*>("fileTypeCombo");
        EXPECT_EQ(filters->currentIndex(), 0);
        // As keys do, but for the list of names that would come up.
        auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
        name->setText(QString::fromStdString(heights));
        emit name->textEdited(name->text());
        EXPECT_EQ(filters->currentIndex(), 1);
        TypeName(dialog, heights);
    });
    const FileAnswer answer = QtDialogs().OpenFile({"", elevations});
    EXPECT_EQ(answer.Path, heights);
    EXPECT_EQ(answer.FilterIndex, 2);
}

TEST(QtDialogsOpen, BeginsInTheUsersFolderOrTheNearestThatIsThere) {
    const TestFolder folder;
    const auto begin = [](const std::string& initial) {
        std::string begun;
        WhenModal<QFileDialog>([&begun](QFileDialog& dialog) {
            begun = dialog.directory().path().toStdString();
            dialog.reject();
        });
        ExpectCancelled([&] { QtDialogs().OpenFile({"", "All|*.*", initial}); });
        return begun;
    };
    const std::string home = QDir::homePath().toStdString();
    EXPECT_EQ(begin(""), home);
    EXPECT_EQ(begin("/no such folder at all/theater.L2"), home);
    EXPECT_EQ(begin(folder.Path() + "/gone/terrain\\theater.L2"), folder.Path());
    WhenModal<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.directory().path().toStdString(), home);
        dialog.reject();
    });
    EXPECT_EQ(QtDialogs().Folder("Select the DDS folder."), std::nullopt);
}

TEST(QtDialogsOpen, BeginsWhereTheLastOneEnded) {
    const TestFolder folder;
    const std::string file = folder.Write("terrain/Theater.L2", "x");
    QtDialogs dialogs;
    WhenModal<QFileDialog>([&](QFileDialog& dialog) { TypeName(dialog, file); });
    dialogs.OpenFile({"Open", "L2|*.l2"});
    WhenModal<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.directory().path().toStdString(), folder.File("terrain"));
        dialog.reject();
    });
    EXPECT_EQ(dialogs.Folder("Select the DDS folder."), std::nullopt);
}

TEST(QtDialogsOpen, CancellingIsError32755) {
    const auto reject = [](QFileDialog& dialog) { dialog.reject(); };
    WhenModal<QFileDialog>(reject);
    ExpectCancelled([] { QtDialogs().OpenFile({"Open", "All|*.*"}); });
    WhenModal<QFileDialog>(reject);
    ExpectCancelled([] { QtDialogs().OpenFiles({"Open", "All|*.*"}); });
    WhenModal<QFileDialog>(reject);
    ExpectCancelled([] { QtDialogs().SaveFile({"Save", "All|*.*"}); });
    WhenModal<QFileDialog>(reject);
    EXPECT_EQ(QtDialogs().Folder("Select the DDS folder."), std::nullopt);
}

TEST(QtDialogsOpen, GivesSeveralFiles) {
    const TestFolder folder;
    folder.Write("a 1.tga", "x");
    folder.Write("b.tga", "x");
    WhenModal<QFileDialog>([&](QFileDialog& dialog) {
        dialog.setDirectory(QString::fromStdString(folder.Path()));
        TypeName(dialog, "\"a 1.tga\" \"b.tga\"");
    });
    EXPECT_EQ(QtDialogs().OpenFiles({"Open", "Targa|*.tga"}),
              (std::vector<std::string>{folder.File("a 1.tga"), folder.File("b.tga")}));
}

TEST(QtDialogsSave, AddsTheExtensionOfTheFilter) {
    const TestFolder folder;
    WhenModal<QFileDialog>(
        [&](QFileDialog& dialog) { TypeName(dialog, folder.File("map")); });
    EXPECT_EQ(QtDialogs().SaveFile({"", "Bitmap files (*.bmp)|*.bmp"}).Path,
              folder.File("map.bmp"));
}

TEST(QtDialogsSave, AnotherFilterGivesAnotherExtension) {
    const TestFolder folder;
    WhenModal<QFileDialog>([&](QFileDialog& dialog) {
        auto* filters = dialog.findChild<QComboBox*>("fileTypeCombo");
        QTest::keyClick(filters, Qt::Key_Down);
        TypeName(dialog, folder.File("colours"));
    });
    const FileAnswer answer = QtDialogs().SaveFile({"Save", "ACT|*.act|PAL|*.pal"});
    EXPECT_EQ(answer.Path, folder.File("colours.pal"));
    EXPECT_EQ(answer.FilterIndex, 2);
}

// A name that is typed, with a file there that the completed name means.
TEST(QtDialogsSave, AsksAboutTheFileThatWillBeWritten) {
    const TestFolder folder;
    folder.Write("map_1.5.bmp", "x");
    folder.Write("victim.png", "x");
    folder.Write("m1.jpg", "x");
    const auto save = [&folder](const std::string& name, const std::string& asked) {
        WhenModal<QFileDialog>([&](QFileDialog& dialog) {
            if (!asked.empty())
                WhenModal<QMessageBox>([&](QMessageBox& box) {
                    EXPECT_EQ(box.text().remove(QChar(0x200B)).toStdString(),
                              folder.File(asked) +
                                  " already exists.\nDo you want to replace it?");
                    Press(box, "Yes");
                });
            TypeName(dialog, folder.File(name));
        });
        return QtDialogs().SaveFile({"", "Bitmap (*.bmp)|*.bmp|JPEG (*.jpg)|*.jpg"});
    };
    EXPECT_EQ(save("map_1.5", "map_1.5.bmp").Path, folder.File("map_1.5.bmp"));
    EXPECT_EQ(save("victim.png", "").Path, folder.File("victim.png.bmp"));
    const FileAnswer jpeg = save("m1.jpg", "m1.jpg");
    EXPECT_EQ(jpeg.Path, folder.File("m1.jpg"));
    EXPECT_EQ(jpeg.FilterIndex, 2);
    EXPECT_EQ(save("new", "").FilterIndex, 1);
}

TEST(QtDialogsSave, AnotherFilterChangesTheExtensionOfTheName) {
    const TestFolder folder;
    WhenModal<QFileDialog>([&](QFileDialog& dialog) {
        auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
        EXPECT_EQ(name->text(), "heights.elv");
        QTest::keyClick(dialog.findChild<QComboBox*>("fileTypeCombo"), Qt::Key_Up);
        EXPECT_EQ(name->text(), "heights.l0");
        dialog.findChild<QDialogButtonBox*>("buttonBox")->buttons().first()->click();
    });
    const FileAnswer answer = QtDialogs().SaveFile(
        {"", "L0 (*.l0)|*.l0|ELV (*.elv)|*.elv", folder.File("heights.elv")});
    EXPECT_EQ(answer.Path, folder.File("heights.l0"));
    EXPECT_EQ(answer.FilterIndex, 1);
}

TEST(QtDialogsSave, AsksBeforeAFileOfOtherLettersIsLost) {
    const TestFolder folder;
    folder.Write("MAP.BMP", "x");
    const auto save = [&folder](const QString& press) {
        WhenModal<QFileDialog>([&folder, press](QFileDialog& dialog) {
            WhenModal<QMessageBox>([press](QMessageBox& box) {
                EXPECT_TRUE(box.text().contains("MAP.BMP already exists."));
                if (press == "No")
                    WhenModal<QFileDialog>([](QFileDialog& again) { again.reject(); });
                Press(box, press);
            });
            TypeName(dialog, folder.File("map.bmp"));
        });
        return QtDialogs().SaveFile({"", "Bitmap files (*.bmp)|*.bmp"}).Path;
    };
    EXPECT_EQ(save("Yes"), folder.File("map.bmp"));
    ExpectCancelled([&save] { save("No"); });
}

TEST(QtDialogsSave, TheChoiceOfAFolderIsGivenAsPicked) {
    const TestFolder folder;
    WhenModal<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Select the DDS folder.");
        TypeName(dialog, folder.Path());
    });
    EXPECT_EQ(QtDialogs().Folder("Select the DDS folder."), folder.Path());
}

TEST(QtDialogsColor, IsBlueGreenRed) {
    WhenModal<QColorDialog>([](QColorDialog& dialog) {
        EXPECT_EQ(dialog.currentColor(), QColor(0x30, 0x20, 0x10));
        dialog.setCurrentColor(QColor(1, 2, 3));
        dialog.accept();
    });
    EXPECT_EQ(QtDialogs().Color(0x102030), 0x030201U);
    WhenModal<QColorDialog>([](QColorDialog& dialog) { dialog.reject(); });
    ExpectCancelled([] { QtDialogs().Color(0); });
}

TEST(QtDialogsFont, KeepsWhatTheDialogDoesNotAsk) {
    const FontChoice current{.Name = "Liberation Sans",
                             .Size = 12,
                             .Bold = true,
                             .Underline = true,
                             .Color = 0x8000FF};
    WhenModal<QFontDialog>([](QFontDialog& dialog) {
        QFont font = dialog.currentFont();
        EXPECT_TRUE(font.bold());
        EXPECT_TRUE(font.underline());
        EXPECT_EQ(font.pointSize(), 12);
        font.setPointSize(18);
        dialog.setCurrentFont(font);
        dialog.accept();
    });
    const FontChoice chosen = QtDialogs().Font(current);
    EXPECT_EQ(chosen.Size, 18);
    EXPECT_TRUE(chosen.Bold);
    EXPECT_TRUE(chosen.Underline);
    EXPECT_EQ(chosen.Color, 0x8000FFU);
    WhenModal<QFontDialog>([](QFontDialog& dialog) { dialog.reject(); });
    ExpectCancelled([&current] { QtDialogs().Font(current); });
}

// Settings come from machines with other fonts and go back there.
TEST(QtDialogsFont, AFontThatIsNotThereKeepsItsNameUntilAnotherIsChosen) {
    const FontChoice current{.Name = "Absent Grotesque", .Size = 9.25F};
    WhenModal<QFontDialog>([](QFontDialog& dialog) {
        auto* strikeout = dialog.findChild<QCheckBox*>();
        ASSERT_NE(strikeout, nullptr);
        strikeout->click(); // the first of the effects
        dialog.accept();
    });
    const FontChoice same = QtDialogs().Font(current);
    EXPECT_EQ(same.Name, "Absent Grotesque");
    EXPECT_EQ(same.Size, 9.25F);
    EXPECT_TRUE(same.Strikethrough);
    WhenModal<QFontDialog>([](QFontDialog& dialog) {
        QFont font = dialog.currentFont();
        font.setFamily("Liberation Serif");
        dialog.setCurrentFont(font);
        dialog.accept();
    });
    EXPECT_EQ(QtDialogs().Font(current).Name, "Liberation Serif");
    WhenModal<QFontDialog>([](QFontDialog& dialog) { dialog.accept(); });
    EXPECT_EQ(QtDialogs().FontAndColor(current).Name, "Absent Grotesque");
}

TEST(QtDialogsFont, AsksForTheColorWhereItIsWanted) {
    const FontChoice current{.Name = "Liberation Sans", .Size = 12, .Color = 0x8000FF};
    WhenModal<QFontDialog>([](QFontDialog& dialog) {
        auto* button = dialog.findChild<ColorButton*>("cmdFontColor");
        ASSERT_NE(button, nullptr);
        EXPECT_EQ(button->Color(), 0x8000FFU);
        EXPECT_TRUE(button->isVisible());
        WhenModal<QColorDialog>([](QColorDialog& colors) {
            colors.setCurrentColor(QColor(1, 2, 3));
            colors.accept();
        });
        button->click();
        dialog.accept();
    });
    const FontChoice chosen = QtDialogs().FontAndColor(current);
    EXPECT_EQ(chosen.Color, 0x030201U);
    EXPECT_EQ(chosen.Size, 12);
    WhenModal<QFontDialog>([](QFontDialog& dialog) { dialog.reject(); });
    ExpectCancelled([&current] { QtDialogs().FontAndColor(current); });
}

} // namespace
} // namespace vardenix
