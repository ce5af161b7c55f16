#include "cli/CommandLine.h"

#include "cli/Outputs.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <deque>
#include <map>
#include <string_view>

namespace vardenix {

struct Command::Parts {
    CLI::App* App;
    std::unique_ptr<CLI::App> Owned; // the root's
    std::string Name;                // the whole: "vardenix-cli elevation get"
    std::deque<Parts> Commands;      // of a family; they stay where they are
    std::vector<std::function<void()>> Checks;
    struct Output {
        std::string Name;
        const std::string* Path;
        std::vector<std::string_view> Others;
    };
    std::vector<Output> Outputs;
    std::map<std::string, std::vector<std::string>> Choices; // by the argument's name
    std::vector<std::function<std::vector<std::string>()>> Kept;
    CommandRun Run;
};

namespace {

using Parts = Command::Parts;

// The library takes "[a,b]" for a list wherever an argument may hold several, and a file
// may be called so. Behind this sign it is a text like any other.
constexpr char Literal = '\x01';

bool InBrackets(std::string_view text) {
    return text.size() > 1 && text.front() == '[' && text.back() == ']';
}

std::string Shielded(const std::string& text) {
    return InBrackets(text) ? Literal + text : text;
}

std::string WithoutShield(const std::string& text) {
    const bool shielded = text.substr(0, 1) == std::string(1, Literal) &&
                          InBrackets(std::string_view(text).substr(1));
    return shielded ? text.substr(1) : text;
}

// Of a whole sentence.
std::string WithoutShields(std::string text) {
    std::erase(text, Literal);
    return text;
}

std::string Joined(const std::vector<std::string>& words) {
    std::string all;
    for (const std::string& word : words)
        all += (all.empty() ? "" : ", ") + word;
    return all;
}

// What takes one text of an argument; throws UsageError without the argument's name.
using Take = std::function<void(const std::string&)>;

CLI::Option& AddTo(const Parts& parts, const std::string& name, const std::string& help,
                   const std::string& shown, const Take& take) {
    CLI::Option* option = parts.App->add_option(
        name,
        [take, name](const CLI::results_t& texts) {
            try {
                for (const std::string& text : texts)
                    take(WithoutShield(text));
            } catch (const UsageError& error) {
                throw CLI::ValidationError(name, error.what());
            }
            return true;
        },
        help);
    if (!shown.empty() && !option->get_positional())
        option->description(help + " [" + shown + "]");
    option->type_name("TEXT");
    return *option;
}

// Makes an argument that may be given any number of times. An option takes one word each
// time, so that positions may follow it; positions take all the words that are left.
CLI::Option& Repeated(CLI::Option& option) {
    option.expected(1, CLI::detail::expected_max_vector_size);
    option.multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    option.allow_extra_args(option.get_positional());
    return option;
}

// Hands over what lies between the commas.
Take EachOfList(const Take& take) {
    return [take](const std::string& text) {
        size_t begin = 0;
        for (size_t comma = 0; comma != std::string::npos; begin = comma + 1) {
            comma = text.find(',', begin);
            take(text.substr(begin, comma - begin));
        }
    };
}

void RequireText(const std::string& text) {
    if (text.empty())
        throw UsageError("give a text that is not empty");
    if (text.substr(0, 2) == "--")
        throw UsageError("'" + text +
                         "' is an option and no value; a file of that name "
                         "is ./" +
                         text);
}

std::string RangeOf(NumberRange range) {
    return std::to_string(range.Min) + " to " + std::to_string(range.Max);
}

// For the help; what fits any field goes without saying.
std::string RangeShown(NumberRange range) {
    if (range.Min <= FittingField<int32_t>.Min && range.Max >= FittingField<int32_t>.Max)
        return "INT";
    return std::to_string(range.Min) + ".." + std::to_string(range.Max);
}

Take WholeNumber(NumberRange range, std::function<void(int64_t)> take) {
    return [range, take = std::move(take)](const std::string& text) {
        int64_t value = 0;
        const char* end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, value);
        if (error != std::errc() || stop != end || value < range.Min || value > range.Max)
            throw UsageError("'" + text + "' is no whole number from " + RangeOf(range));
        take(value);
    };
}

std::string ShortText(double value) {
    std::string text(32, '\0');
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    text.resize(static_cast<size_t>(end - text.data()));
    return text;
}

Take RealNumber(RealRange range, std::function<void(double)> take) {
    return [range, take = std::move(take)](const std::string& text) {
        double value = 0;
        const char* end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, value);
        if (error != std::errc() || stop != end || !std::isfinite(value) ||
            value < range.Min || value > range.Max)
            throw UsageError("'" + text + "' is no number from " + ShortText(range.Min) +
                             " to " + ShortText(range.Max));
        take(value);
    };
}

