// A kept.lst of any bytes: whatever is put back, nothing outside of the program's folder
// is touched, and one that does not count is set aside whole.
#include "Require.h"
#include "ScratchFolder.h"
#include "files/KeptFiles.h"
#include "texts/RuntimeError.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

using namespace vardenix;

namespace {

constexpr uint8_t Byte[] = {'x'};

size_t EntriesOf(const std::filesystem::path& folder) {
    size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        count += entry.exists() ? 1 : 0;
    return count;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const ScratchFolder scratch;
    scratch.Empty();
    scratch.Write("a", Byte);
    scratch.Write("program/a", Byte);
    scratch.Write("program/UpdateKept/1", Byte);
    scratch.Write("program/UpdateKept/kept.lst", {data, size});
    const std::filesystem::path program = scratch.Path() / "program";
    KeptFiles kept(program.string());
    Require(kept.Any() == kept.SetAside().empty());
    if (kept.Any()) {
        try {
            kept.PutBack();
        } catch (const RuntimeError&) {
        }
    } else {
        Require(EntriesOf(program) == 2 && EntriesOf(program / "UpdateKept.aside") == 2);
    }
    Require(EntriesOf(scratch.Path()) == 2);
    return 0;
}
