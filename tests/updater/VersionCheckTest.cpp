#include "updater/VersionCheck.h"

#include "support/FakePlatform.h"
#include "support/FakeTcp.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

using tests::FakeTcp;
using tests::FakeTimer;

constexpr const char* Question =
    "An update was found. Do you want to download it and apply it now (if you answer yes "
    "the program will restart)?";
constexpr const char* MajorQuestion =
    "An update was found. Do you want to download it and apply it now (if you answer yes "
    "the program will exit)?";

std::string Page(const std::string& body) {
    return "HTTP/1.1 200 OK\r\nServer: x\r\n\r\n<html><head><title>Vardenix version "
           "check</title></head>\r\n<body>" +
           body + "</body></html>";
}

class VersionCheckTest : public testing::Test, protected VersionCheckView {
protected:
    void ShowCheck(const std::string& text) override { label2_ = text; }
    void LetEventsThrough() override {
        ++events_;
        EXPECT_EQ(ws1_.State(), TcpState::Closed);
        EXPECT_EQ(timer1_.Milliseconds, 0);
    }
    void StartDownload(const std::string& url) override { download_ += "<" + url + ">"; }

    void Connect(const std::string& url = "http://host.example/v.php") {
        check_.Start(url);
        ws1_.SayConnected();
    }
    void Answer(const std::string& body) {
        Connect();
        ws1_.SayData(Page(body));
        ExpectFinished();
    }
    void ExpectFinished() {
        EXPECT_EQ(ws1_.State(), TcpState::Closed);
        EXPECT_EQ(timer1_.Milliseconds, 0);
    }

    FakeTcp ws1_;
    FakeTimer timer1_;
    tests::FakePlatform platform_;
    UpdateOffer offer_{7, {}};
    VersionCheck check_{ws1_, timer1_, *this, platform_.All, offer_};
    std::string label2_ = "old";
    std::string download_;
    int events_ = 0;
};

TEST_F(VersionCheckTest, TheRequestIsExactlyThat) {
    check_.Start("http://host.example:8080/Vardenix/Version/Version.php");
    EXPECT_EQ(label2_, "Checking for a new version...");
    EXPECT_EQ(ws1_.Story, "connect host.example:8080");
    EXPECT_EQ(timer1_.Milliseconds, 30000);
    EXPECT_EQ(ws1_.Sent, "");
    ws1_.SayConnected();
    EXPECT_EQ(ws1_.Sent,
              "GET /Vardenix/Version/Version.php?Maj=3&Min=0&Rev=1 HTTP/1.0\r\nHost: "
              "host.example\r\n\r\n");
}

TEST_F(VersionCheckTest, AQueryOfTheAddressComesFirst) {
    Connect("http://host.example/?lang=en");
    EXPECT_TRUE(ws1_.Sent.starts_with("GET /?lang=en&Maj=3&Min=0&Rev=1 HTTP/1.0\r\n"));
}

TEST_F(VersionCheckTest, APortCountsOnlyInAnAddressWithItsScheme) {
    check_.Start("host.example:8080/v");
    check_.Start("http://host.example:0/v");
    EXPECT_EQ(ws1_.Story, "connect host.example:80|close|connect host.example:80");
}

TEST_F(VersionCheckTest, OtherSchemesAndNoHostContactNobody) {
    for (const char* url : {"https://host/v", "http:///v", "", "ftp://host",
                            "http://host/a\r\nEvil: yes"}) {
        label2_.clear();
        check_.Start(url);
        EXPECT_EQ(label2_, "Internal error...") << url;
        EXPECT_EQ(ws1_.Story, "") << url;
        ExpectFinished();
    }
}

TEST_F(VersionCheckTest, CurrentKeepsTheServersVersion) {
    Answer("\r\n #Current * 3.0.1 \r\n");
    EXPECT_EQ(label2_, "The program version is up to date");
    EXPECT_EQ(check_.ServerVersion(), "3.0.1");
    EXPECT_EQ(offer_.UpdateType, 0);
    EXPECT_EQ(events_, 1);
}

TEST_F(VersionCheckTest, AMinorUpdateIsAskedAboutAndFetched) {
    platform_.Dialogs.ExpectBox("New update v3.1.0", Question, BoxAnswer::Yes);
    Answer("#Patch*http://host.example/u.7z*v3.1.0");
    EXPECT_EQ(label2_, "An update was found...");
    EXPECT_EQ(offer_.UpdateType, 2);
    EXPECT_EQ(offer_.UpdateVersion, "v3.1.0");
    EXPECT_EQ(download_, "<http://host.example/u.7z>");
}

TEST_F(VersionCheckTest, AMajorUpdatesVersionKeepsItsBlanks) {
    platform_.Dialogs.ExpectBox("New update  v4  0 ", MajorQuestion, BoxAnswer::Yes);
    Answer("#Update*http://host.example/u.7z* v4\r\n\r\n0 *more");
    EXPECT_EQ(offer_.UpdateType, 1);
    EXPECT_EQ(offer_.UpdateVersion, " v4  0 ");
}

