#include "pictures/PictureGuardParts.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

namespace vardenix::guard {
namespace {

constexpr uint32_t FileHeaderLength = 14;
constexpr uint32_t OldHeaderLength = 12;
constexpr uint32_t HeaderLength = 40;
// Offsets in the file.
constexpr size_t PixelsAt = 10;
constexpr size_t HeaderLengthAt = 14;
constexpr size_t WidthAt = 18;
constexpr size_t HeightAt = 22;
constexpr size_t BitsAt = 28;
constexpr size_t PackingAt = 30;
constexpr size_t ColorsAt = 46;
constexpr size_t MasksAt = 54;

enum Packing : uint32_t { Plain = 0, Runs8 = 1, Runs4 = 2, Masks = 3 };

constexpr uint32_t PaletteLength = 256 * 4;

struct Header {
    uint32_t Width = 0;
    uint32_t Height = 0;
    bool FromTop = false;
    uint32_t Bits = 0; // of a pixel
    uint32_t Packing = Plain;
    uint64_t PixelsBegin = 0;
    uint64_t PaletteBegin = 0;
    uint32_t PaletteCount = 0;
    uint32_t ColorLength = 4;     // bytes of a palette's entry
    uint32_t Mask[3] = {0, 0, 0}; // red, green, blue of 16 and 32 bits

    bool Indexed() const { return Bits <= 8; }
    bool Packed() const { return Packing == Runs8 || Packing == Runs4; }
    // Rows begin at multiples of 4 bytes.
    uint64_t RowLength() const { return (uint64_t{Width} * Bits + 31) / 32 * 4; }
    // The last row may end with its last pixel.
    uint64_t PixelsLength() const {
        return RowLength() * (Height - 1) + (uint64_t{Width} * Bits + 7) / 8;
    }
};

bool KnownLength(uint32_t length) {
    constexpr uint32_t known[] = {OldHeaderLength, HeaderLength, 52, 56, 64, 108, 124};
    return std::find(std::begin(known), std::end(known), length) != std::end(known);
}

bool Fits(uint32_t packing, uint32_t bits) {
    switch (packing) {
    case Plain:
        return bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 ||
               bits == 32;
    case Runs8:
        return bits == 8;
    case Runs4:
        return bits == 4;
    case Masks:
        return bits == 16 || bits == 32;
    default:
        return false;
    }
}

void TakeOldHeader(Header& header, const FileBytes& bytes) {
    header.Width = Little16(bytes, WidthAt);
    header.Height = Little16(bytes, WidthAt + 2);
    header.Bits = Little16(bytes, WidthAt + 6);
    header.ColorLength = 3;
}

// A height below zero says that the rows stand from the top down.
void TakeNewHeader(Header& header, const FileBytes& bytes) {
    header.Width = Little32(bytes, WidthAt);
    const uint32_t height = Little32(bytes, HeightAt);
    header.FromTop = (height & 0x80000000) != 0;
    header.Height = header.FromTop ? 0 - height : height;
    header.Bits = Little16(bytes, BitsAt);
    header.Packing = Little32(bytes, PackingAt);
}

void TakeMasks(Header& header, const FileBytes& bytes, std::string_view path) {
    const bool told = header.Packing == Masks;
    if (told)
        CheckLength(bytes.size(), MasksAt + 12, path);
    for (uint32_t i = 0; i < 3; ++i) {
        const uint32_t usual =
            header.Bits == 16 ? 0x7C00U >> (5 * i) : 0xFF0000U >> (8 * i);
        header.Mask[i] = told ? Little32(bytes, MasksAt + size_t{4} * i) : usual;
    }
}

// A palette may be shorter than the bits allow; what is longer is not looked at.
void TakePalette(Header& header, const FileBytes& bytes, uint32_t headerLength,
                 std::string_view path) {
    const uint32_t most = 1U << header.Bits;
    const uint32_t told = headerLength == OldHeaderLength ? 0 : Little32(bytes, ColorsAt);
    header.PaletteBegin = FileHeaderLength + headerLength;
    const uint64_t room = (header.PixelsBegin - header.PaletteBegin) / header.ColorLength;
    const uint32_t wanted = told == 0 ? most : std::min(told, most);
    header.PaletteCount = static_cast<uint32_t>(std::min<uint64_t>(wanted, room));
    if (header.PaletteCount == 0)
        Refuse(path, "the palette is missing");
}

Header TakeHeader(const FileBytes& bytes, std::string_view path) {
    CheckLength(bytes.size(), FileHeaderLength + OldHeaderLength, path);
    if (ByteAt(bytes, 0) != 'B' || ByteAt(bytes, 1) != 'M')
        Refuse(path, "not a BMP file");
    const uint32_t length = Little32(bytes, HeaderLengthAt);
    if (!KnownLength(length))
        Refuse(path, "a header of " + std::to_string(length) + " bytes is not known");
    CheckLength(bytes.size(), FileHeaderLength + length, path);
    Header header;
    if (length == OldHeaderLength)
        TakeOldHeader(header, bytes);
    else
        TakeNewHeader(header, bytes);
    CheckSides(header.Width, header.Height, path);
    if (!Fits(header.Packing, header.Bits) || (header.Packed() && header.FromTop))
        Refuse(path, std::to_string(header.Bits) + " bits a pixel packed in way " +
                         std::to_string(header.Packing) + " are not known");
    header.PixelsBegin = Little32(bytes, PixelsAt);
    if (header.PixelsBegin < FileHeaderLength + length)
        Refuse(path, "its pixels begin inside its header");
    CheckLength(bytes.size(), header.PixelsBegin, path);
    if (header.Indexed())
        TakePalette(header, bytes, length, path);
    else if (header.Bits != 24)
        TakeMasks(header, bytes, path);
    return header;
}

void Put16(std::byte* to, uint32_t value) {
    to[0] = static_cast<std::byte>(value);
    to[1] = static_cast<std::byte>(value >> 8);
}
void Put32(std::byte* to, uint32_t value) {
    Put16(to, value);
    Put16(to + 2, value >> 16);
}

// The plainest file of the same picture: 8 bits with 256 colours, or 24 bits, rows from
// the bottom up.
class Rebuilt {
public:
    explicit Rebuilt(const Header& header)
        : begin_(FileHeaderLength + HeaderLength +
                 (header.Indexed() ? PaletteLength : 0)),
          bits_(header.Indexed() ? 8 : 24),
          row_((uint64_t{header.Width} * bits_ + 31) / 32 * 4),
          bytes_(static_cast<size_t>(begin_ + row_ * header.Height)) {
        std::memset(bytes_.data(), 0, bytes_.size());
        std::byte* to = bytes_.data();
        to[0] = std::byte{'B'};
        to[1] = std::byte{'M'};
        Put32(to + 2, static_cast<uint32_t>(bytes_.size()));
        Put32(to + PixelsAt, static_cast<uint32_t>(begin_));
        Put32(to + HeaderLengthAt, HeaderLength);
        Put32(to + WidthAt, header.Width);
        Put32(to + HeightAt, header.Height);
        Put16(to + 26, 1);
        Put16(to + BitsAt, bits_);
    }

