// A palette file of 256 times red, green, blue, of any length.
#include "PaletteBytes.h"

using namespace vardenix;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::ReadAndWriteAgain<ActLength>(data, size, 0, TakeAct, ActBytes);
    return 0;
}
