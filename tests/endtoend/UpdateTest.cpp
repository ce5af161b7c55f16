// Updates of the real program, by the real loader, from a server of the test's.
#include "endtoend/Desktop.h"
#include "support/HttpServer.h"
#include "support/RunProgram.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cctype>
#include <csignal>
#include <filesystem>
#include <map>

namespace fs = std::filesystem;

namespace vardenix::tests {
namespace {

constexpr const char* StartUp = "^Vardenix v3\\.0\\.1 - for";

class UpdateEndToEnd : public testing::Test {
protected:
    void SetUp() override {
        fs::create_directory(folder_.File("program"));
        for (const auto& entry : fs::directory_iterator(PROGRAM_FOLDER))
            if (const std::string name = entry.path().filename();
                name == "vardenix" || name == "Loader" || name == "NoTile.jpg" ||
                name.ends_with(".so"))
                fs::copy(entry.path(), folder_.File("program/" + name));
        folder_.Write("program/old.dll", "to be deleted");
        std::string ini = Slurp(FIRST_SETTINGS);
        Set(ini, "VERSION CHECK", server_.Address() + "/v");
        Set(ini, "AUTO_CHECK_FOR_UPDATES", "1");
        folder_.Write("program/VX.ini", ini);
    }
    void TearDown() override {
        // What the loader has started is nobody's child.
        if (desktop_.Visible(StartUp)) {
            desktop_.Activate(StartUp);
            desktop_.Key("Escape");
            EXPECT_TRUE(WaitFor([&] { return !desktop_.Visible(StartUp); }));
        }
    }

    static void Set(std::string& ini, const std::string& key, const std::string& value) {
        const size_t at = ini.find("\n" + key + "=");
        ASSERT_NE(at, std::string::npos) << key;
        const size_t from = at + key.size() + 2;
        ini.replace(from, ini.find('\r', from) - from, value);
    }

    // The list gets a COPY for each file in front.
    void Offer(const std::string& command,
               const std::map<std::string, std::string>& files, const std::string& more) {
        std::string list;
        for (const auto& [name, bytes] : files) {
            const std::string path = folder_.Write("make/" + name, bytes);
            std::string hash =
                RunProgram({"/usr/bin/env", "md5sum", path}).Output.substr(0, 33);
            hash = hash.substr(hash[0] == '\\' ? 1 : 0, 32);
            std::ranges::transform(hash, hash.begin(), [](char letter) {
                return static_cast<char>(std::toupper(letter));
            });
            list.append("COPY*").append(name).append("*").append(hash).append("\r\n");
        }
        folder_.Write("make/update.lst", list + more);
        fs::remove(folder_.File("u.7z"));
        RunProgram({"/usr/bin/env", "7zz", "a", "-mx1", folder_.File("u.7z"),
                    folder_.File("make") + "/*"});
        archive_ = Slurp(folder_.File("u.7z"));
        body_ = command + "*" + server_.Address() + "/u.7z*v3.1.0";
        offered_ = true;
    }

    void Answer(const HttpConnection& client, const std::string& request) {
        if (request.starts_with("GET /u.7z "))
            client.Send(GoodReply(archive_));
        else
            client.Send(GoodReply("<html><title>Vardenix version check</title><body>" +
                                  (offered_ ? body_ : "#Current*3.1.0") +
                                  "</body></html>"));
    }

    void Start() {
        program_ = desktop_.StartEditor(folder_.File("program/vardenix"));
        ASSERT_TRUE(Await("^New update v3\\.1\\.0$"));
        offered_ = false;
    }
    bool Await(const std::string& title) {
        return WaitFor([&] { return desktop_.Active(title); });
    }
    void AnswerBox(const std::string& title, const char* key) {
        ASSERT_TRUE(Await(title)) << title;
        desktop_.Key(key);
    }
    std::string InProgram(const std::string& name) {
        return Slurp(folder_.File("program/" + name));
    }