    // Row 0 is the lowest one.
    std::byte* Row(uint64_t y) { return bytes_.data() + begin_ + row_ * y; }
    std::byte* Palette() { return bytes_.data() + FileHeaderLength + HeaderLength; }
    FileBytes Take() { return std::move(bytes_); }

private:
    uint64_t begin_;
    uint32_t bits_;
    uint64_t row_;
    FileBytes bytes_;
};

void CopyPalette(const FileBytes& bytes, const Header& header, Rebuilt& rebuilt) {
    const std::byte* from = bytes.data() + header.PaletteBegin;
    for (uint32_t i = 0; i < header.PaletteCount; ++i, from += header.ColorLength)
        std::copy_n(from, 3, rebuilt.Palette() + size_t{4} * i);
}

// Pixel x of a row of 1, 4 or 8 bits; the first one has the highest bits of its byte.
std::byte IndexAt(const std::byte* row, uint32_t x, uint32_t bits) {
    const uint32_t perByte = 8 / bits;
    const uint32_t shift = 8 - bits - x % perByte * bits;
    return row[x / perByte] >> shift & std::byte((1U << bits) - 1);
}

std::byte Part(uint32_t pixel, uint32_t mask) {
    if (mask == 0)
        return std::byte{0};
    const int shift = std::countr_zero(mask);
    const uint64_t most = mask >> shift;
    const uint64_t value = (pixel & mask) >> shift;
    return static_cast<std::byte>((value * 255 + most / 2) / most);
}

void CopyRow(const std::byte* from, const Header& header, std::byte* to) {
    if (header.Bits == 24) {
        std::memcpy(to, from, size_t{header.Width} * 3);
        return;
    }
    for (uint32_t x = 0; x < header.Width; ++x) {
        if (header.Indexed()) {
            to[x] = IndexAt(from, x, header.Bits);
            continue;
        }
        uint32_t pixel = 0;
        std::memcpy(&pixel, from + size_t{x} * (header.Bits / 8), header.Bits / 8);
        for (uint32_t part = 0; part < 3; ++part) // blue first
            to[size_t{x} * 3 + part] = Part(pixel, header.Mask[2 - part]);
    }
}

void CopyRows(const FileBytes& bytes, const Header& header, Rebuilt& rebuilt) {
    const std::byte* from = bytes.data() + header.PixelsBegin;
    for (uint32_t y = 0; y < header.Height; ++y, from += header.RowLength())
        CopyRow(from, header, rebuilt.Row(header.FromTop ? header.Height - 1 - y : y));
}

// Walks the runs: a count and the index to repeat (two by turns for 4 bits), or 0 and
// what is meant: 0 the row ends, 1 the picture ends, 2 so many pixels right and rows up
// are left out, else that many indices follow, padded to an even length.
class Runs {
public:
    Runs(const FileBytes& bytes, const Header& header, Rebuilt& rebuilt)
        : bytes_(bytes), header_(header), rebuilt_(rebuilt),
          at_(static_cast<size_t>(header.PixelsBegin)) {}

