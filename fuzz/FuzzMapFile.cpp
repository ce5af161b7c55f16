// A theater.map of any length, as the record and as the one number that discovery takes.
#include "Require.h"
#include "mapeditor/MapFile.h"
#include "program/Discovery.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

using namespace vardenix;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::span bytes = std::as_bytes(std::span(data, size));
    MapFileRecord record;
    TakeMapFile(bytes, record);
    Require(size == 0 || std::memcmp(&record, data, std::min(size, sizeof record)) == 0);
    // The rest of the record is zero, as the missing bytes of the number are.
    Require(ReadTheaterWidth(bytes) ==
            std::to_string(int64_t{record.Levels[2].Width} * 16));
    return 0;
}
