// The archive program's listing, of any bytes.
#include "Require.h"
#include "updater/ArchiveListing.h"

#include <cstddef>
#include <cstdint>

using namespace vardenix;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const ArchiveListing listing = ParseArchiveListing(text);
    Require(listing.Files.size() <= size / 4);
    for (const ArchivedFile& file : listing.Files)
        Require(!file.IsPlain || text.find("Attributes") != std::string::npos ||
                text.find("Mode") != std::string::npos);
    return 0;
}
