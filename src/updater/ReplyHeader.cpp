#include "updater/ReplyHeader.h"

#include "texts/Cutting.h"

#include <algorithm>

namespace vardenix {

namespace {

constexpr std::string_view Protocol = "HTTP/";
constexpr size_t LongestLine = 80; // that a message shows

char Lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a')
                                          : letter;
}

bool SameAnyCase(char a, char b) { return Lower(a) == Lower(b); }

// The code of a status line, 0 when there is none: "HTTP/1.1 302 Found".
int StatusIn(std::string_view header) {
    const size_t blank = header.find(' ');
    if (blank == std::string_view::npos || header.size() < blank + 4)
        return 0;
    int status = 0;
    for (const char digit : header.substr(blank + 1, 3)) {
        if (digit < '0' || digit > '9')
            return 0;
        status = status * 10 + (digit - '0');
    }
    return status;
}

// What a line of the header says, without blanks around it; empty when there is none.
std::string_view ValueOf(std::string_view header, const std::string& name) {
    const size_t at = FindAnyCase(header, "\r\n" + name + ":");
    if (at == std::string_view::npos)
        return {};
    const std::string_view rest = header.substr(at + name.size() + 3);
    return TrimBlanks(rest.substr(0, rest.find("\r\n")));
}

bool HasWholeHeader(std::string_view reply) {
    return reply.starts_with(Protocol) && reply.find(HeaderEnd) != std::string_view::npos;
}

bool IsPlain(std::string_view coding) {
    return coding.empty() || UpperCase(coding) == "IDENTITY";
}

} // namespace

size_t FindAnyCase(std::string_view text, std::string_view part) {
    const auto* const found =
        std::search(text.begin(), text.end(), part.begin(), part.end(), SameAnyCase);
    return found == text.end() && !part.empty()
               ? std::string_view::npos
               : static_cast<size_t>(found - text.begin());
}

std::string_view HeaderOf(std::string_view reply) {
    return reply.substr(0, reply.find(HeaderEnd));
}

std::string WhyNotTaken(std::string_view reply) {
    if (!HasWholeHeader(reply))
        return {};
    const std::string_view header = HeaderOf(reply);
    if (const int status = StatusIn(header); status >= 300 && status < 400)
        return "The server sends on to another address, which is not followed";
    if (!IsPlain(ValueOf(header, "Transfer-Encoding")))
        return "The server sends its reply in chunks, which are not read";
    if (!IsPlain(ValueOf(header, "Content-Encoding")))
        return "The server compresses its reply, which is not read";
    return {};
}

int StatusOfReply(std::string_view reply) {
    return HasWholeHeader(reply) ? StatusIn(HeaderOf(reply)) : 0;
}

std::string WhatIsAnswered(std::string_view reply) {
    if (!reply.starts_with(Protocol))
        return "What it sends is no reply of a web server.";
    std::string line(reply.substr(0, std::min(reply.find("\r\n"), LongestLine)));
    std::ranges::replace_if(
        line, [](unsigned char letter) { return letter < ' ' || letter > '~'; }, '?');
    return "The server answers: " + line;
}

} // namespace vardenix
