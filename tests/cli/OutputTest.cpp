// Where the words of a command go: files, terminals, full disks, and nowhere.
#include "cli/CliTheater.h"
#include "cli/Printing.h"

#include <cstdlib>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vardenix::tests {
namespace {

// Reads what a program writes to a terminal.
class Terminal {
public:
    Terminal() : master_(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
        ::grantpt(master_);
        ::unlockpt(master_);
        name_ = ::ptsname(master_);
        // What is written stays readable after the program has closed its end.
        slave_ = ::open(name_.c_str(), O_RDWR | O_NOCTTY);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal() {
        ::close(slave_);
        ::close(master_);
    }
    const std::string& Name() const { return name_; }
    std::string Shown() const {
        std::string all;
        std::string part(4096, '\0');
        for (ssize_t count = 0; (count = ::read(master_, part.data(), part.size())) > 0;)
            all.append(part, 0, static_cast<size_t>(count));
        return all;
    }

private:
    int master_;
    int slave_ = -1;
    std::string name_;
};

class Output : public CliTheater {
protected:
    // The command with its streams led elsewhere by the shell.
    ProgramResult RunLed(const std::string& where, std::vector<std::string> arguments) {
        std::vector<std::string> command{"/bin/sh", "-c", "exec \"$@\" " + where, "sh",
                                         VARDENIX_CLI};
        command.insert(command.end(), arguments.begin(), arguments.end());
        command.insert(command.end(), {"--theater", folder_.File("my theater")});
        return RunProgram(command);
    }
};

TEST_F(Output, ThatCannotBeWrittenIsARunTimeError) {
    for (const std::vector<std::string>& command : {std::vector<std::string>{"info"},
                                                    {"info", "--json"},
                                                    {"get", "0", "0"},
                                                    {"set", "0", "0", "--tile", "1"},
                                                    {"info", "--help"}}) {
        const ProgramResult result = RunLed(">/dev/full", command);
        EXPECT_EQ(result.ExitCode, 3) << command[0];
        EXPECT_NE(result.Errors.find("Run-time error '61':\n\nDisk full\nwriting the "
                                     "standard output: "),
                  std::string::npos)
            << result.Errors;
    }
    // The post was set all the same.
    EXPECT_EQ(OnDisk().At(1, 1).Tile, 1);
    EXPECT_EQ(RunLed(">&-", {"info"}).ExitCode, 3);
    // Nothing is printed, so nothing is lost.
    EXPECT_EQ(RunLed(">/dev/full", {"check"}).ExitCode, 0);
    EXPECT_EQ(RunLed(">&-", {"check"}).ExitCode, 0);
}

TEST_F(Output, FoundPostsThatNobodyIsToldOfAreARunTimeError) {
    level_.At(2, 3).Tile = 31;
    WriteLevel();
    EXPECT_EQ(RunLed("", {"check"}).ExitCode, 1);
    EXPECT_EQ(RunLed(">/dev/full", {"check"}).ExitCode, 3);
}

// 0 when the first file that is opened gets no number of a standard stream, after the
// shell closed some.
int OpenedAfterClosing(const std::vector<int>& streams) {
    const pid_t child = ::fork();
    if (child == 0) {
        for (const int stream : streams)
            ::close(stream);
        HoldStandardStreams();
        const bool apart = ::open("/dev/zero", O_RDONLY) > STDERR_FILENO;
        const bool refused = ::write(STDOUT_FILENO, "x", 1) == -1;
        ::_exit((apart ? 0 : 1) + (refused ? 0 : 2));
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WEXITSTATUS(status);
}

TEST(StandardStreams, ThatAreClosedDoNotLeaveTheirNumbersToFiles) {
    const int output = STDOUT_FILENO;
    EXPECT_EQ(OpenedAfterClosing({output}), 0);
    EXPECT_EQ(OpenedAfterClosing({output, STDERR_FILENO}), 0);
    EXPECT_EQ(OpenedAfterClosing({STDIN_FILENO, output}), 0);
    EXPECT_EQ(OpenedAfterClosing({STDIN_FILENO, output, STDERR_FILENO}), 0);
}

TEST_F(Output, ATerminalDoesNotObeyNamesOfFiles) {
    folder_.Write("my theater/texture/Texture.bin",
                  CatalogueBytes({{1, {{"A\x1b[2J\x07\x7f.PCX"}}}}));
    level_ = MadeLevel::Empty(32);
    WriteLevel();
    const Terminal terminal;
    const std::string toTerminal = ">" + terminal.Name() + " 2>&1";
    EXPECT_EQ(RunLed(toTerminal, {"info"}).ExitCode, 0);
    const std::string told = terminal.Shown();
    EXPECT_NE(told.find("File A\\u001b[2J\\u0007\\u007f.PCX wasn't found."),
              std::string::npos)
        << told;
    EXPECT_EQ(RunLed(toTerminal, {"get", "0", "0"}).ExitCode, 0);
    const std::string shown = terminal.Shown();
    EXPECT_NE(shown.find("name: A\\u001b[2J\\u0007\\u007f.PCX"), std::string::npos);
    RunLed(toTerminal, {"get", "0", "0", "--json"});
    const std::string json = terminal.Shown();
    EXPECT_NE(json.find("\"A\\u001b[2J\\u0007\\u007f.PCX\""), std::string::npos) << json;
    // A file gets the name as it is.
    const ProgramResult plain = RunLed("", {"get", "0", "0"});
    EXPECT_NE(plain.Output.find("name: A\x1b[2J\x07\x7f.PCX\n"), std::string::npos);
    // What the user's own arguments hold is shown by the same rule.
    RunLed(toTerminal, {"\x1b[31m"});
    EXPECT_NE(terminal.Shown().find("'\\u001b[31m' is no command"), std::string::npos);
}

TEST(ForTerminal, EscapesWhatATerminalObeysAndNothingElse) {
    EXPECT_EQ(ForTerminal("plain\n\ttext \xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80~"),
              "plain\n\ttext \xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80~");
    EXPECT_EQ(ForTerminal(std::string("\0\x1f\r", 3)), "\\u0000\\u001f\\u000d");
    EXPECT_EQ(ForTerminal("\x7f"), "\\u007f");
    EXPECT_EQ(ForTerminal("\xC2\x80\xC2\x9F\xC2\xA0"), "\\u0080\\u009f\xC2\xA0");
    EXPECT_EQ(ForTerminal("\xE2\x80\xAA\xE2\x80\xAE\xE2\x81\xA6\xE2\x81\xA9"),
              "\\u202a\\u202e\\u2066\\u2069");
    EXPECT_EQ(ForTerminal("\xE2\x80\xA9\xE2\x80\xAF\xE2\x81\xA5\xE2\x81\xAA"),
              "\xE2\x80\xA9\xE2\x80\xAF\xE2\x81\xA5\xE2\x81\xAA");
    // Bytes that are no UTF-8: a lone one of the middle, a cut character, one too long.
    EXPECT_EQ(ForTerminal("\x9b"
                          "1m"),
              "\\x9b1m");
    EXPECT_EQ(ForTerminal("\xE2\x82"), "\\xe2\\x82");
    EXPECT_EQ(ForTerminal("\xC1\x9B"), "\\xc1\\x9b");
    EXPECT_EQ(ForTerminal("\xE2\x41\x42"), "\\xe2"
                                           "AB");
    EXPECT_EQ(ForTerminal("\xF5\x80\x80\x80"), "\\xf5\\x80\\x80\\x80");
}

} // namespace
} // namespace vardenix::tests
