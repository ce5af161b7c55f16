// Updates for a build that has a key, signed by openssl.
#include "updater/SignedRelease.h"
#include "updater/UpdateWorld.h"

#include <gtest/gtest.h>

#include <utility>

namespace vardenix {
namespace {

namespace fs = std::filesystem;
using tests::Files;
using tests::Slurp;

// By md5sum, of "new picture".
const std::string CopyPicture = "COPY*NoTile.jpg*30A220E4C665D3791E1F800DD3942CA7\r\n";
const std::string NoLines = "Its list does not end with its version and its kind.";

std::string Refused(const std::string& list, int type = UpdateMinor) {
    return WhyReleaseRefused(ReadUpdateList(list), type, "3.0.1");
}

TEST(SignedRelease, ItsLinesAreTheLastTwoAndStandNowhereElse) {
    EXPECT_EQ(Refused("MSG*x\nVERSION*3.1.0\nKIND*PATCH\n"), "");
    EXPECT_EQ(Refused("MSG*x\n version* 3.1.0 \nkind* patch \n\nno command\n"), "");
    for (const char* list :
         {"", "MSG*x\n", "VERSION*3.1.0\nKIND*PATCH\n", "MSG*x\nKIND*PATCH\n",
          "MSG*x\nMSG*y\nVERSION*3.1.0\n", "MSG*x\nKIND*PATCH\nVERSION*3.1.0\n",
          "MSG*x\nVERSION*3.1.0\nKIND*PATCH\nMSG*y\n",
          "VERSION*3.1.0\nMSG*x\nVERSION*3.1.0\nKIND*PATCH\n",
          "KIND*PATCH\nMSG*x\nVERSION*3.1.0\nKIND*PATCH\n",
          "MSG*x\nVERSION*3.1.0\nMSG*PATCH\n", "MSG*x\nMSG*3.1.0\nKIND*PATCH\n",
          "MSG*x\nVERSION*2.0.0\nVERSION*3.1.0\nKIND*PATCH\n"})
        EXPECT_EQ(Refused(list), NoLines) << list;
    EXPECT_EQ(Refused("MSG*x\nMSGYN*y\nVERSION*3.1.0\nKIND*PATCH\n"),
              "A question in its list could pass over its version.");
}

TEST(SignedRelease, ItsVersionIsNewerThanTheProgram) {
    const auto with = [](const std::string& version) {
        return Refused("MSG*x\nVERSION*" + version + "\nKIND*PATCH\n");
    };
    for (const char* newer :
         {"3.0.2", "3.1", "3.1.0", "4", "3.0.10", "10.0.0", "999999999.0.0"})
        EXPECT_EQ(with(newer), "") << newer;
    for (const char* same : {"3.0.1", "03.00.01"})
        EXPECT_EQ(with(same), std::string("It is version ") + same +
                                  ", which the program has already.");
    for (const char* older : {"3.0.0", "3.0", "3", "2.9.9", "2.10.10", "0"})
        EXPECT_EQ(with(older), std::string("It is version ") + older +
                                   ", older than the program's 3.0.1.");
    for (const char* none : {"", "v3.1.0", "3.1.0.0", "3..1", "3.1.", ".1", "3,1", "-4",
                             "3.1.0b", "1234567890.0.0"})
        EXPECT_EQ(with(none),
                  std::string("\"") + none + "\" in update.lst is no version.");
}

TEST(SignedRelease, ItsKindIsTheOneThatWasOffered) {
    const auto with = [](const std::string& kind, int type) {
        return Refused("MSG*x\nVERSION*3.1.0\nKIND*" + kind + "\n", type);
    };
    EXPECT_EQ(with("PATCH", UpdateMinor), "");
    EXPECT_EQ(with("UPDATE", UpdateMajor), "");
    EXPECT_EQ(with("PATCH", UpdateMajor),
              "It is a small update, and another one was offered.");
    EXPECT_EQ(with("UPDATE", UpdateMinor),
              "It is a large update, and another one was offered.");
    for (const int other : {0, 3})
        EXPECT_NE(with("PATCH", other), "");
    EXPECT_EQ(with("PATCHES", UpdateMinor),
              "\"PATCHES\" in update.lst is no kind of an update.");
}

class SignedUpdateTest : public tests::UpdateWorld {
protected:
    SignedUpdateTest() {
        OpenSsl({"genpkey", "-algorithm", "ed25519", "-out", KeyFile()});
        Key = PublicKey(KeyFile());
    }
    static std::string OpenSsl(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"/usr/bin/env", "openssl"});
        const tests::ProgramResult result = tests::RunProgram(arguments);
        EXPECT_EQ(result.ExitCode, 0) << result.Errors;
        return result.Output;
    }
    // Its base64 line.
    static std::string PublicKey(const std::string& keyFile) {
        const std::string pem = OpenSsl({"pkey", "-in", keyFile, "-pubout"});
        const size_t line = pem.find('\n') + 1;
        return pem.substr(line, pem.find('\n', line) - line);
    }
    std::string KeyFile() const { return folder_.File("key.pem"); }
    std::string Sign(const std::string& list) {
        const std::string signature = folder_.File("make/update.lst.sig");
        OpenSsl({"pkeyutl", "-sign", "-rawin", "-inkey", KeyFile(), "-in",
                 folder_.Write("make/update.lst", list), "-out", signature});
        return Slurp(signature);
    }
    void PackSigned(const std::string& list) {
        fs::remove(Archive());
        Pack({{"update.lst", list},
              {"update.lst.sig", Sign(list)},
              {"NoTile.jpg", "new picture"}});
        fs::remove(folder_.File("program/Update.log"));
    }
    void ExpectFinished() {
        Platform.Dialogs.ExpectBox(
            "Finished", "Minor update is finished. Program will restart.", BoxAnswer::Ok);
    }
};

