// VX.ini of any bytes: it is read, and what is written from it reads back the same.
#include "Require.h"
#include "program/ConfigurationFile.h"

#include <cstddef>
#include <cstdint>
#include <string>

using namespace vardenix;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const Configuration read = ReadConfiguration(ProfileFile(bytes));
    Require(!read.P.empty());
    Require(static_cast<size_t>(MaxHeightColors) >= read.HeightColorList.size());
    const std::string once = ConfigurationText(read);
    Require(once == ConfigurationText(ReadConfiguration(ProfileFile(once))));
    return 0;
}
