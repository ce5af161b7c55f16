#include "pictures/PictureGuardParts.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace vardenix::guard {
namespace {

constexpr size_t TargaHeaderLength = 18;
// The library looks for a footer in the last 26 bytes and follows its offsets; after
// these there is none.
constexpr size_t NoFooter = 26;

struct TargaHeader {
    uint32_t NoteLength = 0;
    uint32_t Kind = 0; // 1 palette, 2 colours, 3 greys
    bool Packed = false;
    bool HasMap = false;
    uint64_t MapLength = 0; // bytes
    uint32_t Width = 0;
    uint32_t Height = 0;
    uint32_t PixelBytes = 0;

    uint64_t MapBegin() const { return TargaHeaderLength + NoteLength; }
    uint64_t PixelsBegin() const { return MapBegin() + MapLength; }
    uint64_t PixelsLength() const { return uint64_t{Width} * Height * PixelBytes; }
};

void TakeMap(TargaHeader& header, const FileBytes& bytes, std::string_view path) {
    const uint32_t mapKind = ByteAt(bytes, 1);
    if (mapKind > 1)
        Refuse(path, "not a Targa file");
    header.HasMap = mapKind == 1;
    if (!header.HasMap)
        return;
    const uint32_t first = Little16(bytes, 3);
    const uint32_t count = Little16(bytes, 5);
    const uint32_t bits = ByteAt(bytes, 7);
    header.MapLength = uint64_t{count} * ((bits + 7) / 8);
    if (header.Kind != 1)
        return; // passed over, whatever is in it
    if (first + count > 256 || (bits != 16 && bits != 24 && bits != 32))
        Refuse(path, "a palette of at most 256 colours expected");
}

TargaHeader TakeTargaHeader(const FileBytes& bytes, std::string_view path) {
    CheckLength(bytes.size(), TargaHeaderLength, path);
    TargaHeader header;
    header.NoteLength = ByteAt(bytes, 0);
    const uint32_t kind = ByteAt(bytes, 2);
    header.Packed = (kind & 8) != 0;
    header.Kind = kind & ~8U;
    const uint32_t bits = ByteAt(bytes, 16);
    header.PixelBytes = bits / 8;
    const bool colours = header.Kind == 2 && (bits == 16 || bits == 24 || bits == 32);
    const bool bytewise = (header.Kind == 1 || header.Kind == 3) && bits == 8;
    if (!colours && !bytewise)
        Refuse(path, "not a Targa file of 8, 16, 24 or 32 bits a pixel");
    TakeMap(header, bytes, path);
    if (header.Kind == 1 && !header.HasMap)
        Refuse(path, "the palette is missing");
    header.Width = Little16(bytes, 12);
    header.Height = Little16(bytes, 14);
    CheckSides(header.Width, header.Height, path);
    CheckLength(bytes.size(), header.PixelsBegin(), path);
    return header;
}

// Walks the packets; a packet's first byte holds its count less 1, and the top bit says
// that one pixel is repeated. Packets may run from row to row. False when the file ends
// before the picture does. `to` may be null, to look only.
bool Unpack(const FileBytes& bytes, const TargaHeader& header, std::byte* to) {
    uint64_t at = header.PixelsBegin();
    uint64_t left = uint64_t{header.Width} * header.Height;
    while (left > 0) {
        if (at >= bytes.size())
            return false;
        const uint32_t packet = ByteAt(bytes, static_cast<size_t>(at++));
        const bool run = (packet & 128) != 0;
        const uint64_t count = (packet & 127) + 1;
        const uint64_t length = (run ? 1 : count) * header.PixelBytes;
        if (bytes.size() - at < length)
            return false;
        const uint64_t taken = std::min(count, left);
        for (uint64_t i = 0; to != nullptr && i < taken; ++i) {
            const uint64_t from = at + (run ? 0 : i * header.PixelBytes);
            to = std::copy_n(bytes.data() + from, header.PixelBytes, to);
        }
        at += length;
        left -= taken;
    }
    return true;
}

// The library sizes its buffer for packed rows by the file's bytes per row and reads past
// it where rows pack too well; unpacked pictures have no such buffer.
FileBytes Rebuild(const FileBytes& bytes, const TargaHeader& header) {
    const bool keepMap = header.Kind == 1;
    const auto mapLength = static_cast<size_t>(keepMap ? header.MapLength : 0);
    const auto pixels = static_cast<size_t>(header.PixelsLength());
    FileBytes result(TargaHeaderLength + mapLength + pixels + NoFooter);
    std::byte* to = result.data();
    std::memcpy(to, bytes.data(), TargaHeaderLength);
    to[0] = std::byte{0};
    to[1] = static_cast<std::byte>(keepMap);
    to[2] = static_cast<std::byte>(header.Kind);
    if (!keepMap)
        std::memset(to + 3, 0, 5);
    to += TargaHeaderLength;
    std::memcpy(to, bytes.data() + header.MapBegin(), mapLength);
    to += mapLength;
    if (header.Packed)
        Unpack(bytes, header, to);
    else
        std::memcpy(to, bytes.data() + header.PixelsBegin(), pixels);
    std::memset(to + pixels, 0, NoFooter);
    return result;
}

} // namespace

GuardedPicture GuardTarga(FileBytes bytes, std::string_view path) {
    const TargaHeader header = TakeTargaHeader(bytes, path);
    if (!header.Packed)
        CheckLength(bytes.size(), header.PixelsBegin() + header.PixelsLength(), path);
    else if (!Unpack(bytes, header, nullptr))
        Refuse(path, "the file is cut: its " + std::to_string(bytes.size()) +
                         " bytes do not fill the picture");
    FileBytes rebuilt = Rebuild(bytes, header);
    const size_t length = rebuilt.size();
    return {std::move(rebuilt), length, static_cast<int32_t>(header.Width),
            static_cast<int32_t>(header.Height)};
}

} // namespace vardenix::guard