TEST_F(SignedUpdateTest, TheListIsSignedByTheDistributor) {
    const std::string list = CopyPicture + "VERSION*3.1.0\r\nKIND*PATCH\r\n";
    Pack({{"update.lst", list}, {"NoTile.jpg", "new picture"}});
    ExpectRefused("It has no signature, update.lst.sig.");
    const std::string signature = Sign(list);
    Pack({{"update.lst.sig", std::string(signature.rbegin(), signature.rend())}});
    fs::remove(folder_.File("program/Update.log"));
    ExpectRefused("The signature of update.lst is not the distributor's.");
    Pack({{"update.lst.sig", signature}});
    ExpectFinished();
    Apply();
    EXPECT_EQ(Program()["NoTile.jpg"], "new picture");
    EXPECT_EQ(Platform.Registry.Values["SOFTWARE\\Vardenix|Version"], "3.1.0");
}

TEST_F(SignedUpdateTest, AnOldArchiveOfferedAgainIsRefused) {
    for (const auto& [lines, why] :
         {std::pair{"", NoLines},
          {"VERSION*3.0.1\r\nKIND*PATCH\r\n",
           "It is version 3.0.1, which the program has already."},
          {"VERSION*3.0.0\r\nKIND*PATCH\r\n",
           "It is version 3.0.0, older than the program's 3.0.1."}}) {
        PackSigned(CopyPicture + lines);
        ExpectRefused(why);
    }
}

TEST_F(SignedUpdateTest, APatchOfferedAsALargeUpdateRunsNothing) {
    PackSigned(CopyPicture + "VERSION*3.1.0\r\nKIND*PATCH\r\n");
    const std::string why = "It is a small update, and another one was offered.";
    Platform.Dialogs.ExpectBox(
        "Error.", "The update is refused, and nothing has been changed.\n" + why,
        BoxAnswer::Ok);
    Apply(UpdateMajor);
    EXPECT_EQ(Story, "");
    EXPECT_EQ(Program(), Old);
    EXPECT_TRUE(Log().ends_with("The update is refused. " + why + "\r\n"));
}

TEST_F(SignedUpdateTest, WithoutAKeyTheLinesAreCommandsThatDoNothing) {
    Key.clear();
    for (const char* lines : {"", "VERSION*2.0.0\r\nKIND*UPDATE\r\n"}) {
        fs::remove(Archive());
        Pack({{"update.lst", CopyPicture + lines}, {"NoTile.jpg", "new picture"}});
        ExpectFinished();
        Apply();
    }
    EXPECT_EQ(Program()["NoTile.jpg"], "new picture");
    EXPECT_EQ(Story, "hide|exit " + Folders.AppPath + "Loader|hide|exit " +
                         Folders.AppPath + "Loader|");
}

// The commands of a section of docs/updates.md, from its nth block on.
std::string ShellOf(const std::string& heading, int block) {
    const std::string page = Slurp(UPDATES_PAGE);
    size_t at = page.find("## " + heading + "\n");
    for (int i = 0; i <= block && at != std::string::npos; ++i)
        at = page.find("```sh\n", at + 1);
    if (at == std::string::npos)
        return {};
    at += 6;
    return page.substr(at, page.find("```", at) - at);
}

class DistributorsCommands : public SignedUpdateTest {
protected:
    // In a folder of the distributor's.
    void RunShell(const std::string& commands) {
        const tests::ProgramResult result =
            tests::RunProgram({"/bin/sh", "-euc", "cd \"$0\"\n" + commands, Desk()});
        EXPECT_EQ(result.ExitCode, 0) << commands << result.Errors;
    }
    void ExpectNewProgram() {
        fs::remove(Archive());
        fs::copy(Desk() + "/patch-3.1.0.7z", Archive());
        ExpectFinished();
        Apply();
        Files expected = Old;
        expected["vardenix"] = "new program";
        EXPECT_EQ(Program(), expected);
    }
    std::string Desk() const { return folder_.File("the desk"); }
    void SetUp() override { folder_.Write("the desk/vardenix", "new program"); }
};

TEST_F(DistributorsCommands, MakeAnUpdateThatIsApplied) {
    Key.clear();
    RunShell(ShellOf("The list", 0));
    ExpectNewProgram();
}

TEST_F(DistributorsCommands, MakeASignedUpdateThatIsApplied) {
    const std::string keys = ShellOf("Signed updates", 0);
    RunShell(keys.substr(0, keys.find("\ncmake ")));
    Key = PublicKey(Desk() + "/update-key.pem");
    // What stands in the build's line is the key that this program has.
    const size_t from = keys.find("$(openssl pkey");
    ASSERT_NE(from, std::string::npos);
    RunShell("printf %s \"" + keys.substr(from, keys.find(')', from) + 1 - from) +
             "\" >key");
    EXPECT_EQ(Slurp(Desk() + "/key"), Key);
    RunShell(ShellOf("Signed updates", 1));
    ExpectNewProgram();
}

} // namespace
} // namespace vardenix
