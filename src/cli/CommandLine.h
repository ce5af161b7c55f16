#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

// The program's commands and what they are told. The library that takes the arguments
// apart is known to CommandLine.cpp alone: its headers cost every file that includes them
// six seconds of compiling.
//
// A command is declared once, with the variables that its arguments go to, what is to be
// checked before anything is opened, and its work:
//
//     struct Options {
//         explicit Options(Command& command) : Files(command) {}
//         TheaterFiles Files;
//         int32_t Set = 0;
//         std::vector<std::string> Pictures;
//         bool AsJson = false;
//     };
//     Command command = bin.AddCommand("add", "Add tiles to a set");
//     const auto options = std::make_shared<Options>(command);
//     command.Number("SET", options->Set, "Set, from 0").Required();
//     command.Texts("PICTURE", options->Pictures, "Targa files").Required();
//     command.Flag("--json", options->AsJson, "Print JSON");
//     command.Run([options](CommandContext& context) { ...; return ExitDone; });
namespace vardenix {

class CommandContext;

// Something on the command line is wrong, or does not fit the theater: exit code 2. May
// come from a check or from the work itself, as long as nothing is written.
class UsageError : public std::runtime_error {
public:
    explicit UsageError(const std::string& sentence) : std::runtime_error(sentence) {}
    // `name` is the option's or position's.
    UsageError(const std::string& name, const std::string& sentence)
        : std::runtime_error(name + ": " + sentence) {}
};

// Gives an exit code.
using CommandRun = std::function<int(CommandContext&)>;

struct NumberRange {
    int64_t Min;
    int64_t Max;
};

struct RealRange {
    double Min;
    double Max;
};

// All numbers that fit a field of the type.
template <std::integral Field>
constexpr NumberRange FittingField{std::numeric_limits<Field>::min(),
                                   std::numeric_limits<Field>::max()};

// The type of the value itself, of a variable that may be a std::optional.
template <typename Target>
struct FieldOfTarget {
    using Type = Target;
};
template <typename Field>
struct FieldOfTarget<std::optional<Field>> {
    using Type = Field;
};
template <typename Target>
using FieldOf = typename FieldOfTarget<Target>::Type;

// What the words of an enumerated argument stand for, in the order of the help.
template <typename Value>
using Choices = std::vector<std::pair<std::string, Value>>;

// An option or a position that was added to a command. Copies are the same argument.
class Argument {
public:
    explicit Argument(CLI::Option& option) : option_(&option) {}

    Argument& Required();
    // The heading of the help under which it stands.
    Argument& Group(const std::string& heading);
    // Neither may be given together with the other; only together with it.
    Argument& Excludes(const Argument& other);
    Argument& Needs(const Argument& other);

private:
    CLI::Option* option_;
};

// One command, or a family of commands ("elevation") of which one must be given. A name
// that begins with "--" is an option's, any other a position's; positions are given in
// the order in which they are added. Variables are set when the line is taken apart, so
// they live as long as the CommandLine; one whose option is not given keeps its value,
// which --help shows. A variable may be a std::optional, empty unless its option is
// given.
class Command {
public:
    struct Parts;
    explicit Command(Parts& parts) : parts_(&parts) {}

    // The command of that name in this family.
    Command AddCommand(const std::string& name, const std::string& help);

    // A text as it stands. An empty one, and one that begins like an option, are refused:
    // behind both is a value that was forgotten.
    template <typename Target>
    requires std::same_as<FieldOf<Target>, std::string>
        Argument Text(const std::string& name, Target& target, const std::string& help) {
        return AddText(name, help, Shown(target),
                       [&target](const std::string& text) { target = text; });
    }
    // An option that may be repeated, or the positions from here to the last.
    Argument Texts(const std::string& name, std::vector<std::string>& targets,
                   const std::string& help);

    // A text that names a file to be written. Once all checks of the command have passed,
    // it must be none of the files that the command keeps, nor be called like a file that
    // only a theater has, or end in one of `others` (RequireOutput in Outputs.h).
    Argument Output(const std::string& name, std::string& target, const std::string& help,
                    std::vector<std::string_view> others = {});
    // Files that none of the command's outputs may replace; asked for when the line is
    // taken apart.
    void Keeps(std::function<std::vector<std::string>()> files);

    // A decimal whole number: digits, with a "-" in front or none. "010" is ten.
    template <typename Target>
    requires std::integral<FieldOf<Target>>
        Argument Number(const std::string& name, Target& target, const std::string& help,
                        NumberRange range = FittingField<FieldOf<Target>>) {
        return AddNumber(name, help, range, Shown(target), [&target](int64_t value) {
            target = static_cast<FieldOf<Target>>(value);
        });
    }
    // May be repeated; one argument may hold several, parted by commas.
    template <std::integral Field>
    Argument Numbers(const std::string& name, std::vector<Field>& targets,
                     const std::string& help, NumberRange range = FittingField<Field>) {
        return AddNumbers(name, help, range, [&targets](int64_t value) {
            targets.push_back(static_cast<Field>(value));
        });
    }

