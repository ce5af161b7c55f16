#include "pictures/PictureGuardParts.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vardenix::guard {
namespace {

// Offsets in the file.
constexpr size_t HeaderSizeAt = 4;
constexpr size_t FlagsAt = 8;
constexpr size_t DdsHeightAt = 12;
constexpr size_t DdsWidthAt = 16;
constexpr size_t PitchAt = 20;
constexpr size_t PixelFormatSizeAt = 76;
constexpr size_t PixelFormatFlagsAt = 80;
constexpr size_t CodeAt = 84;
constexpr size_t DdsBitsAt = 88;
constexpr size_t RedMaskAt = 92;

constexpr uint32_t HasPitch = 8;
constexpr uint32_t HasAlpha = 1;
constexpr uint32_t HasCode = 4;
constexpr uint32_t HasColours = 0x40;

void Put32(FileBytes& bytes, size_t offset, uint32_t value) {
    for (size_t i = 0; i < 4; ++i)
        bytes.data()[offset + i] = static_cast<std::byte>(value >> (8 * i));
}

constexpr uint32_t CodeOfDxt1 = 0x31545844;

uint32_t BlockBytes(const FileBytes& bytes, std::string_view path) {
    switch (Little32(bytes, CodeAt)) {
    case CodeOfDxt1:
        return 8;
    case 0x33545844: // DXT3
    case 0x35545844: // DXT5
        return 16;
    default:
        Refuse(path, "compressed in a way that is not DXT1, DXT3 or DXT5");
    }
}

// The library leaves out the blocks at the right and bottom edge that are not whole, so
// it is told of the padded size, which is what the file holds.
uint64_t ReadyBlocks(FileBytes& bytes, uint32_t width, uint32_t height,
                     std::string_view path) {
    const uint64_t blockBytes = BlockBytes(bytes, path);
    const uint32_t across = (width + 3) / 4;
    const uint32_t down = (height + 3) / 4;
    Put32(bytes, PixelFormatFlagsAt, HasCode);
    Put32(bytes, DdsWidthAt, across * 4);
    Put32(bytes, DdsHeightAt, down * 4);
    return blockBytes * across * down;
}

// Of red, green and blue, as the library knows them.
void CheckMasks(const FileBytes& bytes, std::string_view path) {
    constexpr std::array<std::array<uint32_t, 3>, 3> known{
        {{0xF800, 0x07E0, 0x001F}, {0x7C00, 0x03E0, 0x001F}, {0x0F00, 0x00F0, 0x000F}}};
    const std::array<uint32_t, 3> masks{Little32(bytes, RedMaskAt),
                                        Little32(bytes, RedMaskAt + 4),
                                        Little32(bytes, RedMaskAt + 8)};
    if (std::find(known.begin(), known.end(), masks) == known.end())
        Refuse(path, "16 bits a pixel, parted in another way than 565, 1555 or 4444");
}

// A row length shorter than a row is taken for one that somebody forgot to fill in.
uint64_t ReadyRows(FileBytes& bytes, uint32_t width, uint32_t height,
                   std::string_view path) {
    const uint32_t bits = Little32(bytes, DdsBitsAt);
    if (bits == 16)
        CheckMasks(bytes, path);
    else if (bits != 24 && bits != 32)
        Refuse(path, "16, 24 or 32 bits a pixel expected, found " + std::to_string(bits));
    const uint32_t row = width * bits / 8;
    const uint32_t flags = Little32(bytes, FlagsAt);
    const uint32_t pitch = Little32(bytes, PitchAt);
    const bool padded = (flags & HasPitch) != 0 && pitch > row && height > 1;
    Put32(bytes, FlagsAt, padded ? flags : flags & ~HasPitch);
    // Rows of 16 bits that are not measured are sought at the length that they have once
    // they are unpacked.
    if (bits == 16 && !padded) {
        Put32(bytes, FlagsAt, flags | HasPitch);
        Put32(bytes, PitchAt, row);
    }
    Put32(bytes, PixelFormatFlagsAt,
          HasColours | (Little32(bytes, PixelFormatFlagsAt) & HasAlpha));
    return padded ? uint64_t{pitch} * (height - 1) + row : uint64_t{row} * height;
}

struct Sides {
    uint32_t Width;
    uint32_t Height;
};

// What every DDS picture has to tell; `bytes` begin with the header, `length` is the
// file's.
Sides CheckHeader(const FileBytes& bytes, uint64_t length, std::string_view path) {
    CheckLength(length, DdsHeaderBytes, path);
    if (Little32(bytes, 0) != 0x20534444) // "DDS "
        Refuse(path, "not a DDS file");
    if (Little32(bytes, HeaderSizeAt) != 124 || Little32(bytes, PixelFormatSizeAt) != 32)
        Refuse(path, "header sizes 124 and 32 expected, found " +
                         std::to_string(Little32(bytes, HeaderSizeAt)) + " and " +
                         std::to_string(Little32(bytes, PixelFormatSizeAt)));
    const Sides sides{Little32(bytes, DdsWidthAt), Little32(bytes, DdsHeightAt)};
    CheckSides(sides.Width, sides.Height, path);
    return sides;
}

} // namespace

GuardedPicture GuardDds(FileBytes bytes, std::string_view path) {
    const auto [width, height] = CheckHeader(bytes, bytes.size(), path);
    const uint32_t kind = Little32(bytes, PixelFormatFlagsAt);
    uint64_t needed = DdsHeaderBytes;
    if ((kind & HasColours) != 0)
        needed += ReadyRows(bytes, width, height, path);
    else if ((kind & HasCode) != 0)
        needed += ReadyBlocks(bytes, width, height, path);
    else
        Refuse(path, "neither colours nor DXT blocks in it");
    CheckLength(bytes.size(), needed, path);
    return {std::move(bytes), static_cast<size_t>(needed), static_cast<int32_t>(width),
            static_cast<int32_t>(height)};
}

std::optional<Dxt1Layout> FindDxt1(const FileBytes& header, uint64_t length,
                                   std::string_view path) {
    const auto [width, height] = CheckHeader(header, length, path);
    const uint32_t kind = Little32(header, PixelFormatFlagsAt);
    if ((kind & HasColours) != 0 || (kind & HasCode) == 0 ||
        Little32(header, CodeAt) != CodeOfDxt1)
        return std::nullopt;
    const uint64_t blocks = uint64_t{(width + 3) / 4} * ((height + 3) / 4);
    CheckLength(length, DdsHeaderBytes + 8 * blocks, path);
    return Dxt1Layout{static_cast<int32_t>(width), static_cast<int32_t>(height)};
}

} // namespace vardenix::guard
