#include "updater/Download.h"

#include "support/FakeTcp.h"
#include "support/PlainUser.h"
#include "support/TestFolder.h"
#include "updater/ReplyHeader.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace vardenix {
namespace {

using tests::FakeTcp;
using tests::Slurp;
using tests::TestFolder;

// Writes down every event in order.
class Recorder : public DownloadEvents {
public:
    std::string Story;
    std::function<void()> OnProgress;

    void ContactingServer() override { Tell("contacting"); }
    void Connected() override { Tell("connected"); }
    void Disconnected() override { Tell("disconnected"); }
    void SendingServerRequest(const std::string& request) override {
        Tell("request " + request.substr(0, request.find('\r')));
    }
    void SendProgress(int64_t sent, int64_t remaining) override {
        Tell("sent " + std::to_string(sent) + "+" + std::to_string(remaining));
    }
    void SendCompleted() override { Tell("sent all"); }
    void DownloadStarted() override { Tell("started"); }
    void DownloadProgress(int32_t received, int32_t remaining) override {
        Tell("progress " + std::to_string(received) + "+" + std::to_string(remaining));
        if (OnProgress)
            OnProgress();
    }
    void DownloadCompleted() override { Tell("completed"); }
    void FileInfoRetrieved() override { Tell("info"); }
    void BrokenOff() override { Tell("broken off"); }
    void Error(int number, const std::string& text, const std::string& source) override {
        Tell("error " + std::to_string(number) + " " + text + " (" + source + ")");
    }

private:
    void Tell(const std::string& what) { Story += (Story.empty() ? "" : "|") + what; }
};

constexpr const char* NoLength = "error 57 Error starting download.\nThe server does not "
                                 "say how long the file is. (Download)";

class DownloadTest : public testing::Test {
protected:
    DownloadTest() {
        download_.SetRemoteHost("host.example");
        download_.SetRemoteFile("a/b/u.7z");
    }
    void Begin() {
        download_.StartDownload();
        winsock_.SayConnected();
        events_.Story.clear();
    }
    std::string Written() { return Slurp(folder_.File("u.7z")); }

