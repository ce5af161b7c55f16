// update check of the real vardenix-cli, against a server of the test's.
#include "support/HttpServer.h"
#include "support/RunProgram.h"

#include <gtest/gtest.h>

namespace vardenix::tests {
namespace {

std::string Page(const std::string& body) {
    return GoodReply("<html><title>Vardenix version check</title><body>" + body +
                     "</body></html>");
}

ProgramResult CheckAt(const std::string& url, std::vector<std::string> more = {}) {
    more.insert(more.begin(), {VARDENIX_CLI, "update", "check", "--url", url});
    return RunProgram(more);
}

ProgramResult CheckAt(const HttpServer& server) {
    return CheckAt(server.Address() + "/v");
}

TEST(UpdateCommand, TheNewestVersionEndsWithNought) {
    const HttpServer server(Page("#Current*3.0.1"));
    const ProgramResult result = CheckAt(server);
    EXPECT_EQ(result.ExitCode, 0) << result.Errors;
    EXPECT_EQ(result.Output, "answer: current\ntext: The program version is up to date\n"
                             "version: 3.0.1\n");
    EXPECT_EQ(result.Errors, "");
    EXPECT_TRUE(server.Requests().starts_with("GET /v?Maj=3&Min=0&Rev=1 HTTP/1.0\r\n"));
}

TEST(UpdateCommand, ANewerVersionEndsWithOneAndAsksNobody) {
    const HttpServer server(Page("#Patch*http://x.example/u.7z*v3.1\x1B"
                                 "0"));
    EXPECT_EQ(CheckAt(server).ExitCode, 3); // no version
    const HttpServer good(Page("#Update*http://x.example/u.7z*v3.1.0"));
    const ProgramResult result = CheckAt(good.Address(), {"--json"});
    EXPECT_EQ(result.ExitCode, 1) << result.Errors;
    EXPECT_EQ(result.Output, "{\n  \"answer\": \"update\",\n"
                             "  \"text\": \"An update was found...\",\n"
                             "  \"version\": \"v3.1.0\",\n"
                             "  \"url\": \"http://x.example/u.7z\"\n}\n");
    EXPECT_EQ(result.Errors, "");
}

TEST(UpdateCommand, FailuresAreRunTimeErrors) {
    for (const auto& [reply, text] :
         {std::pair{"HTTP/1.0 302 Found\r\n\r\n", "sends on to another address"},
          {"HTTP/1.0 404 Not Found\r\n\r\n<title>Not Found</title>",
           "Incorrect update page..."},
          {"HTTP/1.0 404 Not Found\r\n\r\n<h1>Not Found</h1>",
           "The server answers: HTTP/1.0 404 Not Found"},
          {"", "Connection Error"}}) {
        const HttpServer server{std::string(reply)};
        const ProgramResult result = CheckAt(server);
        EXPECT_EQ(result.ExitCode, 3);
        EXPECT_NE(result.Errors.find(text), std::string::npos) << result.Errors;
        EXPECT_EQ(result.Output, "");
    }
}

TEST(UpdateCommand, TwoGigabytesOfBlanksAreNotRead) {
    const HttpServer server([](const HttpConnection& client, const auto&) {
        client.Send("HTTP/1.0 200 OK\r\n\r\n<title>Vardenix version check</title><body>");
        const std::string blanks(1 << 20, ' ');
        for (int i = 0; i < 2048 && client.Send(blanks); ++i) {
        }
    });
    const ProgramResult result = CheckAt(server);
    EXPECT_EQ(result.ExitCode, 3);
    EXPECT_NE(result.Errors.find("The page was found but there were errors"),
              std::string::npos);
}

TEST(UpdateCommand, AReplyInOneByteChunksIsRead) {
    const HttpServer server([](const HttpConnection& client, const auto&) {
        client.SendSlowly(Page("#Current*3.0.1"));
    });
    EXPECT_EQ(CheckAt(server).ExitCode, 0);
}

TEST(UpdateCommand, AnotherSchemeIsUsage) {
    for (const char* url : {"https://x.example/", "ftp://x", "http://", "http://a b"}) {
        const ProgramResult result = CheckAt(url);
        EXPECT_EQ(result.ExitCode, 2) << url;
        EXPECT_NE(result.Errors.find("--url"), std::string::npos);
    }
    EXPECT_EQ(RunProgram({VARDENIX_CLI, "update"}).ExitCode, 2);
}

} // namespace
} // namespace vardenix::tests