    // `count` of them, one argument each: "--export 1 2 3 4".
    template <std::integral Field>
    Argument NumberRow(const std::string& name, std::vector<Field>& targets, int count,
                       const std::string& help, NumberRange range = FittingField<Field>) {
        return AddNumberRow(name, help, range, count, [&targets](int64_t value) {
            targets.push_back(static_cast<Field>(value));
        });
    }

    // A decimal number with a fraction or none, whatever the locale: "-1.5".
    template <typename Target>
    requires std::floating_point<FieldOf<Target>> Argument Real(const std::string& name,
                                                                Target& target,
                                                                const std::string& help,
                                                                RealRange range) {
        return AddReal(name, help, range, Shown(target), [&target](double value) {
            target = static_cast<FieldOf<Target>>(value);
        });
    }

    // True when it is given.
    Argument Flag(const std::string& name, bool& target, const std::string& help);

    // One word of a list.
    template <typename Target, typename Value>
    Argument Choice(const std::string& name, Target& target, Choices<Value> choices,
                    const std::string& help) {
        std::string shown;
        for (const auto& [word, value] : choices)
            if (target == Target(value))
                shown = word;
        const std::vector<std::string> words = WordsOf(choices);
        return AddChoice(name, help, words, shown,
                         [&target, choices = std::move(choices)](size_t chosen) {
                             target = choices[chosen].second;
                         });
    }
    // May be repeated; one argument may hold several words, parted by commas.
    template <typename Value>
    Argument ChoiceList(const std::string& name, std::vector<Value>& targets,
                        Choices<Value> choices, const std::string& help) {
        const std::vector<std::string> words = WordsOf(choices);
        return AddChoiceList(name, help, words,
                             [&targets, choices = std::move(choices)](size_t chosen) {
                                 targets.push_back(choices[chosen].second);
                             });
    }

    // Called when the whole line is taken apart and this is the command of it, in the
    // order in which the checks were added, before anything is opened. Throws UsageError.
    void Check(std::function<void()> check);
    // What the command does once it is checked. Every command but a family has one.
    void Run(CommandRun run);

private:
    template <typename Value>
    static std::vector<std::string> WordsOf(const Choices<Value>& choices) {
        std::vector<std::string> words;
        for (const auto& [word, value] : choices)
            words.push_back(word);
        return words;
    }
    // The value of an option that is not given, for the help.
    static std::string Shown(const std::string& text) { return text; }
    template <std::integral Field>
    static std::string Shown(Field number) {
        return std::to_string(number);
    }
    static std::string Shown(double number);
    template <typename Field>
    static std::string Shown(const std::optional<Field>&) {
        return {};
    }

    Argument AddText(const std::string& name, const std::string& help,
                     const std::string& shown,
                     std::function<void(const std::string&)> take);
    Argument AddNumber(const std::string& name, const std::string& help,
                       NumberRange range, const std::string& shown,
                       std::function<void(int64_t)> take);
    Argument AddNumbers(const std::string& name, const std::string& help,
                        NumberRange range, std::function<void(int64_t)> take);
    Argument AddNumberRow(const std::string& name, const std::string& help,
                          NumberRange range, int count,
                          std::function<void(int64_t)> take);
    Argument AddReal(const std::string& name, const std::string& help, RealRange range,
                     const std::string& shown, std::function<void(double)> take);
    Argument AddChoice(const std::string& name, const std::string& help,
                       const std::vector<std::string>& words, const std::string& shown,
                       std::function<void(size_t)> take);
    Argument AddChoiceList(const std::string& name, const std::string& help,
                           const std::vector<std::string>& words,
                           std::function<void(size_t)> take);

    Parts* parts_;
};

// What a command line was found to mean: the work of its command, or what --help or
// --version asked for, without a line end behind it.
struct ParsedLine {
    CommandRun Run;
    std::string Told;
};

// What may follow the words that call a command, for what is made of the table.
struct ListedCommand {
    std::string Name;                  // "vardenix-cli bin append-tile"
    std::vector<std::string> Commands; // the next words of a family
    struct Option {
        std::string Name;               // "--layers"; positions are not listed
        bool TakesValue = false;        // else it is given alone
        std::vector<std::string> Words; // all values that there are; empty: any
    };
    std::vector<Option> Options;
};

// All commands of a program.
class CommandLine {
public:
    // `about` stands above the help, `footer` below it.
    CommandLine(const std::string& program, const std::string& version,
                const std::string& about, const std::string& footer);
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;
    ~CommandLine();

    // The family of all commands.
    Command Root();

    // Every output of every command, as "mea OUT", in the order of the commands.
    std::vector<std::string> Outputs() const;

    // Every command, each family before its own, as a line calls it.
    std::vector<ListedCommand> List() const;

    // `arguments` are those behind the program's name. UsageError for whatever does not
    // fit; nothing of the theater has been looked at by then but what a check looks at.
    ParsedLine Parse(const std::vector<std::string>& arguments);

private:
    std::unique_ptr<Command::Parts> root_;
};

} // namespace vardenix