Take WordOf(const std::vector<std::string>& words, std::function<void(size_t)> take) {
    return [words, take = std::move(take)](const std::string& text) {
        const auto found = std::find(words.begin(), words.end(), text);
        if (found == words.end())
            throw UsageError("'" + text + "' is none of " + Joined(words));
        take(static_cast<size_t>(found - words.begin()));
    };
}

std::string WordList(const std::vector<std::string>& words) {
    return "{" + Joined(words) + "}";
}

// The command that the line names, as far down as it names one.
Parts& Named(Parts& family) {
    for (Parts& command : family.Commands)
        if (command.App->count() > 0)
            return Named(command);
    return family;
}

void RequireOutputs(const Parts& command) {
    for (const Parts::Output& output : command.Outputs) {
        if (output.Path->empty())
            continue;
        std::vector<std::string> kept;
        for (const auto& files : command.Kept)
            for (std::string& file : files())
                kept.push_back(std::move(file));
        RequireOutput(output.Name, *output.Path, kept, output.Others);
    }
}

void ListOutputs(const Parts& parts, std::vector<std::string>& outputs) {
    for (const Parts::Output& output : parts.Outputs)
        outputs.push_back(parts.Name.substr(parts.Name.find(' ') + 1) + " " +
                          output.Name);
    for (const Parts& command : parts.Commands)
        ListOutputs(command, outputs);
}

void ListCommands(const Parts& parts, std::vector<ListedCommand>& list) {
    ListedCommand listed{parts.Name, {}, {}};
    for (const Parts& command : parts.Commands)
        listed.Commands.push_back(command.App->get_name());
    for (const CLI::Option* option : std::as_const(*parts.App).get_options()) {
        if (option->get_positional())
            continue;
        const std::string name = "--" + option->get_lnames().at(0);
        const auto words = parts.Choices.find(name);
        listed.Options.push_back(
            {name, option->get_items_expected_max() > 0,
             words == parts.Choices.end() ? std::vector<std::string>() : words->second});
    }
    list.push_back(std::move(listed));
    for (const Parts& command : parts.Commands)
        ListCommands(command, list);
}

// The library only says that a command is missing.
void RequireCommand(const Parts& named) {
    if (named.Commands.empty())
        return;
    std::vector<std::string> names;
    for (const Parts& command : named.Commands)
        names.push_back(command.App->get_name());
    for (const std::string& word : named.App->remaining())
        if (word.empty() || word.front() != '-')
            throw UsageError("'" + WithoutShield(word) + "' is no command of " +
                             named.Name + "; there are " + Joined(names));
    throw UsageError("name a command of " + named.Name + ": " + Joined(names));
}

} // namespace

std::string Command::Shown(double number) { return ShortText(number); }

Argument& Argument::Required() {
    option_->required();
    return *this;
}

Argument& Argument::Group(const std::string& heading) {
    option_->group(heading);
    return *this;
}

Argument& Argument::Excludes(const Argument& other) {
    option_->excludes(other.option_);
    return *this;
}

Argument& Argument::Needs(const Argument& other) {
    option_->needs(other.option_);
    return *this;
}

Command Command::AddCommand(const std::string& name, const std::string& help) {
    Parts& added = parts_->Commands.emplace_back();
    added.App = parts_->App->add_subcommand(name, help);
    added.Name = parts_->Name + " " + name;
    parts_->App->require_subcommand(1);
    return Command(added);
}

Argument Command::Texts(const std::string& name, std::vector<std::string>& targets,
                        const std::string& help) {
    return Argument(
        Repeated(AddTo(*parts_, name, help, {}, [&targets](const std::string& text) {
            RequireText(text);
            targets.push_back(text);
        })));
}

Argument Command::Output(const std::string& name, std::string& target,
                         const std::string& help, std::vector<std::string_view> others) {
    parts_->Outputs.push_back({name, &target, std::move(others)});
    return Text(name, target, help);
}

void Command::Keeps(std::function<std::vector<std::string>()> files) {
    parts_->Kept.push_back(std::move(files));
}

Argument Command::Flag(const std::string& name, bool& target, const std::string& help) {
    return Argument(*parts_->App->add_flag_callback(
        name, [&target] { target = true; }, help));
}

