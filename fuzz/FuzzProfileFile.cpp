// A profile file of any bytes: one that is written into keeps the new value, and the
// values that were not written.
#include "Require.h"
#include "files/ProfileFile.h"

#include <cstddef>
#include <cstdint>
#include <string>

using namespace vardenix;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const ProfileFile read(bytes);
    ProfileWriter writer(bytes);
    Require(ProfileFile(writer.Text()).Read("SYSTEM", "P") == read.Read("SYSTEM", "P"));

    // Whatever the value, it comes back up to its end: a line end, a NUL, 750 bytes.
    const std::string value = bytes.substr(0, 100);
    writer.Write("LAST_SETT", "ZOOM", "x");
    writer.Write("LAST_SETT", "ZOOM", value);
    const ProfileFile written(writer.Text());
    Require(written.Read("last_sett", "Zoom") ==
            value.substr(0, value.find_first_of(std::string("\r\n\0", 3))));
    Require(written.Read("SYSTEM", "P") == read.Read("SYSTEM", "P"));
    Require(written.Has("SYSTEM", "P") == read.Has("SYSTEM", "P"));
    return 0;
}
