#include "updater/VersionCheck.h"

#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/OpenPage.h"
#include "program/ProgramVersion.h"
#include "texts/Cutting.h"
#include "texts/Numbers.h"
#include "updater/ReplyHeader.h"

namespace vardenix {

namespace {

constexpr int FirstGood = 200; // what HTTP calls a success
constexpr int LastGood = 299;
constexpr const char* MakersAddress = "support@vardenix.example";

std::string VersionQuery() {
    return "Maj=" + Format0(VersionMajor) + "&Min=" + Format0(VersionMinor) +
           "&Rev=" + Format0(VersionRevision);
}

// Text of a stranger as a part of a mail's address: it may add words to the message, and
// nothing else.
std::string AsMailText(const std::string& text) {
    constexpr const char* digits = "0123456789ABCDEF";
    std::string result;
    for (const char letter : text.substr(0, 100)) {
        const auto byte = static_cast<unsigned char>(letter);
        const bool plain =
            (letter >= '0' && letter <= '9') ||
            (UpperCase({&letter, 1})[0] >= 'A' && UpperCase({&letter, 1})[0] <= 'Z') ||
            letter == '.' || letter == '-' || letter == ' ';
        if (plain)
            result += letter;
        else
            result.append({'%', digits[byte / 16], digits[byte % 16]});
    }
    return result;
}

std::string MomentOf(const LocalTime& now) {
    // The hour stands alone: "7 Mar" keeps its nought, "9:05:02" has none.
    const std::string time = HoursMinutesSeconds(now);
    return ShortMonthDate(now) + ", " + (time[0] == '0' ? time.substr(1) : time);
}

std::string OldInDatabaseMail(const std::string& version, const Clock& clock) {
    return std::string("mailto:") + MakersAddress +
           "?subject=Vardenix OldinDB Error"
           "&body=An OldinDB Error occured. Error Details:%0A%0A"
           "Program Name and version - Vardenix v" +
           ProgramVersion() + "%0ADB version - " + AsMailText(version) +
           "%0ATimeStamp - " + MomentOf(clock.Now()) +
           "%0A%0AEnter possible comments below%0A"
           "-------------------------------------------";
}

} // namespace

bool MayUpdateItself(const std::string& appPath, const std::string& shippedPath) {
    return !appPath.empty() && appPath == shippedPath;
}

std::string VersionRequest(const Url& url) {
    const std::string query =
        url.Query.empty() ? VersionQuery() : url.Query + "&" + VersionQuery();
    return "GET " + url.Path + "?" + query + " HTTP/1.0\r\nHost: " + url.Host +
           "\r\n\r\n";
}

void VersionCheck::Start(const std::string& versionCheckURL) {
    CloseClient();
    timer1_.Stop();
    waitingForReply_ = false;
    view_.ShowCheck("Checking for a new version...");
    received_.clear();
    reply_ = {};
    url_ = SplitUrl(versionCheckURL);
    if (!IsHttp(url_) || !CanBeRequested(url_)) {
        EndWith("Internal error...");
        return;
    }
    const bool named = !url_.Scheme.empty() && url_.Port > 0;
    timer1_.Start(ServerPatience, [this] { WaitedEnough(); });
    ws1_.Connect(url_.Host, named ? url_.Port : 80, *this);
}

void VersionCheck::Stop() {
    waitingForReply_ = false;
    timer1_.Stop();
    CloseClient();
}

void VersionCheck::CloseClient() {
    if (ws1_.State() != TcpState::Closed)
        ws1_.Close();
}

void VersionCheck::EndWith(const std::string& text) {
    Stop();
    view_.ShowCheck(text);
}

void VersionCheck::WaitedEnough() {
    // Before there is a connection nobody is told.
    if (waitingForReply_)
        view_.ShowCheck("Timeout getting version info...");
    Stop();
}

void VersionCheck::TcpConnected() {
    waitingForReply_ = true;
    ws1_.Send(VersionRequest(url_));
}

void VersionCheck::TcpData(std::string_view bytes) {
    received_ += bytes;
    ParseVersionReply(WithCrLf(received_));
    if (reply_.What == VersionReply::Answer::Incomplete &&
        received_.size() > VersionReplyLimit) {
        reply_.What = VersionReply::Answer::Unreadable;
        offer_.UpdateType = UpdateRefused;
        EndWith("The page was found but there were errors");
    }
}

void VersionCheck::TcpClosed() {
    const bool cut = waitingForReply_;
    Stop();
    if (!cut)
        return;
    const std::string reply = WithCrLf(received_);
    const int status = StatusOfReply(reply);
    const bool refused = status != 0 && (status < FirstGood || status > LastGood);
    view_.ShowCheck(refused ? WhatIsAnswered(reply) : "Connection Error");
}

void VersionCheck::TcpError(int, const std::string&, const std::string&) {
    EndWith("Connection Error");
}

void VersionCheck::ParseVersionReply(std::string_view text) {
    using Answer = VersionReply::Answer;
    offer_.UpdateType = UpdateNone;
    reply_ = ReadVersionReply(text);
    if (reply_.What == Answer::Incomplete)
        return;
    if (reply_.What == Answer::WrongPage || reply_.What == Answer::NotTaken) {
        EndWith(reply_.What == Answer::WrongPage ? "Incorrect update page..."
                                                 : reply_.Why);
        return;
    }
    Stop();
    view_.LetEventsThrough();
    switch (reply_.What) {
    case Answer::Current:
        serverVersion_ = reply_.Version;
        view_.ShowCheck("The program version is up to date");
        break;
    case Answer::MajorUpdate:
        Offer(UpdateMajor, "An update was found. Do you want to download it and apply it "
                           "now (if you answer yes the program will exit)?");
        break;
    case Answer::MinorUpdate:
        Offer(UpdateMinor, "An update was found. Do you want to download it and apply it "
                           "now (if you answer yes the program will restart)?");
        break;
    case Answer::OldInDatabase:
        OfferReport();
        break;
    default:
        offer_.UpdateType = UpdateRefused;
        view_.ShowCheck("The page was found but there were errors");
    }
}

void VersionCheck::Offer(UpdateKind kind, const std::string& question) {
    // What is handed on is the answer that was asked about, whatever happens meanwhile.
    const VersionReply reply = reply_;
    view_.ShowCheck("An update was found...");
    offer_.UpdateVersion = reply.Version;
    if (platform_.Dialogs.MessageBox(question, "New update " + reply.Version,
                                     BoxIcon::Question,
                                     BoxButtons::YesNo) != BoxAnswer::Yes)
        return;
    offer_.UpdateType = kind;
    view_.StartDownload(reply.Url);
}

void VersionCheck::OfferReport() {
    view_.ShowCheck("Old version in DB?");
    offer_.UpdateType = UpdateRefused;
    const std::string mail = OldInDatabaseMail(reply_.Version, platform_.Clock);
    if (platform_.Dialogs.MessageBox(
            "The update site was found but apparently there is an older version stored "
            "in it. Do you want to inform the programmer about this error?",
            "Confirm", BoxIcon::Question, BoxButtons::YesNo) == BoxAnswer::Yes)
        OpenPage(platform_.Processes, platform_.Dialogs, mail);
}

} // namespace vardenix