TEST_F(VersionCheckTest, NoLeavesNothingPending) {
    platform_.Dialogs.ExpectBox("New update v3.1.0", Question, BoxAnswer::No);
    Answer("#Patch*http://host.example/u.7z*v3.1.0");
    EXPECT_EQ(offer_.UpdateType, 0);
    EXPECT_EQ(download_, "");
}

TEST_F(VersionCheckTest, AnOldVersionInTheDatabaseIsReportedByMail) {
    platform_.Dialogs.ExpectBox(
        "Confirm",
        "The update site was found but apparently there is an older version stored in "
        "it. Do you want to inform the programmer about this error?",
        BoxAnswer::Yes);
    Answer("#OldinDB*x* 2.9.0 ");
    EXPECT_EQ(label2_, "Old version in DB?");
    EXPECT_EQ(offer_.UpdateType, 3);
    EXPECT_EQ(
        platform_.Processes.Story,
        "open mailto:support@vardenix.example?subject=Vardenix OldinDB Error&body=An "
        "OldinDB Error occured. Error Details:%0A%0AProgram Name and version - Vardenix "
        "v3.0.1%0ADB version - 2.9.0%0ATimeStamp - 07 Mar 2026, 9:05:02%0A%0AEnter "
        "possible comments below%0A-------------------------------------------");
}

TEST_F(VersionCheckTest, AServerCannotAddHeadersToTheMail) {
    platform_.Dialogs.ExpectAnyBox("Confirm", BoxAnswer::Yes, nullptr);
    Answer("#OldinDB**2&attach=/etc/passwd");
    EXPECT_NE(platform_.Processes.Story.find("DB version - 2%26attach%3D%2Fetc%2Fpasswd"),
              std::string::npos);
}

TEST_F(VersionCheckTest, NoReportAfterNo) {
    platform_.Dialogs.ExpectAnyBox("Confirm", BoxAnswer::No, nullptr);
    Answer("#OldinDB*x*2.9.0");
    EXPECT_EQ(platform_.Processes.Story, "");
    EXPECT_EQ(offer_.UpdateType, 3);
}

TEST_F(VersionCheckTest, AnyOtherAnswerIsAnError) {
    for (const char* body :
         {"", "Hello", "#current*1", "#Patch", "#Patch*http://a/b", "#Update*http://a/b*",
          "#Patch*http://a/b*v3\t1", "#Patched*http://a/b*v3"}) {
        label2_.clear();
        Answer(body);
        EXPECT_EQ(label2_, "The page was found but there were errors") << body;
        EXPECT_EQ(offer_.UpdateType, 3) << body;
    }
    Answer("#Patch*http://a/b*" + std::string(65, '1'));
    EXPECT_EQ(offer_.UpdateType, 3);
}

TEST_F(VersionCheckTest, AnotherPageIsRefusedAsSoonAsItsTitleIsThere) {
    Connect();
    ws1_.SayData("<TITLE>vardenix version check</TITL");
    EXPECT_EQ(label2_, "Checking for a new version...");
    ws1_.SayData("E>");
    EXPECT_EQ(label2_, "Incorrect update page...");
    EXPECT_EQ(offer_.UpdateType, 0);
    ExpectFinished();
}

TEST_F(VersionCheckTest, MarksAreFoundInAnyCase) {
    platform_.Dialogs.ExpectAnyBox("New update v9", BoxAnswer::No, nullptr);
    Connect();
    ws1_.SayData("<TITLE>Vardenix version check</Title><BODY>#Patch*u*v9</BodY>");
    EXPECT_EQ(label2_, "An update was found...");
}

// Byte by byte the outcome is that of the whole, and the question comes once.
TEST_F(VersionCheckTest, AReplyMayComeInAnyPieces) {
    const std::string page = Page("#Patch*http://host.example/u.7z\r\n*v3.1.0");
    for (const size_t step : {size_t{1}, size_t{2}, size_t{3}, size_t{7}, page.size()}) {
        download_.clear();
        platform_.Dialogs.ExpectBox("New update v3.1.0", Question, BoxAnswer::Yes);
        Connect();
        for (size_t at = 0; at < page.size(); at += step)
            ws1_.SayData(page.substr(at, step));
        EXPECT_EQ(download_, "<http://host.example/u.7z >") << step;
        EXPECT_TRUE(platform_.Dialogs.AllAnswered()) << step;
    }
}

TEST_F(VersionCheckTest, LineEndsOfAnyKindAreOneBlank) {
    for (const char* lineEnd : {"\r\n", "\n", "\r"}) {
        platform_.Dialogs.ExpectBox("New update v3 1", Question, BoxAnswer::No);
        Connect();
        // Also when the pieces part it.
        for (const char letter : Page(std::string("#Patch*u*v3") + lineEnd + "1"))
            ws1_.SayData({&letter, 1});
        EXPECT_TRUE(platform_.Dialogs.AllAnswered());
    }
}

