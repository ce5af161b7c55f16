// The journal of an interrupted save, of any bytes: what is read as one says the same
// when it is written again.
#include "Require.h"
#include "files/TransactionJournal.h"

#include <cstddef>
#include <cstdint>

using namespace vardenix;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const auto bytes = std::as_bytes(std::span(data, size));
    const auto entries = ParseJournal(bytes);
    if (!entries)
        return 0;
    Require(!entries->empty());
    const std::string text = JournalText(*entries);
    const auto again = ParseJournal(std::as_bytes(std::span(text)));
    Require(again.has_value() && *again == *entries);
    return 0;
}
