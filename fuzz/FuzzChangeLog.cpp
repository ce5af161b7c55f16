// A log of changes of any bytes, as records whose checksums are put right first when the
// first byte says so: whatever is read of it is carried out on a small theater and taken
// back, or refused.
#include "Require.h"
#include "files/StagedFile.h"
#include "program/ProgramState.h"
#include "recovery/ChangeBytes.h"
#include "recovery/LogStory.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

using namespace vardenix;

namespace {

// Checksums are for accidents; whoever writes a log can write those, too.
void PutChecksumsRight(std::span<std::byte> bytes) {
    while (bytes.size() >= 8) {
        uint32_t length = 0;
        std::memcpy(&length, bytes.data(), sizeof length);
        length = std::min(length, static_cast<uint32_t>(bytes.size() - 8));
        const uint32_t sum = ChecksumOf(bytes.subspan(8, length));
        std::memcpy(bytes.data() + 4, &sum, sizeof sum);
        bytes = bytes.subspan(8 + size_t{length});
    }
}

void CarryOut(const LogStory& story, std::span<const std::byte> bytes) {
    ProgramState state;
    state.Terrain.MapWidth = 4;
    state.Terrain.LxArr = PostArray(16);
    state.Terrain.Elevations.L0ElvArr = HeightArray(256);
    try {
        for (const StoryStep& step : story.Steps)
            for (Change& change : ChangesOf(step, bytes, "log")) {
                RequireFits(change, 16, 256);
                state.Changes.Apply(std::move(change));
            }
    } catch (const RuntimeError&) { // the rest does not fit
    }
    Require(state.Changes.Count() == state.Changes.Position());
    try {
        while (state.Changes.NextBack() != nullptr)
            state.Changes.Back();
    } catch (const RuntimeError&) { // what it was made of is not proved
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0)
        return 0;
    const auto input = std::as_bytes(std::span(data, size)).subspan(1);
    std::vector<std::byte> bytes(input.begin(), input.end());
    if (data[0] % 2 == 0)
        PutChecksumsRight(bytes);
    try {
        const LogStory story = ReadStory(bytes, "log");
        Require(story.WholeBytes <= bytes.size());
        CarryOut(story, bytes);
    } catch (const RuntimeError&) { // no log
    }
    return 0;
}
