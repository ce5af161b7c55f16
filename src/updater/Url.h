#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vardenix {

// The parts of an address, as they stand in it.
struct Url {
    std::string Scheme; // empty when there is no "://"
    std::string Host;
    int32_t Port = 0; // 0 when none is named
    std::string Path; // "/" when there is none
    std::string Query;
};

// "http://host:port/path?query". Blanks at both ends do not count. Of what stands for a
// port only the digits at its beginning count; more than 31 bits hold is their most.
Url SplitUrl(std::string_view text);

// Whether the scheme is "http", in any case, or left out.
bool IsHttp(const Url& url);

// Whether host, path and query can stand in a request: there is a host, and no blank or
// control character that would end a word or a line of the request.
bool CanBeRequested(const Url& url);

} // namespace vardenix