    TestFolder folder_;
    FakeTcp winsock_;
    Recorder events_;
    Download download_{winsock_, events_, folder_.Path()};
};

TEST_F(DownloadTest, PathsGetTheirSlashes) {
    EXPECT_EQ(download_.RemoteFile(), "/a/b/u.7z");
    EXPECT_EQ(download_.FileName(), "u.7z");
    EXPECT_EQ(download_.LocalPath(), folder_.Path() + "\\");
    download_.SetLocalPath("/x/");
    EXPECT_EQ(download_.LocalPath(), "/x/");
    download_.SetRemoteFile("/c");
    EXPECT_EQ(download_.RemoteFile(), "/c");
    EXPECT_EQ(download_.BytesRemaining(), 0);
}

TEST_F(DownloadTest, TheRequestsAreExactlyThat) {
    EXPECT_FALSE(download_.IsConnected());
    download_.StartDownload();
    EXPECT_EQ(winsock_.Story, "connect host.example:80");
    winsock_.SayConnected();
    EXPECT_TRUE(download_.IsConnected());
    EXPECT_EQ(download_.RemoteHostIP(), "192.0.2.7");
    EXPECT_EQ(winsock_.Sent,
              "GET /a/b/u.7z HTTP/1.0\r\nHost: host.example\r\nUser-Agent: "
              "blah blah...\r\n\r\n");
    EXPECT_EQ(events_.Story, "contacting|connected|request GET /a/b/u.7z HTTP/1.0");
    winsock_.Sent.clear();
    download_.GetFileInformation();
    EXPECT_EQ(winsock_.Sent,
              "HEAD /a/b/u.7z HTTP/1.0\r\nHost: host.example\r\nUser-Agent: "
              "blah blah...\r\n\r\n");
}

TEST_F(DownloadTest, AFileComesInPieces) {
    Begin();
    winsock_.SayData("HTTP/1.1 200 OK\r\ncontent-length: 5\r\n\r\nab");
    EXPECT_EQ(download_.FileLength(), 5);
    EXPECT_EQ(download_.BytesReceived(), 2);
    EXPECT_EQ(download_.BytesRemaining(), 3);
    winsock_.SayData("c");
    winsock_.SayData("de");
    EXPECT_EQ(events_.Story, "info|started|progress 2+3|progress 3+2|progress "
                             "5+0|completed|disconnected");
    EXPECT_EQ(Written(), "abcde");
    EXPECT_EQ(winsock_.State(), TcpState::Closed);
}

TEST_F(DownloadTest, EveryByteArrivesAsItWas) {
    std::string bytes;
    for (int i = 0; i < 256 * 3; ++i)
        bytes += static_cast<char>(i * 7);
    Begin();
    winsock_.SayData("HTTP/1.0 200 OK\r\nContent-Length: 768\r\n\r\n");
    for (size_t at = 0; at < bytes.size(); at += 5)
        winsock_.SayData(std::string_view(bytes).substr(at, 5));
    EXPECT_EQ(Written(), bytes);
}

TEST_F(DownloadTest, MoreThanAnnouncedIsCutOffAndCompletesOnce) {
    Begin();
    winsock_.SayData("HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nabcdef");
    winsock_.SayData("ghi");
    EXPECT_EQ(events_.Story, "info|started|progress 3+0|completed|disconnected");
    EXPECT_EQ(Written(), "abc");
}

TEST_F(DownloadTest, AnOlderFileIsReplaced) {
    folder_.Write("u.7z", "a long old file");
    Begin();
    winsock_.SayData("HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nabc");
    EXPECT_EQ(Written(), "abc");
}

TEST_F(DownloadTest, ALinkInTheFilesPlaceIsNotWrittenThrough) {
    folder_.Write("precious", "mine");
    std::filesystem::create_symlink(folder_.File("precious"), folder_.File("u.7z"));
    Begin();
    winsock_.SayData("HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nabc");
    EXPECT_EQ(Slurp(folder_.File("precious")), "mine");
}

TEST_F(DownloadTest, OnlyGoodRepliesAreTaken) {
    for (const auto& [reply, why] :
         {std::pair{"HTTP/1.1 404 Not Found\r\nContent-Length: 2\r\n\r\nno",
                    "The server answers: HTTP/1.1 404 Not Found"},
          {"HTTP/1.1 500 Oh\x1B[2J\r\n\r\n", "The server answers: HTTP/1.1 500 Oh?[2J"},
          {"HTTP/1.1 302 Found\r\nLocation: http://evil.example/\r\n\r\n",
           "The server sends on to another address, which is not followed."},
          {"HTTP/1.1 200 OK\r\nContent-Length: 9\r\nTransfer-Encoding: chunked\r\n\r\n4",
           "The server sends its reply in chunks, which are not read."},
          {"HTTP/1.1 200 OK\r\nContent-Length: 9\r\nContent-Encoding: gzip\r\n\r\n4",
           "The server compresses its reply, which is not read."},
          {"HTTP/1.", "The server answers: HTTP/1."},
          {"HTTP/1.x 200", "The server answers: HTTP/1.x 200"},
          {"HTTP/2 200 OK\r\n\r\n", "The server answers: HTTP/2 200 OK"},
          {"7z\xBC\xAF'\x1C\x01\x02", "What it sends is no reply of a web server."},
          {"HTTP/1.1 200 OK\r\nContent-Le", "The header of the server's reply is cut."},
          {"HTTP/1.1 200 OK\r\nContent-Length: 2000000000\r\n\r\n",
           "The server announces 2000000000 bytes, more than an update may have."}}) {
        Begin();
        winsock_.SayData(reply);
        EXPECT_EQ(events_.Story, std::string("disconnected|error 57 Error starting "
                                             "download.\n") +
                                     why + " (Download)");
        EXPECT_EQ(winsock_.State(), TcpState::Closed);
    }
    EXPECT_FALSE(std::filesystem::exists(folder_.File("u.7z")) && !Written().empty());
}

TEST_F(DownloadTest, AnyMinorVersionOfTheProtocolIsGood) {
    Begin();
    winsock_.SayData("HTTP/1.9 200\r\nContent-Length: 1\r\n\r\nx");
    EXPECT_EQ(Written(), "x");
}

TEST_F(DownloadTest, AReplyWithoutALengthWritesNothing) {
    Begin();
    winsock_.SayData("HTTP/1.1 200 OK\r\nServer: x\r\n\r\nabc Content-Length: 3\r\n");
    EXPECT_EQ(events_.Story, "info|started");
    EXPECT_EQ(Written(), "");
    winsock_.SayData("7z\xBC\xAF'\x1C");
    EXPECT_EQ(events_.Story, std::string("info|started|disconnected|") + NoLength);
    EXPECT_EQ(Written(), "");
}

TEST_F(DownloadTest, AReplyWithoutALengthThatEndsIsToldAsThat) {
    for (const char* length : {"", "Content-Length: 0\r\n", "Content-Length: -4\r\n",
                               "Content-Length: many\r\n"}) {
        Begin();
        winsock_.SayData(std::string("HTTP/1.1 200 OK\r\n") + length + "\r\n7z\xBC\xAF");
        winsock_.SayClosed();
        EXPECT_EQ(events_.Story, std::string("info|started|disconnected|") + NoLength)
            << length;
        EXPECT_EQ(Written(), "");
    }
}

// Theater makers' servers put a blank there; without it a digit is lost, as ever.
TEST(ContentLength, IsTakenSixteenCharactersBehindItsName) {
    EXPECT_EQ(FindAnyCase("..AMZ@[..", "amz@["), 2U);
    EXPECT_EQ(FindAnyCase("..AMZ..", "amz`"), std::string_view::npos);
    EXPECT_EQ(ContentLength("HTTP/1.1 200 OK\r\nContent-Length: 123\r\n"), 123);
    EXPECT_EQ(ContentLength("CONTENT-LENGTH:   9 bytes\r\n"), 9);
    EXPECT_EQ(ContentLength("Content-Length:123\r\n"), 23);
    EXPECT_EQ(ContentLength("Content-Length: 2.5\r\n"), 2);
    EXPECT_EQ(ContentLength("Content-Length: 3.5\r\n"), 4);
    EXPECT_EQ(ContentLength("Content-Length: x\r\n"), 0);
    EXPECT_EQ(ContentLength("Content-Length: -4\r\n"), -4);
    EXPECT_EQ(ContentLength("Length: 4\r\n"), 0);
}

TEST_F(DownloadTest, ALengthBeyond31BitsOverflows) {
    Begin();
    winsock_.SayData("HTTP/1.1 200 OK\r\nContent-Length: 2147483648\r\n\r\n");
    EXPECT_TRUE(events_.Story.starts_with("disconnected|error 6 Overflow"));
}

TEST_F(DownloadTest, ANegativeLengthWritesNothing) {
    Begin();
    winsock_.SayData("HTTP/1.1 200 OK\r\nContent-Length: -4\r\n\r\nabcdef");
    winsock_.SayData("HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nabc");
    EXPECT_EQ(Written(), "");
}

TEST_F(DownloadTest, InformationIsTheLengthAlone) {
    download_.GetFileInformation();
    winsock_.SayConnected();
    events_.Story.clear();
    winsock_.SayData("HTTP/1.1 200 OK\r\nContent-Length: 77\r\n\r\n");
    EXPECT_EQ(events_.Story, "info|disconnected");
    EXPECT_EQ(download_.FileLength(), 77);
    download_.GetFileInformation();
    winsock_.SayConnected();
    EXPECT_EQ(download_.FileLength(), 0);
    events_.Story.clear();
    winsock_.SayData("HTTP/1.1 404 NOT FOUND\r\nContent-Length: 77\r\n\r\n");
    EXPECT_EQ(events_.Story, "error 1 Not Found (2)|disconnected");
    EXPECT_EQ(folder_.Names(), "");
}

TEST_F(DownloadTest, NamesThatLeaveTheFolderAreRefused) {
    for (const char* file : {"/a/", "/..", "/a/..%2f/..", "/a\\b", "/C:x"}) {
        download_.SetRemoteFile(file);
        Begin();
        winsock_.SayData("HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nabc");
        EXPECT_TRUE(events_.Story.starts_with(
            "disconnected|error 57 Error starting download.\nThe file's name "))
            << events_.Story;
    }
    EXPECT_EQ(folder_.Names(), "");
}

TEST_F(DownloadTest, CancelAtAnyMomentDisconnectsOnce) {
    download_.Cancel();
    EXPECT_EQ(events_.Story, "");
    download_.StartDownload();
    download_.Cancel();
    download_.Cancel();
    EXPECT_EQ(events_.Story, "contacting|disconnected");
    Begin();
    events_.OnProgress = [this] { download_.Cancel(); };
    winsock_.SayData("HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nabc");
    EXPECT_EQ(events_.Story, "info|started|progress 3+0|disconnected");
}

TEST_F(DownloadTest, WhatHappensOnTheConnectionIsTold) {
    Begin();
    winsock_.Events()->TcpSendProgress(5, 2);
    winsock_.Events()->TcpSendCompleted();
    winsock_.SayError(104, "Connection reset");
    EXPECT_EQ(events_.Story,
              "sent 5+2|sent all|error 104 Connection reset (a test)|disconnected");
    Begin();
    winsock_.SayData("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nabc");
    winsock_.SayClosed();
    EXPECT_EQ(events_.Story, "info|started|progress 3+6|disconnected|broken off");
    EXPECT_EQ(Written(), "abc");
}

TEST_F(DownloadTest, AFolderThatCannotBeWrittenIsAnError) {
    tests::LetOthers(folder_.Path(), 5);
    {
        const tests::PlainUser plain;
        Begin();
        winsock_.SayData("HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nabc");
    }
    tests::LetOthers(folder_.Path(), 7);
    EXPECT_TRUE(events_.Story.starts_with("disconnected|error 70 ")) << events_.Story;
}

} // namespace
} // namespace vardenix
