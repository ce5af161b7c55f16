#include "updater/ApplyUpdate.h"

#include "support/Environment.h"
#include "texts/RuntimeError.h"
#include "updater/UpdateWorld.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vardenix {
namespace {

namespace fs = std::filesystem;
using tests::Files;
using tests::FilesIn;
using tests::NewFile;
using tests::NewPicture;
using tests::Slurp;

class ApplyUpdateTest : public tests::UpdateWorld {
protected:
    void ExpectFinished() {
        Platform.Dialogs.ExpectBox(
            "Finished", "Minor update is finished. Program will restart.", BoxAnswer::Ok);
    }
    std::string InProgram(const std::string& name) const {
        return Folders.AppPath + name;
    }
};

TEST_F(ApplyUpdateTest, AMinorUpdateDoesWhatItsListSaysInOrder) {
    Pack({{"update.lst", "MSG*Hello\r\n" + Copy("NoTile.jpg", NewPicture) +
                             Copy("new file.txt", NewFile) +
                             "MSGYN*Read it?\r\nREADME*new file.txt\r\n"
                             "MSGYN*Delete it?\r\nDELETE*old.dll\r\nDANCE*x\r\n"},
          {"NoTile.jpg", "new picture"},
          {"new file.txt", "a new file"}});
    Platform.Dialogs.ExpectBox("", "Hello", BoxAnswer::Ok);
    Platform.Dialogs.ExpectBox("", "Read it?", BoxAnswer::Yes);
    Platform.Dialogs.ExpectBox("", "Delete it?", BoxAnswer::Yes);
    ExpectFinished();
    Apply();
    Files expected = Old;
    expected["NoTile.jpg"] = "new picture";
    expected["new file.txt"] = "a new file";
    expected.erase("old.dll");
    EXPECT_EQ(Program(), expected);
    EXPECT_EQ(Story, "hide|show a new file|exit " + InProgram("Loader") + "|");
    EXPECT_EQ(Platform.Registry.Values["SOFTWARE\\Vardenix|Version"], "3.1.0");
    EXPECT_EQ(
        Log(),
        At("Extracted " + Folders.UpdateTempFolder + "u.7z.") +
            At("Read 8 entries from file list.") + At("All files validated.") +
            At("Executed command MSG with param: Hello") +
            At("Executed command MSGYN with param: Read it?") +
            At("Executed command README with param: new file.txt") +
            At("Executed command MSGYN with param: Delete it?") +
            At("Copied file " + InProgram("NoTile.jpg")) +
            At("Copied file " + InProgram("new file.txt")) +
            At("File deleted " + Folders.AppPath) +
            At("Registry key HKEY_LOCAL_MACHINE\\SOFTWARE\\Vardenix\\Version set to "
               "3.1.0") +
            At("Minor Update detected, Closing and starting with the loader."));
}

TEST_F(ApplyUpdateTest, NoPassesOverTheNextEntry) {
    Pack({{"update.lst", "MSGYN*Delete it?\nDELETE*old.dll\n" +
                             Copy("new file.txt", NewFile) + "MSGYN*Last?\n"},
          {"new file.txt", "a new file"}});
    Platform.Dialogs.ExpectBox("", "Delete it?", BoxAnswer::No);
    Platform.Dialogs.ExpectBox("", "Last?", BoxAnswer::No);
    ExpectFinished();
    Apply();
    EXPECT_TRUE(Program().contains("old.dll"));
    EXPECT_TRUE(Program().contains("new file.txt"));
    EXPECT_NE(Log().find(At("Answer was No, index was increased. Command DELETE: old.dll "
                            "will not be executed")),
              std::string::npos);
}

// A program that runs until the object goes.
class Running {
public:
    explicit Running(const std::string& program) : process_(fork()) {
        if (process_ == 0) {
            ::execl(program.c_str(), "sleep", "30", nullptr);
            _exit(1);
        }
        std::error_code error;
        while (fs::read_symlink("/proc/" + std::to_string(process_) + "/exe", error) !=
               fs::path(program)) {
        }
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() {
        ::kill(process_, SIGKILL);
        ::waitpid(process_, nullptr, 0);
    }

private:
    pid_t process_;
};

// The way in which a file that runs is recognised: it cannot be written.
TEST_F(ApplyUpdateTest, AFileInUseIsLeftForTheLoader) {
    fs::copy("/usr/bin/sleep", folder_.File("program/sleep"));
    const std::string runs = Slurp("/usr/bin/sleep");
    auto running = std::make_unique<Running>(folder_.File("program/sleep"));
    Pack({{"update.lst", Copy("sleep", NewFile)}, {"sleep", "a new file"}});
    ExpectFinished();
    Apply();
    Files found = Program();
    EXPECT_TRUE(found["sleep"] == runs);
    EXPECT_EQ(found["sleep$"], "a new file");
    EXPECT_EQ(found["Loader.lst"], "sleep$\r\n");
    EXPECT_TRUE(found.contains("UpdateKept/"));
    EXPECT_NE(Log().find(At("sleep file was added for later rename.")),
              std::string::npos);
    EXPECT_NE(Log().find(At("Files are marked for deletion/rename. Writing them down for "
                            "the loader")),
              std::string::npos);
    running.reset();
    FinishUpdate(Folders.AppPath);
    Files expected = Old;
    expected["sleep"] = "a new file";
    EXPECT_EQ(Program(), expected);
    // As the old one was.
    EXPECT_EQ(::access(folder_.File("program/sleep").c_str(), X_OK), 0);
}

// A second start of the program, at its last box and behind it.
TEST_F(ApplyUpdateTest, AnUpdateThatWaitsForTheLoaderIsNotPutBackMeanwhile) {
    fs::copy("/usr/bin/sleep", folder_.File("program/sleep"));
    const Running running(folder_.File("program/sleep"));
    Pack({{"update.lst", Copy("sleep", NewFile) + Copy("NoTile.jpg", NewPicture)},
          {"sleep", "a new file"},
          {"NoTile.jpg", "new picture"}});
    const auto start = [this] {
        const tests::ProgramResult result =
            tests::RunProgram({UPDATE_ONCE, "putback", folder_.File("program")});
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    };
    int boxes = 0;
    Platform.Dialogs.WhileBoxIsUp = [&] {
        ++boxes;
        start();
    };
    ExpectFinished();
    Apply();
    EXPECT_EQ(boxes, 1);
    start();
    Files found = Program();
    EXPECT_EQ(found["NoTile.jpg"], "new picture");
    EXPECT_EQ(found["sleep$"], "a new file");
    EXPECT_EQ(found["Loader.lst"], "sleep$\r\n");
    EXPECT_EQ(Log().find("put back"), std::string::npos);
    // Once it has ended without a loader.
    Kept.reset();
    start();
    found = Program();
    EXPECT_EQ(found["NoTile.jpg"], "old picture");
    EXPECT_FALSE(found.contains("sleep$"));
    EXPECT_NE(Log().find("> An update was interrupted, and is put back\r\n"),
              std::string::npos);
}

TEST_F(ApplyUpdateTest, TheLogSaysCopiedAndDeletedOnlyOfWhatIsDone) {
    Pack({{"update.lst", Copy("NoTile.jpg", NewPicture) +
                             "DELETE*old.dll\r\nDELETE*not there\r\nMSG*Hello\r\n"
                             "README*old.dll\r\n"},
          {"NoTile.jpg", "new picture"}});
    const auto isNothingDone = [this] {
        const std::string log = Log();
        return log.find("Copied") == std::string::npos &&
               log.find("deleted") == std::string::npos &&
               log.find("later") == std::string::npos;
    };
    int boxesBefore = 0;
    Platform.Dialogs.WhileBoxIsUp = [&] { boxesBefore += isNothingDone() ? 1 : 0; };
    Platform.Dialogs.ExpectBox("", "Hello", BoxAnswer::Ok);
    // The text to be shown is one of those that go.
    Platform.Dialogs.ExpectAnyBox("Error...", BoxAnswer::Ok, nullptr);
    Apply();
    EXPECT_EQ(boxesBefore, 2);
    EXPECT_TRUE(isNothingDone()) << Log();
    EXPECT_EQ(Program(), Old);
}

class RefusingRegistry : public tests::FakeRegistry {
public:
    void WriteText(std::string_view, std::string_view, std::string_view) override {
        throw RuntimeError(ErrorNumber::DiskFull, "the registry");
    }
};

TEST_F(ApplyUpdateTest, AStepThatFailsPutsTheOldFilesBackAndSaysSo) {
    RefusingRegistry registry;
    const vardenix::Platform system{Platform.Dialogs, registry, Platform.Clock,
                                    Platform.Processes};
    Pack({{"update.lst", Copy("NoTile.jpg", NewPicture)}, {"NoTile.jpg", "new picture"}});
    Platform.Dialogs.ExpectAnyBox("Error...", BoxAnswer::Ok, nullptr);
    Offer = {UpdateMinor, "v3.1.0"};
    EXPECT_FALSE(ApplyUpdate("u.7z", {Folders, system, Offer, *this, {}, {}}));
    EXPECT_EQ(Program(), Old);
    EXPECT_NE(Log().find("Copied file " + InProgram("NoTile.jpg") +
                         "\r\n<07/03/2026 09:05> The files are the old ones\r\n"),
              std::string::npos)
        << Log();
}

TEST_F(ApplyUpdateTest, ADamagedListOfAnEarlierUpdateHoldsNoneUp) {
    folder_.Write("program/UpdateKept/kept.lst", "+../evil\n");
    Pack({{"update.lst", Copy("NoTile.jpg", NewPicture)}, {"NoTile.jpg", "new picture"}});
    ExpectFinished();
    Apply();
    EXPECT_EQ(Program()["NoTile.jpg"], "new picture");
    EXPECT_TRUE(Program().contains("UpdateKept.aside/"));
    EXPECT_NE(Log().find("does not count: line 1 of kept.lst holds a slash."),
              std::string::npos);
}

// By the list's own words, whatever lies in the folder.
TEST_F(ApplyUpdateTest, AFileThatIsCopiedAndDeletedWasNeverThere) {
    Pack({{"update.lst", Copy("new file.txt", NewFile) +
                             "DELETE*new file.txt\r\nDELETE*old.dll\r\n" +
                             "DELETE*old.dll\r\n"},
          {"new file.txt", "a new file"}});
    ExpectFinished();
    Apply();
    Files found = Program();
    EXPECT_FALSE(found.contains("new file.txt"));
    EXPECT_FALSE(found.contains("old.dll"));
    // The second of each kind has nothing to delete any more.
    EXPECT_EQ(found["Loader.lst"], "*\r\n");
    EXPECT_NE(Log().find(At("File deleted " + Folders.AppPath) +
                         At("File deleted " + Folders.AppPath) +
                         At(" file was added for later delete.")),
              std::string::npos)
        << Log();
}

// What loaders get for it has always been a line without a name.
TEST_F(ApplyUpdateTest, ADeleteThatFailsLeavesALoneStar) {
    Pack({{"update.lst", "DELETE*not there.dll\n"}});
    ExpectFinished();
    Apply();
    EXPECT_EQ(Program()["Loader.lst"], "*\r\n");
    EXPECT_NE(Log().find(At(" file was added for later delete.")), std::string::npos);
    FinishUpdate(Folders.AppPath);
    EXPECT_EQ(Program(), Old);
}

TEST_F(ApplyUpdateTest, ANameInOtherLettersMeansTheFileThatIsThere) {
    Pack({{"UPDATE.LST", Copy("NOTILE.JPG", NewPicture) + "DELETE*OLD.DLL\n"},
          {"notile.jpg", "new picture"}});
    ExpectFinished();
    Apply();
    Files expected = Old;
    expected["NoTile.jpg"] = "new picture";
    expected.erase("old.dll");
    EXPECT_EQ(Program(), expected);
}

TEST_F(ApplyUpdateTest, ReplacedFilesKeepTheirRightsAndNewOnesAreNobodysElse) {
    ::chmod(folder_.File("program/NoTile.jpg").c_str(), 0640);
    folder_.Write("make/new file.txt", "a new file");
    ::chmod(folder_.File("make/new file.txt").c_str(), 0766);
    SevenZip({"a", Archive(), folder_.File("make/new file.txt")});
    Pack({{"update.lst", Copy("NoTile.jpg", NewPicture) + Copy("new file.txt", NewFile)},
          {"NoTile.jpg", "new picture"}});
    ExpectFinished();
    Apply();
    const auto rights = [this](const char* name) {
        return static_cast<unsigned>(
            fs::status(folder_.File(std::string("program/") + name)).permissions());
    };
    EXPECT_EQ(rights("NoTile.jpg"), 0640U);
    EXPECT_EQ(rights("new file.txt"), 0744U);
}

TEST_F(ApplyUpdateTest, AnUpdateOfAProgramWithArgumentsRestartsItWithThem) {
    Arguments = {"a b", "-c\"d"};
    Pack({{"update.lst", "x*y\n"}});
    ExpectFinished();
    Apply();
    EXPECT_EQ(Story, "hide|exit \"" + InProgram("Loader") + "\" \"a b\" \"-c\"\"d\"|");
}

TEST_F(ApplyUpdateTest, OtherTypesChangeNothing) {
    Pack({{"update.lst", Copy("NoTile.jpg", NewPicture)}, {"NoTile.jpg", "new picture"}});
    for (const int32_t type : {0, 3}) {
        Apply(type);
        EXPECT_EQ(Program(), Old);
        EXPECT_EQ(Story, "");
    }
    EXPECT_TRUE(Log().ends_with(At("All files validated.")));
}

TEST_F(ApplyUpdateTest, AWrongHashChangesNothing) {
    Pack({{"update.lst", Copy("new file.txt", NewFile) + "MSG*x\n" +
                             Copy("NoTile.jpg", "30a220e4c665d3791e1f800dd3942ca7")},
          {"NoTile.jpg", "new picture"},
          {"new file.txt", "a new file"}});
    Platform.Dialogs.ExpectBox(
        "Error.", "Download Files Corrupted... Update is cancelled...", BoxAnswer::Ok);
    Apply();
    EXPECT_EQ(Program(), Old);
    EXPECT_TRUE(Log().ends_with(At("Error MD5 hash at filenumber 3.")));
}

TEST_F(ApplyUpdateTest, AFileThatTheArchiveLacksChangesNothing) {
    Pack({{"update.lst", Copy("new file.txt", NewFile)}});
    std::string text;
    Platform.Dialogs.ExpectAnyBox("Error...", BoxAnswer::Ok, &text);
    Apply();
    EXPECT_TRUE(text.starts_with("ERROR number 53\nFile doesn't exist\n")) << text;
    EXPECT_EQ(Program(), Old);
    EXPECT_TRUE(Log().ends_with(
        At("An error occured. Err number53with description: File doesn't exist")));
}

TEST_F(ApplyUpdateTest, ABrokenArchiveOrOneWithoutAListIsABadDownload) {
    const std::string text =
        "The patch failed to apply, propaby due to a bad download. Try again...";
    Pack({{"new file.txt", "a new file"}});
    const std::string whole = Slurp(Archive());
    for (const std::string& bytes : {whole, whole.substr(0, whole.size() / 2),
                                     std::string("garbage"), std::string()}) {
        folder_.Write("program/UpdateTemp/u.7z", bytes);
        Platform.Dialogs.ExpectBox("Error", text, BoxAnswer::Ok);
        Apply();
        EXPECT_TRUE(Log().ends_with(At("Could not find update.lst. Aborting...")));
    }
    EXPECT_EQ(Program(), Old);
    EXPECT_EQ(Story, "");
}

TEST_F(ApplyUpdateTest, ABitThatWasFlippedOnTheWayChangesNothing) {
    Pack({{"update.lst", Copy("NoTile.jpg", NewPicture)}, {"NoTile.jpg", "new picture"}});
    std::string bytes = Slurp(Archive());
    bytes[33] = static_cast<char>(bytes[33] ^ 1); // of the first file
    folder_.Write("program/UpdateTemp/u.7z", bytes);
    Platform.Dialogs.ExpectAnyBox("Error", BoxAnswer::Ok, nullptr);
    Apply();
    EXPECT_EQ(Program(), Old);
}

TEST_F(ApplyUpdateTest, WhatStoodBesideTheArchiveIsNotTakenForItsFiles) {
    folder_.Write("program/UpdateTemp/update.lst", "DELETE*old.dll\n");
    folder_.Write("program/UpdateTemp/folder/x", "x");
    Pack({{"new file.txt", "a new file"}});
    Platform.Dialogs.ExpectAnyBox("Error", BoxAnswer::Ok, nullptr);
    Apply();
    EXPECT_EQ(Program(), Old);
    EXPECT_EQ(FilesIn(folder_.File("program/UpdateTemp")).size(), 2U);
}

TEST_F(ApplyUpdateTest, NamesInTheArchiveThatLeaveTheFolderAreRefused) {
    for (const auto& [name, why] : {std::pair{"../evil", "holds a slash"},
                                    {"/tmp/evil", "holds a slash"},
                                    {"folder/evil", "holds a slash"},
                                    {"a\\..\\evil", "holds a slash"},
                                    {"C:evil", "holds a colon"},
                                    {"e..vil", "holds \"..\""}}) {
        fs::remove(Archive());
        fs::remove(folder_.File("program/Update.log"));
        Pack({{"update.lst", "MSG*x\n"}, {"evil", "x"}});
        SevenZip({"rn", Archive(), "evil", name});
        ExpectRefused(std::string("The name \"") + name + "\" in the archive " + why +
                      ".");
        EXPECT_FALSE(fs::exists("/tmp/evil"));
        EXPECT_FALSE(fs::exists(folder_.File("program/evil")));
        EXPECT_EQ(FilesIn(folder_.File("program/UpdateTemp")).size(), 1U) << name;
    }
}

TEST_F(ApplyUpdateTest, AControlCharacterInANameIsRefused) {
    Pack({{"update.lst", "MSG*x\n"}, {"e\x1Bvil", "x"}});
    ExpectRefused("The name \"e?vil\" in the archive holds a control character.");
}

TEST_F(ApplyUpdateTest, LinksAndFoldersInTheArchiveAreRefused) {
    fs::create_symlink("/etc/passwd", folder_.File("make/link"));
    SevenZip({"a", "-snl", Archive(), folder_.File("make/link")});
    ExpectRefused("\"link\" in the archive is no plain file.");
    fs::remove(Archive());
    fs::remove(folder_.File("program/Update.log"));
    fs::create_directory(folder_.File("make/folder"));
    SevenZip({"a", Archive(), folder_.File("make/folder")});
    ExpectRefused("\"folder\" in the archive is no plain file.");
}

// 1.1 GB of noughts in 562 bytes.
TEST_F(ApplyUpdateTest, AnArchiveThatUnpacksToTooMuchIsRefused) {
    fs::copy(UPDATER_ARCHIVES "/too-large.7z", Archive());
    ExpectRefused("The archive unpacks to more than an update may have.");
    EXPECT_EQ(FilesIn(folder_.File("program/UpdateTemp")).size(), 1U);
}

TEST_F(ApplyUpdateTest, OtherArchivesAreRefused) {
    folder_.Write("make/update.lst", "MSG*x\n");
    SevenZip({"a", "-tzip", Archive(), folder_.File("make/update.lst")});
    ExpectRefused("The archive is of the type \"zip\"; updates are 7z archives.");
}

TEST_F(ApplyUpdateTest, AFileOfTheArchivesOwnNameIsRefused) {
    Pack({{"update.lst", "MSG*x\n"}, {"U.7Z", "x"}});
    ExpectRefused("The archive holds a file of its own name.");
}

TEST_F(ApplyUpdateTest, NamesInTheListThatLeaveTheFolderAreRefused) {
    Pack({{"update.lst", Copy("NoTile.jpg", NewPicture) + "DELETE*../precious\n"},
          {"NoTile.jpg", "new picture"}});
    folder_.Write("precious", "mine");
    ExpectRefused("The name \"../precious\" in update.lst holds a slash.");
    EXPECT_EQ(Slurp(folder_.File("precious")), "mine");
}

TEST_F(ApplyUpdateTest, AnInstallationOfTheSystemIsLeftAlone) {
    Folders.ShippedPath = "/usr/lib/vardenix\\";
    Pack({{"update.lst", "DELETE*old.dll\n"}});
    ExpectRefused("The system's package manager keeps this program up to date.");
}

TEST_F(ApplyUpdateTest, WithoutALoaderNothingIsChanged) {
    fs::remove(folder_.File("program/Loader"));
    Pack({{"update.lst", "DELETE*old.dll\n"}});
    Platform.Dialogs.ExpectAnyBox("Error...", BoxAnswer::Ok, nullptr);
    Apply();
    EXPECT_TRUE(Program().contains("old.dll"));
}

TEST_F(ApplyUpdateTest, AReadmeThatIsNotThereChangesNothing) {
    Pack({{"update.lst",
           Copy("NoTile.jpg", NewPicture) + "DELETE*old.dll\n" + "README*old.dll\n"},
          {"NoTile.jpg", "new picture"}});
    Platform.Dialogs.ExpectAnyBox("Error...", BoxAnswer::Ok, nullptr);
    Apply();
    EXPECT_EQ(Program(), Old);
    EXPECT_EQ(Story, "hide|");
}

TEST_F(ApplyUpdateTest, WithoutTheArchiveProgramTheUserIsToldWhichPackage) {
    Pack({{"update.lst", "DELETE*old.dll\n"}});
    const tests::Environment path("PATH", "/nowhere");
    std::string text;
    Platform.Dialogs.ExpectAnyBox("Error...", BoxAnswer::Ok, &text);
    Apply();
    EXPECT_NE(text.find("7zip"), std::string::npos) << text;
    EXPECT_EQ(Program(), Old);
}

} // namespace
} // namespace vardenix
