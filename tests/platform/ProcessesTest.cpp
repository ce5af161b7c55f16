#include "platform/Processes.h"

#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vardenix::tests {
namespace {

namespace fs = std::filesystem;

// Programs of a folder with a blank in its name, which tell a pipe how they were started.
class SystemProcessesTest : public testing::Test {
protected:
    void SetUp() override {
        pipeName_ = folder_.File("pipe");
        ASSERT_EQ(::mkfifo(pipeName_.c_str(), 0600), 0);
        pipe_ = ::open(pipeName_.c_str(), O_RDWR | O_CLOEXEC);
    }
    ~SystemProcessesTest() override { ::close(pipe_); }

    // Makes a program of some shell lines; "$pipe" is where it tells things.
    std::string Program(const std::string& name, const std::string& lines) {
        std::string path =
            folder_.Write(name, "#!/bin/sh\npipe='" + pipeName_ + "'\n" + lines + "\n");
        fs::permissions(path, fs::perms::owner_all);
        return path;
    }
    std::string ProgramThatTellsItsWords(const std::string& name) {
        return Program(name,
                       "{ for word; do printf '<%s>' \"$word\"; done; echo; } >$pipe");
    }
    // One line of what was told.
    std::string Told() {
        std::string line;
        pollfd readable{pipe_, POLLIN, 0};
        while (line.empty() || line.back() != '\n') {
            char letter = 0;
            if (::poll(&readable, 1, 30000) != 1 || ::read(pipe_, &letter, 1) != 1)
                return line + "(no more)";
            line += letter;
        }
        line.pop_back();
        return line;
    }
    ErrorNumber Refusal(const std::string& commandLine) {
        try {
            processes_.Start(commandLine);
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Detail().substr(0, 9), "starting ");
            return error.Number();
        }
        return ErrorNumber{0};
    }

    TestFolder folder_;
    SystemProcesses processes_;
    std::string pipeName_;
    int pipe_ = -1;
};

TEST_F(SystemProcessesTest, AProgramThatIsNotThereIsTold) {
    EXPECT_EQ(Refusal("no-program-of-this-name with words"), ErrorNumber::FileNotFound);
    EXPECT_EQ(Refusal(folder_.File("none")), ErrorNumber::FileNotFound);
    EXPECT_EQ(Refusal(QuotedWord(folder_.File("none")) + " word"),
              ErrorNumber::FileNotFound);
    EXPECT_EQ(Refusal(""), ErrorNumber::FileNotFound);
    EXPECT_EQ(Refusal("  "), ErrorNumber::FileNotFound);
    // The interpreter of a script is a program, too.
    const std::string script = folder_.Write("script", "#!/no/such/interpreter\n");
    fs::permissions(script, fs::perms::owner_all);
    EXPECT_EQ(Refusal(script), ErrorNumber::FileNotFound);
}

TEST_F(SystemProcessesTest, AFileThatMayNotBeRunIsTold) {
    EXPECT_EQ(Refusal(folder_.Write("text", "#!/bin/sh\n")),
              ErrorNumber::PermissionDenied);
    const std::string folder = QuotedWord(folder_.Path());
    EXPECT_EQ(Refusal(folder), ErrorNumber::PermissionDenied);
}

TEST_F(SystemProcessesTest, ThePathOfAProgramNeedsNoQuotes) {
    const std::string program = ProgramThatTellsItsWords("a b");
    processes_.Start(program);
    EXPECT_EQ(Told(), "");
    // In whatever case, and with slashes of either kind.
    processes_.Start(folder_.Path() + "\\A B");
    EXPECT_EQ(Told(), "");
}

TEST_F(SystemProcessesTest, QuotesHoldWordsTogether) {
    const std::string program = QuotedWord(ProgramThatTellsItsWords("a b"));
    processes_.Start(program +
                     "  one \"two  three\" f\"o u\"r \"\" \"a\"\"b\" $HOME ;'x' ");
    EXPECT_EQ(Told(), "<one><two  three><fo ur><><a\"b><$HOME><;'x'>");
    processes_.Start(program + " " + QuotedWord("say \"yes\"") + " " + QuotedWord(""));
    EXPECT_EQ(Told(), "<say \"yes\"><>");
    // Longer than a name may be.
    const std::string longWord(2000, 'x');
    processes_.Start(program + " " + longWord);
    EXPECT_EQ(Told(), "<" + longWord + ">");
}

TEST_F(SystemProcessesTest, ACommandLineMayBeLongerThanAnyFileName) {
    const std::string words(5000, 'w');
    processes_.Start(QuotedWord(ProgramThatTellsItsWords("a b")) + " " + words);
    EXPECT_EQ(Told(), "<" + words + ">");
}

TEST_F(SystemProcessesTest, AProgramIsLookedForWhereProgramsAre) {
    processes_.Start("sh -c \"echo found >'" + pipeName_ + "'\"");
    EXPECT_EQ(Told(), "found");
}

TEST_F(SystemProcessesTest, TheProgramIsNotWaitedForAndHasASessionOfItsOwn) {
    // It ends only when it is told to, by a line that comes after Start has returned.
    ASSERT_EQ(::mkfifo(folder_.File("go").c_str(), 0600), 0);
    const std::string program = Program(
        "waits",
        "read a b c d e sid rest </proc/$$/stat; echo begun >$pipe; read line <'" +
            folder_.File("go") + "'; echo $line $sid $$ >$pipe");
    processes_.Start(program);
    EXPECT_EQ(Told(), "begun");
    Spill(folder_.File("go"), "on\n");
    const std::string told = Told();
    int session = 0;
    int process = 0;
    ASSERT_EQ(std::sscanf(told.c_str(), "on %d %d", &session, &process), 2) << told;
    EXPECT_EQ(session, process);
}

TEST_F(SystemProcessesTest, NoFileOfOursIsHandedOn) {
    const int own = ::open("/dev/zero", O_RDONLY); // not closed by the system's own rule
    processes_.Start(Program("files", "ls -l /proc/$$/fd | grep -c -e zero >$pipe"));
    EXPECT_EQ(Told(), "0");
    ::close(own);
}

TEST_F(SystemProcessesTest, ThoseThatEndedDoNotStayInTheSystemsTable) {
    processes_.Start(Program("ends", "echo $$ >$pipe"));
    const int ended = std::stoi(Told());
    // The parent's own child, dead by then or soon: the next start takes it away.
    siginfo_t info{};
    ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(ended), &info, WEXITED | WNOWAIT), 0);
    processes_.Start(ProgramThatTellsItsWords("next"));
    EXPECT_EQ(Told(), "");
    EXPECT_NE(::kill(ended, 0), 0);
}

TEST_F(SystemProcessesTest, WithoutAProgramForDocumentsOpeningIsTold) {
    const char* before = std::getenv("PATH");
    const std::string path = before != nullptr ? before : "";
    Program("xdg-open", "echo opens \"$1\" >$pipe");
    ::setenv("PATH", folder_.Path().c_str(), 1);
    processes_.Open("http://a/ b?c&d");
    EXPECT_EQ(Told(), "opens http://a/ b?c&d");
    fs::remove(folder_.File("xdg-open"));
    try {
        processes_.Open("x");
        ADD_FAILURE() << "nothing was told";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::FileNotFound);
    }
    ::setenv("PATH", path.c_str(), 1);
}

} // namespace
} // namespace vardenix::tests
