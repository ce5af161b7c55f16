#include "updater/UpdateDownload.h"

#include "support/FakeTcp.h"
#include "support/HttpServer.h"
#include "support/ScriptedDialogs.h"
#include "support/TestFolder.h"
#include "updater/SocketClient.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>

namespace vardenix {
namespace {

using tests::GoodReply;
using tests::HttpConnection;
using tests::HttpServer;
using tests::Slurp;
using tests::TestFolder;

TEST(SizeText, IsInKilobytesThenMegabytes) {
    EXPECT_EQ(SizeText(0), "0.00KB");
    EXPECT_EQ(SizeText(512), "0.50KB");
    EXPECT_EQ(SizeText(1024 * 1024 - 512), "1023.50KB");
    EXPECT_EQ(SizeText(1024 * 1024), "1.00MB");
    EXPECT_EQ(SizeText(1024 * 1024 * 5 / 2), "2.50MB");
}

class UpdateDownloadTest : public testing::Test, protected DownloadView {
protected:
    void ShowLabel1(const std::string& text) override { label1_ = text; }
    void ShowLabel2(const std::string& text) override { label2_ = text; }
    void ShowProgress(int percent) override { percents_.push_back(percent); }
    void LetEventsThrough() override { story_ += "events|"; }
    void Unload() override { story_ += "unload|"; }

    std::unique_ptr<UpdateDownload> Made(TcpClient& client) {
        return std::make_unique<UpdateDownload>(
            client, timer_, static_cast<DownloadView&>(*this), dialogs_,
            folder_.Path() + "/UpdateTemp\\", [this](const std::string& name) {
                EXPECT_EQ(label1_, "Applying Update...");
                story_ += "apply " + name + "|";
            });
    }
    // Until the window goes.
    void Run(const HttpServer& server, const std::string& path) {
        SocketClient client;
        const auto download = Made(client);
        download->Init_Download(server.Address() + path);
        while (client.Step(std::chrono::seconds(30))) {
        }
    }
    void ExpectError(const std::string& text) {
        dialogs_.ExpectBox("", "An error occured:\n" + text, BoxAnswer::Ok);
    }
    std::string Archive() { return Slurp(folder_.File("UpdateTemp/u.7z")); }

