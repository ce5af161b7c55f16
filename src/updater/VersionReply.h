#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vardenix {

// What the service has said, as far as its reply has arrived.
struct VersionReply {
    enum class Answer {
        Incomplete,  // more is to come
        WrongPage,   // not the page that is asked for
        NotTaken,    // a reply in a form that this program does not take; Why says which
        Current,     // "#Current": there is nothing newer
        MajorUpdate, // "#Update": the program is replaced by an installer
        MinorUpdate, // "#Patch": single files are replaced
        OldInDatabase, // "#OldinDB": the service knows older versions only
        Unreadable     // the page, but none of the answers above
    };
    Answer What = Answer::Incomplete;
    std::string Url;     // of the archive of an update
    std::string Version; // as the service spells it, blanks and all; UTF-8
    std::string Why;
};

// Replies of more bytes than this are not read to their end.
constexpr size_t VersionReplyLimit = 1 << 20;

// Takes the reply apart, its header and what follows, from its first byte on. Every line
// end is CR LF. The first answer other than Incomplete counts; nothing is read after it.
VersionReply ReadVersionReply(std::string_view text);

// Every line end as CR LF. A CR at the end of what has arrived so far counts as one; with
// the LF behind it, it is still one.
std::string WithCrLf(std::string_view text);

} // namespace vardenix