    TestFolder folder_;
    std::string archive_;
    std::string body_;
    std::atomic<bool> offered_ = false;
    HttpServer server_{[this](const HttpConnection& client, const std::string& request) {
        Answer(client, request);
    }};
    Desktop desktop_{
        (fs::create_directory(folder_.File("desktop")), folder_.File("desktop"))};
    Child program_;
};

TEST_F(UpdateEndToEnd, APatchIsAppliedAndTheNewProgramComesUp) {
    // It runs as before, and is another file.
    const std::string newProgram = InProgram("vardenix") + "new";
    Offer("#Patch",
          {{"vardenix", newProgram}, {"NoTile.jpg", "new"}, {"new file.txt", "Hello"}},
          "MSG*Something is new\r\nMSGYN*Read it?\r\nREADME*new file.txt\r\n"
          "DELETE*old.dll\r\n");
    Start();
    desktop_.Key("y");
    AnswerBox("^Vardenix$", "Return"); // MSG
    AnswerBox("^Vardenix$", "y");      // MSGYN
    AnswerBox("^Read me$", "Escape");
    AnswerBox("^Finished$", "Return");
    EXPECT_TRUE(WaitFor([&] { return !program_.Running(); }));
    EXPECT_EQ(program_.ExitCode(), 0);
    EXPECT_TRUE(Await(StartUp));
    EXPECT_TRUE(InProgram("vardenix") == newProgram);
    EXPECT_EQ(InProgram("NoTile.jpg"), "new");
    EXPECT_EQ(InProgram("new file.txt"), "Hello");
    for (const char* name : {"old.dll", "vardenix$", "Loader.lst", "UpdateKept"})
        EXPECT_FALSE(fs::exists(folder_.File(std::string("program/") + name))) << name;
    EXPECT_NE(InProgram("registry.ini").find("Version=3.1.0"), std::string::npos);
    const std::string log = InProgram("Update.log");
    EXPECT_NE(log.find("vardenix file was added for later rename."), std::string::npos);
    EXPECT_NE(log.find("The loader has finished the update"), std::string::npos);
}

// What runs is replaced by the loader, which never comes.
TEST_F(UpdateEndToEnd, AKillAtTheLastBoxBringsTheOldProgramBackAndTellsIt) {
    const std::string oldProgram = InProgram("vardenix");
    const std::string picture = InProgram("NoTile.jpg");
    Offer("#Patch", {{"vardenix", oldProgram + "new"}, {"NoTile.jpg", "new"}}, "");
    Start();
    desktop_.Key("y");
    ASSERT_TRUE(Await("^Finished$"));
    {
        // A second start leaves the update alone as long as the first one runs.
        const Child second = desktop_.StartEditor(folder_.File("program/vardenix"));
        const std::string asked = "GET /v?";
        ASSERT_TRUE(WaitFor([&] {
            const std::string requests = server_.Requests();
            return requests.rfind(asked) != requests.find(asked);
        }));
        EXPECT_EQ(InProgram("NoTile.jpg"), "new");
        EXPECT_TRUE(fs::exists(folder_.File("program/vardenix$")));
        second.Signal(SIGKILL);
    }
    program_.Signal(SIGKILL);
    EXPECT_TRUE(WaitFor([&] { return !program_.Running(); }));
    program_ = desktop_.StartEditor(folder_.File("program/vardenix"));
    AnswerBox("^Vardenix$", "Return");
    ASSERT_TRUE(Await(StartUp));
    EXPECT_TRUE(InProgram("vardenix") == oldProgram);
    EXPECT_TRUE(InProgram("NoTile.jpg") == picture);
    for (const char* name : {"vardenix$", "Loader.lst", "UpdateKept"})
        EXPECT_FALSE(fs::exists(folder_.File(std::string("program/") + name))) << name;
    const std::string log = InProgram("Update.log");
    EXPECT_NE(log.find("> An update was interrupted, and is put back\r\n"),
              std::string::npos);
    EXPECT_TRUE(log.ends_with("> The files are the old ones\r\n"));
}

TEST_F(UpdateEndToEnd, AnInstallerIsStartedOnceTheUsersFilesAreSaved) {
    fs::create_directory(folder_.File("saved"));
    Offer("#Update",
          {{"in stall", "#!/bin/sh\necho \"$0\" >'" + folder_.File("installed") + "'\n"}},
          "");
    Start();
    desktop_.Key("y");
    AnswerBox("^Attention$", "Escape"); // is a Yes
    AnswerBox("^Select folder to save files\\.$", "Escape");
    AnswerBox("^Attention$", "Return");
    ASSERT_TRUE(Await("^Select folder to save files\\.$"));
    desktop_.Key("ctrl+a");
    desktop_.Type(folder_.File("saved"));
    desktop_.Key("Return");
    EXPECT_TRUE(WaitFor([&] { return !program_.Running(); }));
    EXPECT_TRUE(WaitFor([&] {
        return fs::exists(folder_.File("installed")) &&
               Slurp(folder_.File("installed")) ==
                   folder_.File("program/UpdateTemp/1/in stall") + "\n";
    }));
    EXPECT_NE(Slurp(folder_.File("saved/VX.ini")).find("[SYSTEM]"), std::string::npos);
    EXPECT_NE(Slurp(folder_.File("saved/Update.log")).find("Major Update detected"),
              std::string::npos);
}

TEST_F(UpdateEndToEnd, ADamagedArchiveLeavesTheProgramAsItIs) {
    Offer("#Patch", {{"NoTile.jpg", "new"}}, "");
    archive_.resize(archive_.size() / 2);
    const std::string picture = InProgram("NoTile.jpg");
    Start();
    desktop_.Key("y");
    AnswerBox("^Error$", "Return");
    ASSERT_TRUE(Await(StartUp));
    EXPECT_TRUE(InProgram("NoTile.jpg") == picture);
    desktop_.Key("Escape");
    EXPECT_TRUE(WaitFor([&] { return !program_.Running(); }));
    EXPECT_EQ(program_.ExitCode(), 0);
}

} // namespace
} // namespace vardenix::tests