    TestFolder folder_;
    tests::FakeTimer timer_;
    tests::ScriptedDialogs dialogs_;
    std::string label1_;
    std::string label2_;
    std::string story_;
    std::vector<int> percents_;
};

TEST_F(UpdateDownloadTest, AnArchiveIsFetchedIntoAnEmptyFolder) {
    folder_.Write("UpdateTemp/old", "x");
    std::string body(300000, '\0');
    for (size_t i = 0; i < body.size(); ++i)
        body[i] = static_cast<char>(i * i >> 3);
    const HttpServer server(GoodReply(body));
    Run(server, "/files/u.7z?ignored");
    EXPECT_EQ(Archive(), body);
    EXPECT_EQ(story_, "events|apply u.7z|unload|");
    EXPECT_EQ(label2_, "292.97KB from 292.97KB downloaded");
    EXPECT_EQ(percents_.front(), 0);
    EXPECT_EQ(percents_.back(), 100);
    EXPECT_TRUE(std::ranges::is_sorted(percents_));
    EXPECT_FALSE(std::filesystem::exists(folder_.File("UpdateTemp/old")));
    EXPECT_EQ(server.Requests(), "GET /files/u.7z HTTP/1.0\r\nHost: "
                                 "127.0.0.1\r\nUser-Agent: blah blah...\r\n\r\n");
}

TEST_F(UpdateDownloadTest, ABodyInOneByteChunksArrivesWhole) {
    const HttpServer server([](const HttpConnection& client, const auto&) {
        client.Send("HTTP/1.0 200 OK\r\nContent-Length: 500\r\n\r\n");
        client.SendSlowly(std::string(500, 'y'));
    });
    Run(server, "/u.7z");
    EXPECT_EQ(Archive(), std::string(500, 'y'));
    EXPECT_EQ(story_, "events|apply u.7z|unload|");
}

TEST_F(UpdateDownloadTest, AServerThatNeverStopsIsCutAtItsLength) {
    const HttpServer server([](const HttpConnection& client, const auto&) {
        client.Send("HTTP/1.0 200 OK\r\nContent-Length: 100000\r\n\r\n");
        const std::string blanks(1 << 20, ' ');
        for (int i = 0; i < 2048 && client.Send(blanks); ++i) {
        }
    });
    Run(server, "/u.7z");
    EXPECT_EQ(Archive().size(), 100000U);
    EXPECT_EQ(story_, "events|apply u.7z|unload|");
}

TEST_F(UpdateDownloadTest, AServerThatBreaksOffIsTold) {
    const HttpServer server("HTTP/1.0 200 OK\r\nContent-Length: 500\r\n\r\nabc");
    ExpectError("57: The server has broken off before the file was whole.");
    Run(server, "/u.7z");
    EXPECT_EQ(story_, "unload|");
}

TEST_F(UpdateDownloadTest, AServerThatDiesIsTold) {
    const HttpServer server(
        [](const HttpConnection& client, const auto&) { client.Reset(); });
    ExpectError("104: Connection reset by peer");
    Run(server, "/u.7z");
    EXPECT_EQ(story_, "unload|");
}

TEST_F(UpdateDownloadTest, AnotherStatusIsTold) {
    for (const auto& [reply, why] :
         {std::pair{"HTTP/1.0 404 Not Found\r\n\r\n",
                    "The server answers: HTTP/1.0 404 Not Found"},
          {"HTTP/1.0 302 Found\r\nLocation: /v.7z\r\n\r\n",
           "The server sends on to another address, which is not followed."}}) {
        const HttpServer server{std::string(reply)};
        ExpectError(std::string("57: Error starting download.\n") + why);
        Run(server, "/u.7z");
    }
    EXPECT_EQ(story_, "unload|unload|");
}

TEST_F(UpdateDownloadTest, NobodyAtTheAddressIsTold) {
    int32_t port = 0;
    {
        const HttpServer gone("");
        port = gone.Port();
    }
    SocketClient client;
    const auto download = Made(client);
    ExpectError("111: Connection refused");
    download->Init_Download("http://127.0.0.1:" + std::to_string(port) + "/u.7z");
    while (client.Step(std::chrono::seconds(30))) {
    }
    EXPECT_EQ(story_, "unload|");
}

TEST_F(UpdateDownloadTest, AServerThatStallsIsGivenUp) {
    const HttpServer server([](const HttpConnection& client, const auto&) {
        client.Send("HTTP/1.0 200 OK\r\nContent-Length: 500\r\n\r\nabc");
        client.Stall();
    });
    SocketClient client;
    const auto download = Made(client);
    download->Init_Download(server.Address() + "/u.7z");
    EXPECT_EQ(timer_.Milliseconds, 30000);
    while (label2_.empty())
        client.Step(std::chrono::seconds(30));
    EXPECT_EQ(label2_, "0.00KB from 0.49KB downloaded");
    ExpectError("57: The server has sent nothing for half a minute.");
    timer_.GoOff();
    EXPECT_EQ(client.State(), TcpState::Closed);
    EXPECT_EQ(story_, "unload|");
}

TEST_F(UpdateDownloadTest, CancelGivesUpWithoutAWord) {
    tests::FakeTcp client;
    const auto download = Made(client);
    download->Init_Download("http://host.example:81/u.7z");
    EXPECT_EQ(client.Story, "connect host.example:81");
    EXPECT_EQ(label1_, "Downloading Update...");
    client.SayConnected();
    download->Cancel();
    EXPECT_EQ(timer_.Milliseconds, 0);
    EXPECT_EQ(client.State(), TcpState::Closed);
    EXPECT_EQ(story_, "unload|");
}

TEST_F(UpdateDownloadTest, WithoutAPortItIsEighty) {
    tests::FakeTcp client;
    const auto download = Made(client);
    download->Init_Download("host.example/u.7z");
    EXPECT_EQ(client.Story, "connect host.example:80");
}

TEST_F(UpdateDownloadTest, AddressesThatCannotBeFetchedAreTold) {
    tests::FakeTcp client;
    const auto download = Made(client);
    for (const char* url : {"https://host.example/u.7z", "", "http://a b/u.7z"}) {
        ExpectError("52: Bad file name or number\nthe update's address is none that can "
                    "be fetched");
        download->Init_Download(url);
    }
    EXPECT_EQ(client.Story, "");
}

} // namespace
} // namespace vardenix
