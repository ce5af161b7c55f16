// The version service's reply, of any bytes, in any two pieces: line ends are mended
// alike however it is parted, what is read has the shape that is asked about, and once
// there is an answer to the beginning of the page, the rest does not change it.
#include "Require.h"
#include "updater/ReplyHeader.h"
#include "updater/VersionReply.h"

#include <cstddef>
#include <cstdint>

using namespace vardenix;
using Answer = VersionReply::Answer;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::string lines = WithCrLf(text);
    Require(WithCrLf(lines) == lines);
    const VersionReply reply = ReadVersionReply(lines);
    const bool offered =
        reply.What == Answer::MajorUpdate || reply.What == Answer::MinorUpdate;
    if (offered) {
        Require(!reply.Version.empty());
        for (const char letter : reply.Version)
            Require(static_cast<unsigned char>(letter) >= ' ');
        Require(reply.Url.find('*') == std::string::npos);
    }
    if (!WhyNotTaken(lines).empty() || reply.What == Answer::Incomplete)
        return 0;
    const VersionReply more = ReadVersionReply(lines + "<title>x</title><body>y</body>");
    Require(more.What == reply.What && more.Version == reply.Version);
    return 0;
}
