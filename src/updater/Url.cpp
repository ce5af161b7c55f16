#include "updater/Url.h"

#include "texts/Cutting.h"

#include <algorithm>
#include <limits>

namespace vardenix {

namespace {

// Takes what stands before the first of `ends` off the beginning of `rest`.
std::string TakeUpTo(std::string_view& rest, std::string_view ends) {
    const size_t end = std::min(rest.find_first_of(ends), rest.size());
    std::string part(rest.substr(0, end));
    rest.remove_prefix(end);
    return part;
}

int32_t PortOf(std::string_view digits) {
    constexpr int64_t most = std::numeric_limits<int32_t>::max();
    int64_t port = 0;
    for (const char letter : digits) {
        if (letter < '0' || letter > '9')
            break;
        port = std::min(port * 10 + (letter - '0'), most);
    }
    return static_cast<int32_t>(port);
}

bool HasBlankOrControl(const std::string& text) {
    return std::ranges::any_of(
        text, [](unsigned char letter) { return letter <= ' ' || letter == 127; });
}

} // namespace

Url SplitUrl(std::string_view text) {
    Url url;
    std::string_view rest = TrimBlanks(text);
    const size_t scheme = rest.find("://");
    if (scheme != std::string_view::npos) {
        url.Scheme = rest.substr(0, scheme);
        rest.remove_prefix(scheme + 3);
    }
    url.Host = TakeUpTo(rest, ":/?");
    if (rest.starts_with(':')) {
        rest.remove_prefix(1);
        url.Port = PortOf(TakeUpTo(rest, "/?"));
    }
    url.Path = TakeUpTo(rest, "?");
    if (url.Path.empty())
        url.Path = "/";
    if (!rest.empty())
        url.Query = rest.substr(1);
    return url;
}

bool IsHttp(const Url& url) {
    return url.Scheme.empty() || UpperCase(url.Scheme) == "HTTP";
}

bool CanBeRequested(const Url& url) {
    return !url.Host.empty() && !HasBlankOrControl(url.Host) &&
           !HasBlankOrControl(url.Path) && !HasBlankOrControl(url.Query);
}

} // namespace vardenix