    // False when the file ends before the picture does.
    bool Unpack() {
        while (y_ < header_.Height) {
            if (bytes_.size() - at_ < 2)
                return OnLastRow();
            const uint32_t count = Next();
            const uint32_t value = Next();
            if (count > 0)
                Repeat(count, value);
            else if (value == 1)
                return true;
            else if (!Escape(value))
                return false;
        }
        return true;
    }

private:
    uint32_t Next() { return ByteAt(bytes_, at_++); }
    bool OnLastRow() const { return y_ + 1 == header_.Height && x_ >= header_.Width; }

    // What reaches past the row is left out.
    void Put(uint32_t index) {
        if (x_ < header_.Width)
            rebuilt_.Row(y_)[x_] = static_cast<std::byte>(index);
        ++x_;
    }
    void PutOf(uint32_t pair, uint32_t i) {
        if (header_.Bits == 8)
            Put(pair);
        else
            Put(i % 2 == 0 ? pair >> 4 : pair & 15);
    }
    void Repeat(uint32_t count, uint32_t value) {
        for (uint32_t i = 0; i < count; ++i)
            PutOf(value, i);
    }
    bool Escape(uint32_t value) {
        if (value == 0) {
            x_ = 0;
            ++y_;
            return true;
        }
        if (value == 2) {
            if (bytes_.size() - at_ < 2)
                return false;
            x_ += Next();
            y_ += Next();
            return true;
        }
        const size_t length = header_.Bits == 8 ? value : (value + 1) / 2;
        if (bytes_.size() - at_ < length)
            return false;
        for (uint32_t i = 0; i < value; ++i)
            PutOf(ByteAt(bytes_, at_ + (header_.Bits == 8 ? i : i / 2)), i);
        at_ = std::min(at_ + (length + 1) / 2 * 2, bytes_.size());
        return true;
    }

    const FileBytes& bytes_;
    const Header& header_;
    Rebuilt& rebuilt_;
    size_t at_;
    uint64_t x_ = 0;
    uint64_t y_ = 0;
};

// Two bytes of runs give 255 pixels at most; a file that leaves out more than it fills
// must not ask for memory out of proportion to its length.
void CheckRunsFill(const FileBytes& bytes, const Header& header, std::string_view path) {
    const uint64_t most = (bytes.size() - header.PixelsBegin) * 128;
    if (uint64_t{header.Width} * header.Height > most)
        Refuse(path, "the file is cut: its " + std::to_string(bytes.size()) +
                         " bytes do not fill the picture");
}

} // namespace

// The library trusts sizes, palettes and runs, so it never sees them.
GuardedPicture GuardBmp(FileBytes bytes, std::string_view path) {
    const Header header = TakeHeader(bytes, path);
    if (header.Packed())
        CheckRunsFill(bytes, header, path);
    else
        CheckLength(bytes.size(), header.PixelsBegin + header.PixelsLength(), path);
    Rebuilt rebuilt(header);
    if (header.Indexed())
        CopyPalette(bytes, header, rebuilt);
    if (!header.Packed())
        CopyRows(bytes, header, rebuilt);
    else if (!Runs(bytes, header, rebuilt).Unpack())
        Refuse(path, "the file is cut: its " + std::to_string(bytes.size()) +
                         " bytes do not fill the picture");
    FileBytes plain = rebuilt.Take();
    const size_t length = plain.size();
    return {std::move(plain), length, static_cast<int32_t>(header.Width),
            static_cast<int32_t>(header.Height)};
}

} // namespace vardenix::guard
