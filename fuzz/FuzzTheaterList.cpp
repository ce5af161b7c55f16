// A theater.lst and a description, parted by the first NUL of the input.
#include "Require.h"
#include "program/Discovery.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

using namespace vardenix;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const size_t part = std::min(input.find('\0'), input.size());
    std::vector<std::string> leftOut;
    try {
        for (const TheaterInfo& theater :
             ReadTheaterList(input.substr(0, part), "list", leftOut)) {
            Require(!theater.TdfFile.empty());
            Require(theater.TdfFile.find('/') == std::string::npos);
            Require(!theater.TdfFile.starts_with('\\') &&
                    !theater.TdfFile.starts_with('#'));
            Require(("\\" + theater.TdfFile + "\\").find("\\..\\") == std::string::npos);
        }
    } catch (const RuntimeError&) {
    }
    TheaterInfo theater;
    ReadDescription(input.substr(part), theater);
    Require(theater.TerrainDir.find('\n') == std::string::npos);
    Require(!theater.Name.starts_with(' ') && !theater.Name.ends_with(' '));
    return 0;
}
