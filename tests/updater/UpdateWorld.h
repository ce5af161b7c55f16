#pragma once

#include "loader/LoaderList.h"
#include "support/FakePlatform.h"
#include "support/FolderFiles.h"
#include "support/RunProgram.h"
#include "support/TestFolder.h"
#include "updater/ApplyUpdate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace vardenix::tests {

// By md5sum.
constexpr const char* NewPicture = "30A220E4C665D3791E1F800DD3942CA7"; // "new picture"
constexpr const char* NewFile = "D6F012FAA49D3640877E2B3C8FDC17E1";    // "a new file"

// A program's folder with an update that has been fetched, and what applying it does.
class UpdateWorld : public testing::Test, protected UpdateEnd {
protected:
    UpdateWorld() {
        const std::string program = folder_.Path() + "/program\\";
        Folders.AppPath = Folders.ShippedPath = program;
        Folders.TempFolder = program + "Temp\\";
        Folders.UpdateTempFolder = program + "UpdateTemp\\";
        for (const char* name : {"program/Temp", "program/UpdateTemp", "make"})
            std::filesystem::create_directories(folder_.File(name));
        for (const auto& [name, bytes] : Old)
            folder_.Write("program/" + name, bytes);
    }

    void HideDownload() override { Story += "hide|"; }
    void ShowText(const std::string& path) override {
        Story += "show " + Slurp(RealFile(path)) + "|";
    }
    void ExitProgram(const std::string& commandLine) override {
        Story += "exit " + commandLine + "|";
    }

    static std::string RealFile(std::string path) {
        std::ranges::replace(path, '\\', '/');
        return path;
    }

    // By the real archive program, which this leaves alone with its arguments.
    static void SevenZip(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"/usr/bin/env", "7zz"});
        const ProgramResult result = RunProgram(arguments);
        if (result.ExitCode != 0)
            throw std::runtime_error(result.Output + result.Errors);
    }
    std::string Archive() const { return folder_.File("program/UpdateTemp/u.7z"); }
    void Pack(const Files& files) {
        for (const auto& [name, bytes] : files)
            SevenZip(
                {"a", "-mx1", "-spd", Archive(), folder_.Write("make/" + name, bytes)});
    }

    void Apply(int32_t type = UpdateMinor) {
        Offer = {type, "v3.1.0"};
        Kept = ApplyUpdate("u.7z", {Folders, Platform.All, Offer, *this, Key, Arguments});
    }
    // A line of the list, and one of the log.
    static std::string Copy(const std::string& name, const std::string& hash) {
        return "COPY*" + name + "*" + hash + "\r\n";
    }
    static std::string At(const std::string& text) {
        return "<07/03/2026 09:05> " + text + "\r\n";
    }
    // Everything in the program's folder but the log and what the run scratches in.
    Files Program() const {
        Files files = FilesIn(folder_.File("program"));
        for (const char* name : {"Temp/", "UpdateTemp/", "Update.log"})
            files.erase(name);
        return files;
    }
    // Without the three lines that every run begins with.
    std::string Log() const {
        const std::string log = Slurp(folder_.File("program/Update.log"));
        EXPECT_TRUE(log.starts_with("\r\nUpdate Started at 07/03/2026 09:05\r\nUpgrading "
                                    "from v3.0.1 to v3.1.0\r\n"))
            << log;
        return log.substr(log.find("v3.1.0\r\n") + 8);
    }
    void ExpectRefused(const std::string& why) {
        Platform.Dialogs.ExpectBox(
            "Error.", "The update is refused, and nothing has been changed.\n" + why,
            BoxAnswer::Ok);
        Apply();
        EXPECT_TRUE(Platform.Dialogs.AllAnswered()) << why;
        EXPECT_EQ(Program(), Old) << why;
        EXPECT_EQ(Story, "") << why;
        EXPECT_NE(Log().find("<07/03/2026 09:05> The update is refused. " + why + "\r\n"),
                  std::string::npos)
            << Log();
    }

    const Files Old{{"Loader", "the loader"},
                    {"NoTile.jpg", "old picture"},
                    {"old.dll", "to be deleted"},
                    {"vardenix", "old program"}};
    TestFolder folder_;
    ProgramFolders Folders;
    FakePlatform Platform;
    UpdateOffer Offer;
    std::optional<KeptFiles> Kept;
    std::string Key;
    std::vector<std::string> Arguments;
    std::string Story;
};

} // namespace vardenix::tests
