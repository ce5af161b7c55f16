// A palette file of a header and 256 times red, green, blue, alpha, of any length.
#include "PaletteBytes.h"

using namespace vardenix;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::ReadAndWriteAgain<PalLength>(data, size, 24, TakePal, PalBytes);
    return 0;
}
