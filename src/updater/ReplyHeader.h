#pragma once

#include <string>
#include <string_view>

namespace vardenix {

// Behind the last line of a header.
constexpr std::string_view HeaderEnd = "\r\n\r\n";

// Where `part` begins in `text`, letters A to Z in either case; npos when nowhere.
size_t FindAnyCase(std::string_view text, std::string_view part);

// The header of an HTTP reply, up to but without the empty line; all of `reply` as long
// as that line has not arrived.
std::string_view HeaderOf(std::string_view reply);

// Why a reply is refused by its header, as a sentence; empty when it is not, or not yet:
// a redirect is not followed, a chunked or compressed body is not read. What does not
// begin like an HTTP reply has no header. Line ends are CR LF.
std::string WhyNotTaken(std::string_view reply);

// The status of a whole header: 404; 0 as long as it is not whole or has none.
int StatusOfReply(std::string_view reply);

// What the server says in its first line, as a sentence, for a reply that was not
// expected: at most 80 letters of it, "?" for those that a message cannot show. Whatever
// does not begin like an HTTP reply is told without a letter of it.
std::string WhatIsAnswered(std::string_view reply);

} // namespace vardenix
