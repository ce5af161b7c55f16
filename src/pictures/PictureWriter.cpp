#include "pictures/PictureWriter.h"

#include "files/StagedFile.h"
#include "texts/RuntimeError.h"

#include <csetjmp>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <exception>
#include <png.h>
#include <utility>
#include <vector>

namespace vardenix {
namespace {

constexpr int32_t PartsPerPixel = 3;

void RequirePixels(const std::string& path, const RasterView& picture) {
    if (picture.Width < 1 || picture.Height < 1)
        throw RuntimeError(ErrorNumber::InvalidCall, path + ": a picture without pixels");
}

// Rows are padded to whole numbers of 4 bytes.
size_t BmpRowBytes(int32_t width) {
    return (static_cast<size_t>(width) * PartsPerPixel + 3) / 4 * 4;
}

void WriteBmpHeader(StagedFile& file, const RasterView& picture) {
    constexpr int32_t headers = 54;
    constexpr int32_t dotsPerMeter = 2835; // 72 to the inch
    const auto pixelBytes = static_cast<int32_t>(BmpRowBytes(picture.Width) *
                                                 static_cast<size_t>(picture.Height));
    file.WriteText("BM");
    for (const int32_t value :
         {headers + pixelBytes, 0, headers, 40, picture.Width, picture.Height})
        file.WriteInt32(value);
    file.WriteInt32(1 | PartsPerPixel * 8 << 16); // planes and bits
    // Plain pixels, whose length need not be told.
    for (const int32_t value : {0, 0, dotsPerMeter, dotsPerMeter, 0, 0})
        file.WriteInt32(value);
}

// The first three bytes of each of two pixels, six in all.
uint64_t PartsOfTwo(const uint32_t* pixels) {
    uint64_t both = 0;
    std::memcpy(&both, pixels, sizeof both);
    return (both & 0xFFFFFF) | (both >> 8 & 0xFFFFFF000000);
}

// A pixel's bytes are blue, green, red and alpha in memory, and BMP wants the first
// three. Four pixels at once make twelve bytes, in words whose lowest byte comes first.
void TakeParts(const uint32_t* row, int32_t width, std::byte* to) {
    int32_t x = 0;
    for (; x + 4 <= width; x += 4, to += 12) {
        const uint64_t left = PartsOfTwo(row + x);
        const uint64_t right = PartsOfTwo(row + x + 2);
        const uint64_t first = left | right << 48;
        const auto last = static_cast<uint32_t>(right >> 16);
        std::memcpy(to, &first, sizeof first);
        std::memcpy(to + sizeof first, &last, sizeof last);
    }
    for (; x < width; ++x) {
        const uint32_t pixel = row[x];
        *to++ = static_cast<std::byte>(pixel);
        *to++ = static_cast<std::byte>(pixel >> 8);
        *to++ = static_cast<std::byte>(pixel >> 16);
    }
}

// The PNG library goes back to where it was called by a jump, over which no object may
// live and no exception may fly: what it writes is collected, and failures are noted.
struct PngBytes {
    std::vector<std::byte> Written;
    std::exception_ptr Failure;
};

extern "C" void TakePngBytes(png_structp png, png_bytep bytes, size_t count) {
    auto& collected = *static_cast<PngBytes*>(png_get_io_ptr(png));
    try {
        const auto* first = reinterpret_cast<const std::byte*>(bytes);
        collected.Written.insert(collected.Written.end(), first, first + count);
    } catch (...) {
        collected.Failure = std::current_exception();
        png_error(png, "no memory");
    }
}
extern "C" [[noreturn]] void GiveUp(png_structp png, png_const_charp) {
    png_longjmp(png, 1);
}
extern "C" void NothingToFlush(png_structp) {}
extern "C" void WarnNobody(png_structp, png_const_charp) {}

// False when the library gave up.
bool Encode(png_structp png, png_infop info, const RasterView& picture,
            PngBytes& collected) {
    if (setjmp(png_jmpbuf(png)) != 0)
        return false;
    png_set_write_fn(png, &collected, TakePngBytes, NothingToFlush);
    // Tiles that come again pack best as they are.
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
    png_set_compression_level(png, 2);
    png_set_IHDR(png, info, static_cast<png_uint_32>(picture.Width),
                 static_cast<png_uint_32>(picture.Height), 8, PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    // Rows are blue, green, red and a byte that the file does not have.
    png_set_filler(png, 0, PNG_FILLER_AFTER);
    png_set_bgr(png);
    for (int32_t y = 0; y < picture.Height; ++y)
        png_write_row(png, reinterpret_cast<png_bytep>(picture.Row(y)));
    png_write_end(png, info);
    return true;
}

std::vector<std::byte> PngOf(const std::string& path, const RasterView& picture) {
    PngBytes collected;
    png_structp png =
        png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, GiveUp, WarnNobody);
    if (png == nullptr)
        throw RuntimeError(ErrorNumber::OutOfMemory);
    png_infop info = png_create_info_struct(png);
    const bool written = info != nullptr && Encode(png, info, picture, collected);
    png_destroy_write_struct(&png, &info);
    if (collected.Failure)
        std::rethrow_exception(collected.Failure);
    if (!written)
        throw RuntimeError(ErrorNumber::OutOfMemory,
                           path + ": the picture cannot be written as PNG");
    std::vector<std::byte> bytes;
    std::swap(bytes, collected.Written);
    return bytes;
}

} // namespace

void WriteBmp(const std::string& path, const RasterView& picture) {
    RequirePixels(path, picture);
    StagedFile file(path);
    WriteBmpHeader(file, picture);
    std::vector<std::byte> row(BmpRowBytes(picture.Width));
    for (int32_t y = picture.Height - 1; y >= 0; --y) {
        TakeParts(picture.Row(y), picture.Width, row.data());
        file.Write(row);
    }
    file.Commit();
}

void WriteFastPng(const std::string& path, const RasterView& picture) {
    RequirePixels(path, picture);
    const std::vector<std::byte> bytes = PngOf(path, picture);
    StagedFile file(path);
    file.Write(bytes);
    file.Commit();
}

} // namespace vardenix
