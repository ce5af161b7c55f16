#include "support/HttpServer.h"
#include "support/ScriptedDialogs.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"
#include "updater/windows/QtTcpClient.h"
#include "updater/windows/frmDispTxt.h"
#include "updater/windows/frmDownload.h"
#include "windows/WindowTest.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

#include <filesystem>

namespace vardenix {
namespace {

using tests::Find;
using tests::GoodReply;
using tests::HttpConnection;
using tests::HttpServer;
using tests::Slurp;
using tests::TestFolder;

class FrmDownloadTest : public testing::Test {
protected:
    void Fetch(const HttpServer& server) {
        window_.SetUrl(server.Address() + "/files/u.7z");
        window_.Init_Download();
    }
    bool UntilHidden() {
        return QTest::qWaitFor([this] { return !window_.isVisible(); }, 30000);
    }
    QString Text(const char* name) { return Find<QLabel>(window_, name).text(); }
    std::string Archive() { return Slurp(folder_.File("UpdateTemp/u.7z")); }

    TestFolder folder_;
    tests::ScriptedDialogs dialogs_;
    std::string applied_;
    frmDownload window_{dialogs_, folder_.Path() + "/UpdateTemp/",
                        [this](const std::string& name) {
                            EXPECT_EQ(Text("Label1"), "Applying Update...");
                            applied_ += name;
                        }};
};

TEST_F(FrmDownloadTest, FetchesAndHandsOnEveryByte) {
    std::string body(700000, '\0');
    for (size_t i = 0; i < body.size(); ++i)
        body[i] = static_cast<char>(i * 31 >> 2);
    const HttpServer server(GoodReply(body));
    Fetch(server);
    EXPECT_TRUE(window_.isModal());
    ASSERT_TRUE(UntilHidden());
    EXPECT_EQ(applied_, "u.7z");
    EXPECT_TRUE(Archive() == body);
    EXPECT_EQ(Text("Label2"), "683.59KB from 683.59KB downloaded");
    EXPECT_EQ(Find<QProgressBar>(window_, "ProgressBar1").value(), 100);
    EXPECT_EQ(Find<QProgressBar>(window_, "ProgressBar1").maximum(), 100);
}

TEST_F(FrmDownloadTest, ABodyInOneByteChunksArrivesWhole) {
    const HttpServer server([](const HttpConnection& client, const auto&) {
        client.Send("HTTP/1.0 200 OK\r\nContent-Length: 300\r\n\r\n");
        client.SendSlowly(std::string(300, 'y'));
    });
    Fetch(server);
    ASSERT_TRUE(UntilHidden());
    EXPECT_EQ(Archive(), std::string(300, 'y'));
    EXPECT_EQ(applied_, "u.7z");
}

TEST_F(FrmDownloadTest, AServerThatNeverStopsIsCutAtItsLength) {
    const HttpServer server([](const HttpConnection& client, const auto&) {
        client.Send("HTTP/1.0 200 OK\r\nContent-Length: 100000\r\n\r\n");
        const std::string blanks(1 << 20, ' ');
        for (int i = 0; i < 2048 && client.Send(blanks); ++i) {
        }
    });
    Fetch(server);
    ASSERT_TRUE(UntilHidden());
    EXPECT_EQ(Archive().size(), 100000U);
}

TEST_F(FrmDownloadTest, WhatGoesWrongIsTold) {
    for (const auto& [reply, text] :
         {std::pair{"HTTP/1.0 500 Oh\r\n\r\n",
                    "57: Error starting download.\nThe server answers: HTTP/1.0 500 Oh"},
          {"HTTP/1.0 200 OK\r\nContent-Length: 9\r\n\r\nabc",
           "57: The server has broken off before the file was whole."},
          {"", "57: The server has broken off before the file was whole."}}) {
        const HttpServer server{std::string(reply)};
        dialogs_.ExpectBox("", std::string("An error occured:\n") + text, BoxAnswer::Ok);
        Fetch(server);
        ASSERT_TRUE(UntilHidden());
    }
    EXPECT_EQ(applied_, "");
}

TEST_F(FrmDownloadTest, NobodyThereIsTold) {
    std::string url;
    {
        const HttpServer gone("");
        url = gone.Address() + "/u.7z";
    }
    dialogs_.ExpectBox("", "An error occured:\n0: Connection refused", BoxAnswer::Ok);
    window_.SetUrl(url);
    window_.Init_Download();
    EXPECT_TRUE(UntilHidden());
}

TEST_F(FrmDownloadTest, CancelEscAndTheCloseBoxGiveUp) {
    const std::function<void()> ways[] = {
        [this] {
            QTest::mouseClick(&Find<QPushButton>(window_, "Command1"), Qt::LeftButton);
        },
        [this] { QTest::keyClick(&window_, Qt::Key_Escape); },
        [this] { window_.close(); }};
    for (const auto& giveUp : ways) {
        const HttpServer server([](const HttpConnection& client, const auto&) {
            client.Send("HTTP/1.0 200 OK\r\nContent-Length: 2048\r\n\r\nabc");
            client.Stall();
        });
        Fetch(server);
        ASSERT_TRUE(QTest::qWaitFor([this] { return !Text("Label2").isEmpty(); }, 30000));
        EXPECT_EQ(Text("Label1"), "Downloading Update...");
        EXPECT_EQ(Text("Label2"), "0.00KB from 2.00KB downloaded");
        giveUp();
        EXPECT_FALSE(window_.isVisible());
    }
    EXPECT_EQ(applied_, "");
    EXPECT_EQ(Find<QPushButton>(window_, "Command1").text().remove('&'), "Cancel");
}

TEST(QtTimer, GoesOffOnceUnlessStopped) {
    int times = 0;
    QtTimer timer;
    QtTimer stopped;
    stopped.Start(0, [&] { times += 100; });
    stopped.Stop();
    timer.Start(1000000, [&] { times += 10; });
    timer.Start(0, [&] { ++times; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return times != 0; }, 30000));
    QCoreApplication::processEvents();
    EXPECT_EQ(times, 1);
}

TEST(frmDispTxt, ShowsAFileLineByLine) {
    const TestFolder folder;
    frmDispTxt window;
    window.OpenTxtFile(folder.Write("a.txt", "one\r\ntwo\xE4\n\nthree"));
    auto& text = Find<QPlainTextEdit>(window, "Text1");
    EXPECT_EQ(text.toPlainText(), QString("one\ntwo\u00E4\n\nthree\n"));
    EXPECT_TRUE(text.isReadOnly());
    EXPECT_THROW(window.OpenTxtFile(folder.File("none")), RuntimeError);
    window.show();
    QTest::mouseClick(&Find<QPushButton>(window, "Command1"), Qt::LeftButton);
    EXPECT_FALSE(window.isVisible());
}

TEST(frmDispTxt, AFileThatNobodyCouldReadIsRefused) {
    const TestFolder folder;
    frmDispTxt window;
    const std::string path = folder.Write("a.txt", "x");
    std::filesystem::resize_file(path, (4 << 20) + 1);
    EXPECT_THROW(window.OpenTxtFile(path), RuntimeError);
}

} // namespace
} // namespace vardenix