Argument Command::AddText(const std::string& name, const std::string& help,
                          const std::string& shown,
                          std::function<void(const std::string&)> take) {
    return Argument(AddTo(*parts_, name, help, shown,
                          [take = std::move(take)](const std::string& text) {
                              RequireText(text);
                              take(text);
                          }));
}

Argument Command::AddNumber(const std::string& name, const std::string& help,
                            NumberRange range, const std::string& shown,
                            std::function<void(int64_t)> take) {
    CLI::Option& option =
        AddTo(*parts_, name, help, shown, WholeNumber(range, std::move(take)));
    option.type_name(RangeShown(range));
    return Argument(option);
}

Argument Command::AddNumbers(const std::string& name, const std::string& help,
                             NumberRange range, std::function<void(int64_t)> take) {
    CLI::Option& option =
        AddTo(*parts_, name, help, {}, EachOfList(WholeNumber(range, std::move(take))));
    option.type_name(RangeShown(range));
    return Argument(Repeated(option));
}

Argument Command::AddNumberRow(const std::string& name, const std::string& help,
                               NumberRange range, int count,
                               std::function<void(int64_t)> take) {
    CLI::Option& option =
        AddTo(*parts_, name, help, {}, WholeNumber(range, std::move(take)));
    option.type_name(RangeShown(range));
    option.expected(count);
    return Argument(option);
}

Argument Command::AddReal(const std::string& name, const std::string& help,
                          RealRange range, const std::string& shown,
                          std::function<void(double)> take) {
    CLI::Option& option =
        AddTo(*parts_, name, help, shown, RealNumber(range, std::move(take)));
    option.type_name(ShortText(range.Min) + ".." + ShortText(range.Max));
    return Argument(option);
}

Argument Command::AddChoice(const std::string& name, const std::string& help,
                            const std::vector<std::string>& words,
                            const std::string& shown, std::function<void(size_t)> take) {
    CLI::Option& option =
        AddTo(*parts_, name, help, shown, WordOf(words, std::move(take)));
    parts_->Choices[name] = words;
    option.type_name(WordList(words));
    return Argument(option);
}

Argument Command::AddChoiceList(const std::string& name, const std::string& help,
                                const std::vector<std::string>& words,
                                std::function<void(size_t)> take) {
    CLI::Option& option =
        AddTo(*parts_, name, help, {}, EachOfList(WordOf(words, std::move(take))));
    parts_->Choices[name] = words;
    option.type_name(WordList(words));
    return Argument(Repeated(option));
}

void Command::Check(std::function<void()> check) {
    parts_->Checks.push_back(std::move(check));
}

void Command::Run(CommandRun run) { parts_->Run = std::move(run); }

CommandLine::CommandLine(const std::string& program, const std::string& version,
                         const std::string& about, const std::string& footer)
    : root_(std::make_unique<Command::Parts>()) {
    root_->Owned = std::make_unique<CLI::App>(about, program);
    root_->App = root_->Owned.get();
    root_->Name = program;
    root_->App->set_version_flag("--version", version);
    root_->App->footer(footer);
}

CommandLine::~CommandLine() = default;

Command CommandLine::Root() { return Command(*root_); }

std::vector<std::string> CommandLine::Outputs() const {
    std::vector<std::string> outputs;
    ListOutputs(*root_, outputs);
    return outputs;
}

std::vector<ListedCommand> CommandLine::List() const {
    std::vector<ListedCommand> list;
    ListCommands(*root_, list);
    return list;
}

ParsedLine CommandLine::Parse(const std::vector<std::string>& arguments) {
    std::vector<std::string> backwards;
    for (auto text = arguments.rbegin(); text != arguments.rend(); ++text)
        backwards.push_back(Shielded(*text));
    try {
        root_->App->parse(std::move(backwards));
    } catch (const CLI::CallForHelp&) {
        std::string help = root_->App->help();
        help.erase(help.find_last_not_of('\n') + 1);
        return {{}, help};
    } catch (const CLI::Success& asked) {
        return {{}, asked.what()};
    } catch (const CLI::ParseError& error) {
        if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr)
            RequireCommand(Named(*root_));
        throw UsageError(WithoutShields(error.what()));
    }
    const Parts& command = Named(*root_);
    for (const auto& check : command.Checks)
        check();
    RequireOutputs(command);
    return {command.Run, {}};
}

} // namespace vardenix
