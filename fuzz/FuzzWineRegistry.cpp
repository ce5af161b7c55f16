// The registry text of a Wine prefix. Drive letters are left out: they ask the disk.
#include "Require.h"
#include "platform/WineRegistry.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

using namespace vardenix;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view hive(reinterpret_cast<const char*>(data), size);
    for (const char* name : {"baseDir", "curTheater", ""}) {
        const std::string text =
            WineRegistryText(hive, "SOFTWARE\\Microprose\\Falcon\\4.0", name);
        Require(text.size() <= size);
        Require(WineRegistryText(hive, "software\\microprose\\falcon\\4.0", name) ==
                text);
    }
    return 0;
}
