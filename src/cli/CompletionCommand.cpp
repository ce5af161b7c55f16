// completion: what a shell needs to know to complete the words of a line.
#include "cli/CommandTable.h"
#include "cli/Commands.h"
#include "cli/Printing.h"
#include "program/ProgramVersion.h"

#include <memory>
#include <sstream>

namespace vardenix {

namespace {

enum class Shell { Bash };

// One table of the script: "declare -A NAME=(", its entries, ")". Words and names of the
// program's commands hold letters, digits and "-" alone.
class ScriptTable {
public:
    explicit ScriptTable(const std::string& name) {
        text_ << "    local -A " << name << "=(\n";
    }
    void Add(const std::string& key, const std::string& words) {
        if (!words.empty())
            text_ << "        [\"" << key << "\"]=\"" << words << "\"\n";
    }
    std::string Text() const { return text_.str() + "    )\n"; }

private:
    std::ostringstream text_;
};

std::string SpacedWords(const std::vector<std::string>& words) {
    std::string all;
    for (const std::string& word : words)
        all += (all.empty() ? "" : " ") + word;
    return all;
}

// Follows the words that call commands, and completes what may stand at the cursor: a
// value of the option before it, or of a list of them parted by commas, an option, a
// command, and else a file.
constexpr const char* ScriptEnd =
    R"(    local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    local command=vardenix-cli word list= i
    for ((i = 1; i < COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        [[ " ${commands[$command]-} " != *" $word "* ]] || command+=" $word"
    done
    COMPREPLY=()
    if [[ -n ${values["$command $before"]-} ]]; then
        [[ $current != *,* ]] || list=${current%,*},
        mapfile -t COMPREPLY < <(compgen -P "$list" -W "${values["$command $before"]}" -- "${current##*,}")
    elif [[ " ${valued[$command]-} " == *" $before "* ]]; then
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        compopt -o filenames 2>/dev/null || :
    elif [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "${options[$command]-}" -- "$current")
    elif [[ -n ${commands[$command]-} ]]; then
        mapfile -t COMPREPLY < <(compgen -W "${commands[$command]}" -- "$current")
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        compopt -o filenames 2>/dev/null || :
    fi
}
complete -F _vardenix_cli vardenix-cli)";

std::string BashScript(const std::vector<ListedCommand>& list) {
    ScriptTable commands("commands");
    ScriptTable options("options");
    ScriptTable valued("valued");
    ScriptTable values("values");
    for (const ListedCommand& command : list) {
        std::vector<std::string> names;
        std::vector<std::string> withValue;
        for (const ListedCommand::Option& option : command.Options) {
            names.push_back(option.Name);
            if (option.TakesValue)
                withValue.push_back(option.Name);
            values.Add(command.Name + " " + option.Name, SpacedWords(option.Words));
        }
        commands.Add(command.Name, SpacedWords(command.Commands));
        options.Add(command.Name, SpacedWords(names));
        valued.Add(command.Name, SpacedWords(withValue));
    }
    return "# Completion of vardenix-cli for bash, made by vardenix-cli " +
           ProgramVersion() + "\n_vardenix_cli() {\n" + commands.Text() + options.Text() +
           valued.Text() + values.Text() + ScriptEnd;
}

} // namespace

void AddCompletion(Command& all) {
    Command command = all.AddCommand(
        "completion", "Print a script that lets a shell complete commands and options");
    const auto shell = std::make_shared<Shell>(Shell::Bash);
    command.Choice("SHELL", *shell, Choices<Shell>{{"bash", Shell::Bash}}, "The shell")
        .Required();
    command.Run([](CommandContext&) {
        CommandLine line("vardenix-cli", ProgramVersion(), AboutCommands(),
                         CommandsFooter());
        Command every = line.Root();
        AddAllCommands(every);
        Print(BashScript(line.List()));
        return ExitDone;
    });
}

} // namespace vardenix
