#include "builder/FartilePicture.h"

#include "builder/FartileShape.h"
#include "files/ReadableFile.h"
#include "pictures/ImageFiles.h"
#include "pictures/ImageLayer.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace vardenix {

namespace {

// The size that a container's header tells; 481 unless the rest of it is as it must be.
int32_t FarSizeOf(const ReadableFile& file) {
    std::array<uint8_t, FartileShape::HeaderBytes> header{};
    const size_t got = file.ReadAt(0, std::as_writable_bytes(std::span(header)));
    constexpr size_t WidthAt = 12;
    int32_t farSize = 0;
    std::memcpy(&farSize, &header[WidthAt], sizeof farSize);
    try {
        if (got == header.size() && FartileShape(farSize).Header() == header)
            return farSize;
    } catch (const RuntimeError&) {
        // A size that no far tile has.
    }
    throw RuntimeError(ErrorNumber::InvalidPicture,
                       file.Path() + " does not begin as a container of far tiles does");
}

} // namespace

Raster FartilePicture(std::span<const uint8_t> bytes, int32_t farSize) {
    const FartileShape shape(farSize);
    const auto header = Dxt1FileHeader(farSize, farSize);
    const size_t blocks = (static_cast<size_t>(farSize) + 3) / 4;
    FileBytes file(header.size() + blocks * blocks * Dxt1BlockBytes);
    std::fill_n(file.data(), file.size(), std::byte{0});
    std::memcpy(file.data(), header.data(), header.size());
    std::memcpy(file.data() + header.size(), bytes.data(),
                std::min(bytes.size(), shape.LinearSize()));
    const ImageSession session;
    return BitmapToHBitmap(
        ImageDecode(PictureFormat::Dds, std::move(file), "a far tile"));
}

Raster ReadFartile(const std::string& container, int64_t index) {
    const ReadableFile file(container);
    const int32_t farSize = FarSizeOf(file);
    std::vector<uint8_t> bytes(FartileShape(farSize).LinearSize());
    const auto count =
        static_cast<int64_t>((file.Size() - FartileShape::HeaderBytes) / bytes.size());
    if (count == 0)
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange,
                           file.Path() + " has no far tile");
    if (index < 0 || index >= count)
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange,
                           file.Path() + " has far tiles 0 to " +
                               std::to_string(count - 1) + ", not " +
                               std::to_string(index));
    const auto at =
        FartileShape::HeaderBytes + static_cast<uint64_t>(index) * bytes.size();
    file.ReadMeasured(at, std::as_writable_bytes(std::span(bytes)));
    return FartilePicture(bytes, farSize);
}

} // namespace vardenix