TEST_F(VersionCheckTest, APageWithoutAnEndWaitsForTheTimer) {
    Connect();
    ws1_.SayData("<title>Vardenix version check</title><body>#Current*3");
    EXPECT_EQ(label2_, "Checking for a new version...");
    timer1_.GoOff();
    EXPECT_EQ(label2_, "Timeout getting version info...");
    ExpectFinished();
}

TEST_F(VersionCheckTest, ATimeoutBeforeAConnectionSaysNothing) {
    check_.Start("http://host.example/");
    timer1_.GoOff();
    EXPECT_EQ(label2_, "Checking for a new version...");
    ExpectFinished();
}

TEST_F(VersionCheckTest, ErrorsOfTheConnectionAreTold) {
    check_.Start("http://host.example/");
    ws1_.SayError(111, "Connection refused");
    EXPECT_EQ(label2_, "Connection Error");
    ExpectFinished();
}

TEST_F(VersionCheckTest, AServerThatClosesEarlyIsAConnectionError) {
    Connect();
    ws1_.SayData("<title>Vardenix vers");
    ws1_.SayClosed();
    EXPECT_EQ(label2_, "Connection Error");
    ExpectFinished();
}

TEST_F(VersionCheckTest, AnotherStatusWithoutThePageIsToldAsTheServerSaysIt) {
    for (const auto& [reply, text] :
         {std::pair{"HTTP/1.1 404 Not Found\r\nServer: x\r\n\r\n<h1>Not Found</h1>",
                    "The server answers: HTTP/1.1 404 Not Found"},
          {"HTTP/1.0 500 \x1B[2J\xE4\r\n\r\n", "The server answers: HTTP/1.0 500 ?[2J?"},
          {"HTTP/1.0 199 Wait\r\n\r\n", "The server answers: HTTP/1.0 199 Wait"},
          // Not a whole header, no status, or a good one: the page was cut.
          {"HTTP/1.1 404 Not Found\r\nServer", "Connection Error"},
          {"HTTP/1.1 40\r\n\r\n", "Connection Error"},
          {"HTTP/1.1 4x4 Oh\r\n\r\n", "Connection Error"},
          {"404 Not Found\r\n\r\n", "Connection Error"},
          {"HTTP/1.1 200 OK\r\n\r\n<title>", "Connection Error"}}) {
        Connect();
        ws1_.SayData(reply);
        EXPECT_EQ(label2_, "Checking for a new version...");
        ws1_.SayClosed();
        EXPECT_EQ(label2_, text);
        ExpectFinished();
    }
    // A page of the service is one, whatever its status.
    Connect();
    ws1_.SayData("HTTP/1.1 404 Not Found\r\n\r\n<title>Oh</title>");
    EXPECT_EQ(label2_, "Incorrect update page...");
}

TEST_F(VersionCheckTest, RedirectsChunksAndCompressionAreRefusedAsSuch) {
    Connect();
    ws1_.SayData("HTTP/1.0 302 Found\r\nLocation: http://evil.example/\r\n\r\n");
    EXPECT_EQ(label2_, "The server sends on to another address, which is not followed");
    Connect();
    ws1_.SayData("HTTP/1.1 200 OK\r\ntransfer-encoding: chunked\r\n\r\n5\r\nhello");
    EXPECT_EQ(label2_, "The server sends its reply in chunks, which are not read");
    Connect();
    ws1_.SayData("HTTP/1.1 200 OK\r\nContent-Encoding:gzip\r\n\r\n\x1F\x8B");
    EXPECT_EQ(label2_, "The server compresses its reply, which is not read");
    EXPECT_EQ(offer_.UpdateType, 0);
    ExpectFinished();
}

TEST_F(VersionCheckTest, AReplyOfAMegabyteIsTheLongest) {
    Connect();
    ws1_.SayData(std::string(1 << 20, ' '));
    EXPECT_EQ(ws1_.State(), TcpState::Connected);
    ws1_.SayData(" ");
    EXPECT_EQ(label2_, "The page was found but there were errors");
    EXPECT_EQ(offer_.UpdateType, 3);
    ExpectFinished();
}

TEST_F(VersionCheckTest, ASecondCheckBeginsAfresh) {
    Connect();
    ws1_.SayData("<title>something");
    Connect();
    ws1_.SayData(Page("#Current*3.0.1"));
    EXPECT_EQ(label2_, "The program version is up to date");
}

TEST_F(VersionCheckTest, ACheckThatIsStoppedSaysNothing) {
    Connect();
    check_.Stop();
    EXPECT_EQ(label2_, "Checking for a new version...");
    ExpectFinished();
}

TEST(VersionCheck, AnInstallationOfTheSystemIsNotUpdated) {
    EXPECT_TRUE(MayUpdateItself("/home/me/vardenix\\", "/home/me/vardenix\\"));
    EXPECT_FALSE(
        MayUpdateItself("/home/me/.local/share/vardenix\\", "/usr/lib/vardenix\\"));
    EXPECT_FALSE(MayUpdateItself("", ""));
}

} // namespace
} // namespace vardenix
