// What a shell offers behind a line that has begun; the shell is the real one.
#include "cli/CliTheater.h"

namespace vardenix::tests {
namespace {

class Completion : public CliTheater {
protected:
    // The offers for the last word of `line`, sorted, one a line.
    std::string Offered(const std::vector<std::string>& line) {
        std::string words;
        for (const std::string& word : line)
            words += " '" + word + "'";
        const ProgramResult result = RunProgram(
            {"/bin/bash", "-c",
             "cd '" + folder_.Path() +
                 "' && . <('" VARDENIX_CLI "' completion bash) && " +
                 "COMP_WORDS=(vardenix-cli" + words +
                 ") && COMP_CWORD=" + std::to_string(line.size()) +
                 " && _vardenix_cli && printf '%s\\n' \"${COMPREPLY[@]}\" | sort"});
        EXPECT_EQ(result.Errors, "");
        return result.Output;
    }
};

TEST_F(Completion, OfCommandsAndTheirFamilies) {
    EXPECT_EQ(Offered({"re"}),
              "rebuild\nrebuild-elevation\nrecovery\nregion\nrender\nreplace\n");
    EXPECT_EQ(Offered({"elevation", ""}), "get\nset\n");
    EXPECT_EQ(Offered({"bin", "unused-pic"}), "unused-pictures\n");
}

TEST_F(Completion, OfOptionsOfTheCommandThatIsNamed) {
    EXPECT_EQ(Offered({"render", "--la"}), "--layers\n");
    EXPECT_EQ(Offered({"--ver"}), "--version\n");
    EXPECT_EQ(Offered({"elevation", "get", "--layers"}), "\n");
}

TEST_F(Completion, OfTheValuesThatAnOptionKnowsAlsoInAList) {
    EXPECT_EQ(Offered({"render", "out.png", "--layers", "hi"}), "hits\n");
    EXPECT_EQ(Offered({"render", "--layers", "l0,hi"}), "l0,hits\n");
}

TEST_F(Completion, OfFilesWhereNoWordIsKnown) {
    folder_.Write("a map.png", "");
    EXPECT_EQ(Offered({"render", "a"}), "a map.png\n");
    EXPECT_EQ(Offered({"render", "out.png", "--theater", "my"}), "my theater\n");
}

} // namespace
} // namespace vardenix::tests
