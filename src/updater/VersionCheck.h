#pragma once

#include "platform/Platform.h"
#include "updater/TcpClient.h"
#include "updater/Timer.h"
#include "updater/UpdateOffer.h"
#include "updater/Url.h"
#include "updater/VersionReply.h"

#include <string>

namespace vardenix {

// What the check shows, and what follows from it.
class VersionCheckView {
public:
    VersionCheckView() = default;
    VersionCheckView(const VersionCheckView&) = delete;
    VersionCheckView& operator=(const VersionCheckView&) = delete;
    virtual ~VersionCheckView() = default;

    // A sentence for Label2 of the start-up window, UTF-8.
    virtual void ShowCheck(const std::string& text) = 0;
    virtual void LetEventsThrough() = 0;
    // The user wants the update: its archive is fetched from the address.
    virtual void StartDownload(const std::string& url) = 0;
};

// What is said instead of asking the service where the program is the system's.
constexpr const char* UpdatedBySystem =
    "The system's package manager keeps this program up to date";

// Whether the program may replace its own files: it writes beside itself. Any other
// installation belongs to the system.
bool MayUpdateItself(const std::string& appPath, const std::string& shippedPath);

// What is asked of the service: the target of the request and its header.
std::string VersionRequest(const Url& url);

// Asks the service once for a newer version, and the user what to do about it. Nothing is
// thrown to whoever starts it; all that goes wrong ends in a text.
class VersionCheck : private TcpEvents {
public:
    // All are borrowed.
    VersionCheck(TcpClient& ws1, Timer& timer1, VersionCheckView& view,
                 const Platform& platform, UpdateOffer& offer)
        : ws1_(ws1), timer1_(timer1), view_(view), platform_(platform), offer_(offer) {}
    ~VersionCheck() override { Stop(); }

    void Start(const std::string& versionCheckURL);
    // Ends a check without a word.
    void Stop();

    // The last answer that was read, for whoever does more than show it.
    const VersionReply& Reply() const { return reply_; }
    // The version that the service called current.
    const std::string& ServerVersion() const { return serverVersion_; }

private:
    void TcpConnected() override;
    void TcpData(std::string_view bytes) override;
    void TcpClosed() override;
    void TcpError(int number, const std::string& description,
                  const std::string& source) override;

    void WaitedEnough();
    void CloseClient();
    void EndWith(const std::string& text);
    void ParseVersionReply(std::string_view text);
    void Offer(UpdateKind kind, const std::string& question);
    void OfferReport();

    TcpClient& ws1_;
    Timer& timer1_;
    VersionCheckView& view_;
    const Platform& platform_;
    UpdateOffer& offer_;
    Url url_;
    std::string received_; // as it came; ReplyText is the same with its line ends mended
    bool waitingForReply_ = false;
    VersionReply reply_;
    std::string serverVersion_;
};

} // namespace vardenix
