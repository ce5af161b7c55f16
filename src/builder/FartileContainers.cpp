#include "builder/FartileContainers.h"

#include "levels/RebuiltFiles.h"
#include "texts/RuntimeError.h"

#include <optional>

namespace vardenix {

FartileContainers::FartileContainers(RebuildFiles& files,
                                     const std::string& textureFolder,
                                     const FartileShape& shape)
    : files_(files), pathOfIndex_(IndexOfFartiles(textureFolder)),
      day_(files, DayContainer(textureFolder)),
      night_(files, NightContainer(textureFolder)) {
    const auto header = shape.Header();
    day_.Write(std::as_bytes(std::span(header)));
    night_.Write(std::as_bytes(std::span(header)));
}

void FartileContainers::Add(std::span<const uint8_t> day, std::span<const uint8_t> night,
                            const Digest& key) {
    day_.Write(std::as_bytes(day));
    night_.Write(std::as_bytes(night));
    keys_.push_back(key);
}

void FartileContainers::Finish() {
    day_.Finish();
    night_.Finish();
    std::optional<RewrittenFile> index;
    try {
        index.emplace(files_, pathOfIndex_);
    } catch (const RuntimeError&) {
        // Something else has the name, or the file may not be replaced. It tells of the
        // containers of before, so nobody will trust it.
        return;
    }
    index->Write(FartileIndexBytes({{day_.Stamp(), night_.Stamp()}, std::move(keys_)}));
    index->Finish();
}

} // namespace vardenix
