// update: asks the version service, and never applies anything.
#include "cli/Commands.h"
#include "cli/Json.h"
#include "cli/Printing.h"
#include "platform/Platform.h"
#include "texts/RuntimeError.h"
#include "updater/SocketClient.h"
#include "updater/VersionCheck.h"

#include <memory>

namespace vardenix {

namespace {

using Answer = VersionReply::Answer;

// Nobody is asked what to do about the answer.
class AskNobody : public TerminalDialogs {
public:
    BoxAnswer MessageBox(const std::string&, const std::string&, BoxIcon,
                         BoxButtons) override {
        return BoxAnswer::No;
    }
};

class KeptText : public VersionCheckView {
public:
    std::string Text;

    void ShowCheck(const std::string& text) override { Text = text; }
    void LetEventsThrough() override {}
    void StartDownload(const std::string&) override {}
};

struct Checked {
    VersionReply Reply;
    std::string Text;
};

Checked Check(CommandContext& context, const std::string& url) {
    constexpr std::chrono::milliseconds lookAgain{100};
    AskNobody dialogs;
    FileRegistry nothing({}, {}, {}); // no check looks anything up
    const Platform platform{dialogs, nothing, context.Clock, context.Processes};
    SocketClient client;
    SteppedTimer timer;
    KeptText view;
    UpdateOffer offer;
    VersionCheck check(client, timer, view, platform, offer);
    check.Start(url);
    while (client.Step(std::min(lookAgain, timer.Left().value_or(lookAgain)))) {
        context.Progress.LetEventsThrough();
        timer.Step();
    }
    return {check.Reply(), view.Text};
}

const char* WordOf(Answer answer) {
    switch (answer) {
    case Answer::Current:
        return "current";
    case Answer::MajorUpdate:
        return "update";
    case Answer::MinorUpdate:
        return "patch";
    default:
        return "old in database";
    }
}

struct UpdateOptions {
    std::optional<std::string> Url;
    bool AsJson = false;
};

int PrintChecked(const Checked& checked, bool asJson) {
    const VersionReply& reply = checked.Reply;
    const bool newer =
        reply.What == Answer::MajorUpdate || reply.What == Answer::MinorUpdate;
    if (!newer && reply.What != Answer::Current && reply.What != Answer::OldInDatabase)
        throw RuntimeError(ErrorNumber::DeviceIo, "Checking for a new version failed",
                           checked.Text);
    JsonObject values{{"answer", WordOf(reply.What)},
                      {"text", checked.Text},
                      {"version", reply.Version}};
    if (newer)
        values.emplace_back("url", reply.Url);
    PrintValues(values, asJson);
    return newer ? ExitFound : ExitDone;
}

} // namespace

void AddUpdate(Command& all) {
    Command update = all.AddCommand("update", "Newer versions of the program");
    Command check = update.AddCommand(
        "check", "Ask the version service; exit code 1 when there is a newer version");
    const auto options = std::make_shared<UpdateOptions>();
    check.Text("--url", options->Url,
               "The service's address; without it, that of the settings");
    check.Flag("--json", options->AsJson, "Print JSON");
    check.Check([options] {
        const Url url = SplitUrl(options->Url.value_or("http://service"));
        if (!IsHttp(url) || !CanBeRequested(url))
            throw UsageError("--url", "is no http address");
    });
    check.Run([options](CommandContext& context) {
        const std::string url =
            options->Url.value_or(context.State.Configuration.VersionCheck);
        return PrintChecked(Check(context, url), options->AsJson);
    });
}

} // namespace vardenix
