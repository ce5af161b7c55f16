#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

namespace vardenix::sample {

struct SampleOptions {
    std::filesystem::path Out; // the install folder; made if it is not there
    uint32_t Seed = 1;
    int Posts = 256;    // a side, a multiple of 16 from 16 to 2048
    bool Force = false; // write over a theater that is there
    // Where to tell of the install, if the file is new; empty: nowhere. A theater that is
    // there already is then told of and stays as it is.
    std::filesystem::path Registry;
};

// Makes the whole theater. `say` gets one line a step. Throws RuntimeError: 5 for a
// number of posts that cannot be, 75 for a theater that is there and not to be
// overwritten, others for what the disk refuses.
void MakeSampleTheater(const SampleOptions& options,
                       const std::function<void(const std::string&)>& say);

} // namespace vardenix::sample
