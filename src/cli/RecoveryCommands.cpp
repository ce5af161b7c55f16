// recovery: the logs of changes that programs have left which ended unexpectedly.
#include "cli/Commands.h"
#include "cli/Printing.h"
#include "recovery/LeftLogs.h"
#include "recovery/Restoring.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

namespace vardenix {

namespace {

struct RecoveryOptions {
    std::string Number;
    bool AsJson = false;
};

std::string FateWords(const LeftLog& log) {
    const std::string why = WhyUnfit(log.Story);
    if (!why.empty())
        return "does not fit: " + why;
    return log.Fate == LogFate::NotWanted ? "was not wanted"
                                          : "is offered when the theater is opened";
}

JsonObject RecordOf(const LeftLog& log) {
    return {{"number", log.Name},
            {"theater", log.Story.Files.L2.Path},
            {"last change", FullTime(log.Story.Last)},
            {"changes", log.Story.Steps.size()},
            {"bytes", log.Bytes.size()},
            {"damaged", log.Damaged()},
            {"state", FateWords(log)}};
}

void AddRecoveryList(Command& family) {
    Command command = family.AddCommand("list", "List what could be restored");
    const auto options = std::make_shared<RecoveryOptions>();
    command.Flag("--json", options->AsJson, "Print JSON");
    command.Run([options](CommandContext&) {
        const LeftLogs found = LeftLogsOf(LogFolder());
        Listing list(options->AsJson);
        for (const LeftLog& log : found.Logs)
            list.Add(RecordOf(log), log.Name + ": " + FullTime(log.Story.Last) + ", " +
                                        std::to_string(log.Story.Steps.size()) +
                                        " changes to " + log.Story.Files.L2.Path + "; " +
                                        FateWords(log));
        for (const LeftLogs::Unread& other : found.Others)
            list.Add({{"number", other.Name}, {"state", other.Why}},
                     other.Name + ": " + other.Why);
        list.End();
        return ExitDone;
    });
}

// The log that a number stands for.
const LeftLog& LogNamed(const LeftLogs& found, const std::string& number) {
    const auto log = std::ranges::find(found.Logs, number, &LeftLog::Name);
    if (log != found.Logs.end())
        return *log;
    const auto other = std::ranges::find(found.Others, number, &LeftLogs::Unread::Name);
    throw UsageError("NUMBER", other == found.Others.end()
                                   ? number + ": there is no such log"
                                   : number + ": " + other->Why);
}

void AddRecoveryShow(Command& family) {
    Command command = family.AddCommand("show", "Show the changes of a log");
    const auto options = std::make_shared<RecoveryOptions>();
    command.Text("NUMBER", options->Number, "Its number in the list").Required();
    command.Flag("--json", options->AsJson, "Print JSON");
    command.Run([options](CommandContext&) {
        const LeftLogs found = LeftLogsOf(LogFolder());
        const LeftLog& log = LogNamed(found, options->Number);
        JsonArray steps;
        for (const StoryStep& step : log.Story.Steps)
            steps.emplace_back(
                JsonObject{{"time", FullTime(step.Time)},
                           {"change", (step.Back ? "Taken back: " : "") + step.Name}});
        if (options->AsJson) {
            JsonObject record = RecordOf(log);
            record.emplace_back("steps", std::move(steps));
            PrintJson(std::move(record));
            return ExitDone;
        }
        PrintValues(RecordOf(log), false);
        for (const StoryStep& step : log.Story.Steps)
            Print(FullTime(step.Time) + "  " + (step.Back ? "Taken back: " : "") +
                  step.Name);
        return ExitDone;
    });
}

void AddRecoveryDrop(Command& family) {
    Command command = family.AddCommand("drop", "Take a log away for good");
    const auto options = std::make_shared<RecoveryOptions>();
    command.Text("NUMBER", options->Number, "Its number in the list").Required();
    command.Run([options](CommandContext&) {
        const std::string folder = LogFolder();
        const LeftLogs found = LeftLogsOf(folder);
        const auto other =
            std::ranges::find(found.Others, options->Number, &LeftLogs::Unread::Name);
        if (other != found.Others.end())
            DropUnread(folder, *other);
        else
            DropLog(LogNamed(found, options->Number));
        Print(options->Number + " is gone");
        return ExitDone;
    });
}

} // namespace

void AddRecovery(Command& all) {
    Command family =
        all.AddCommand("recovery", "Unsaved changes of programs that ended unexpectedly");
    AddRecoveryList(family);
    AddRecoveryShow(family);
    AddRecoveryDrop(family);
}

} // namespace vardenix
