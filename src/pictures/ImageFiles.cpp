#include "pictures/ImageFiles.h"

#include "files/FileNames.h"
#include "files/StagedFile.h"
#include "pictures/ImageLayer.h"
#include "pictures/ImageLibrary.h"
#include "pictures/PictureGuard.h"
#include "texts/Cutting.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <optional>
#include <span>
#include <utility>

namespace vardenix {
namespace {

constexpr int LoadFlags = 0;

struct CloseMemory {
    void operator()(FIMEMORY* memory) const { ImageLibrary().CloseMemory(memory); }
};
using Memory = std::unique_ptr<FIMEMORY, CloseMemory>;

// The part of a file's name behind its last dot is one of a comma-separated list.
bool HasExtensionOf(std::string_view path, std::string_view list) {
    const std::string name = AfterLastSlash(path);
    const size_t dot = name.rfind('.');
    if (dot == std::string::npos)
        return false;
    const std::string extension = "," + UpperCase(name.substr(dot + 1)) + ",";
    return ("," + UpperCase(list) + ",").find(extension) != std::string::npos;
}

std::string WithExtensionOf(PictureFormat format, std::string_view path) {
    const std::string list = FormatExtensions(format);
    std::string name(path);
    if (!HasExtensionOf(path, list))
        name += "." + list.substr(0, list.find(','));
    return name;
}

std::string Plugin(PictureFormat format) {
    return "FreeImage Library plugin '" + FormatName(format) + "' ";
}

PictureFormat FormatToWrite(const Bitmap& bitmap, std::string_view path,
                            PictureFormat asked) {
    const PictureFormat format =
        asked == PictureFormat::Unknown ? FormatFromFileName(path) : asked;
    if (FormatName(format).empty())
        throw RuntimeError(ErrorNumber::TypeMismatch,
                           "Unknown image format. Neither an explicit image format "
                           "was specified nor any known image format was parsed "
                           "from the filename given.",
                           std::string(path));
    if (!SupportsWriting(format) ||
        ImageLibrary().FIFSupportsExportType(
            LibraryFormat(format), ImageLibrary().GetImageType(bitmap.Handle())) == FALSE)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           Plugin(format) +
                               "is unable to write images of the image format requested.",
                           std::string(path));
    return format;
}

// The depth nearest to the wanted one that the format takes; of two as near the deeper,
// which loses less.
std::optional<int32_t> NearestDepth(PictureFormat format, int32_t wanted) {
    std::optional<int32_t> best;
    for (const int32_t bits : {32, 24, 16, 8, 4, 1}) {
        if (SupportsDepth(format, bits) &&
            (!best || std::abs(bits - wanted) < std::abs(*best - wanted)))
            best = bits;
    }
    return best;
}

int32_t DepthToWrite(const Bitmap& bitmap, PictureFormat format, int32_t asked) {
    const int32_t wanted = asked == 0 ? bitmap.BitsPerPixel() : asked;
    if (const auto nearest = NearestDepth(format, wanted))
        return *nearest;
    throw RuntimeError(ErrorNumber::InvalidCall,
                       Plugin(format) +
                           "is unable to write images with a color depth "
                           "of " +
                           std::to_string(wanted) + " bpp.",
                       "");
}

void WriteScratch(const std::string& path, std::span<const std::byte> bytes) {
    std::ofstream file(RealPath(path), std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        ThrowSystemError(errno, "writing", path);
}

void Save(PictureFormat format, const Bitmap& bitmap, const std::string& path,
          const ImageSaveOptions& options) {
    const FileBytes bytes = ImageEncode(format, bitmap, path, options.Flags);
    if (options.Scratch)
        return WriteScratch(path, bytes.Span());
    StagedFile file(path);
    file.Write(bytes.Span());
    file.Commit();
}

// The bytes of a picture that may be decoded.
FileBytes BytesOfPicture(PictureFormat format, std::string_view path) {
    if (!SupportsReading(format))
        throw RuntimeError(ErrorNumber::InvalidPicture,
                           std::string(path) + ": pictures of this kind are not read");
    if (FileLength(path) > PictureLargestFile)
        throw RuntimeError(ErrorNumber::InvalidPicture,
                           std::string(path) + ": the file is too long for a picture");
    return ReadWholeFile(path, PictureLargestFile);
}

// What `work` gives; every error of it is 481, but for a lack of memory, which is no
// fault of the picture.
template <typename Work>
auto WithError481(std::string_view path, Work work) {
    try {
        return work();
    } catch (const RuntimeError& error) {
        if (error.Number() == ErrorNumber::InvalidPicture ||
            error.Number() == ErrorNumber::OutOfMemory)
            throw;
        // The system's refusals name the file themselves where they know more.
        throw RuntimeError(ErrorNumber::InvalidPicture,
                           std::string(path) + ": " + error.Description());
    }
}

} // namespace

Bitmap ImageDecode(PictureFormat format, FileBytes bytes, std::string_view path) {
    GuardedPicture picture = GuardPicture(format, std::move(bytes), path);
    const Memory memory(
        ImageLibrary().OpenMemory(reinterpret_cast<BYTE*>(picture.Bytes.data()),
                                  static_cast<DWORD>(picture.Length)));
    Bitmap bitmap(
        ImageLibrary().LoadFromMemory(LibraryFormat(format), memory.get(), LoadFlags));
    if (bitmap && (bitmap.Width() != picture.Width || bitmap.Height() != picture.Height))
        bitmap = Bitmap(
            ImageLibrary().Copy(bitmap.Handle(), 0, 0, picture.Width, picture.Height));
    if (!bitmap || bitmap.Width() != picture.Width || bitmap.Height() != picture.Height)
        throw RuntimeError(ErrorNumber::InvalidPicture,
                           std::string(path) + ": the picture in it is broken");
    return bitmap;
}

FileBytes ImageEncode(PictureFormat format, const Bitmap& bitmap, std::string_view path,
                      int32_t flags) {
    const Memory memory(ImageLibrary().OpenMemory(nullptr, 0));
    BYTE* bytes = nullptr;
    DWORD length = 0;
    if (ImageLibrary().SaveToMemory(LibraryFormat(format), bitmap.Handle(), memory.get(),
                                    flags) == FALSE ||
        ImageLibrary().AcquireMemory(memory.get(), &bytes, &length) == FALSE)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           std::string(path) + ": the picture cannot be written as " +
                               FormatName(format));
    FileBytes result(length);
    std::copy_n(reinterpret_cast<const std::byte*>(bytes), length, result.data());
    return result;
}

Bitmap ImageRead(PictureFormat format, std::string_view path) {
    return ImageDecode(format, BytesOfPicture(format, path), path);
}

Bitmap ImageLoad(PictureFormat format, std::string_view path) {
    try {
        return ImageRead(format, path);
    } catch (const RuntimeError&) {
        return {};
    }
}

PictureFile ImageFileEx(std::string_view path) {
    const PictureFormat format = FormatFromFileName(path);
    return {std::string(path), format,
            WithError481(path, [&] { return BytesOfPicture(format, path); })};
}

Bitmap ImageDecodeEx(PictureFile file) {
    return WithError481(file.Path, [&] {
        return ImageDecode(file.Format, std::move(file.Bytes), file.Path);
    });
}

Bitmap ImageLoadEx(std::string_view path, const RescaleSize& size, ImageFilter filter) {
    return ImageRescaleEx(ImageDecodeEx(ImageFileEx(path)), size, filter);
}

std::string ImageSaveEx(const Bitmap& bitmap, std::string_view path,
                        const ImageSaveOptions& options) {
    if (!bitmap)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           std::string(path) + ": no bitmap to save");
    Bitmap changed;
    const Bitmap* current = &bitmap;
    if (ChangesSize(bitmap, options.Size)) {
        changed = ImageRescaleEx(bitmap, options.Size, options.Filter);
        current = &changed;
    }
    const PictureFormat format = FormatToWrite(*current, path, options.Format);
    std::string name = WithExtensionOf(format, path);
    const int32_t depth = DepthToWrite(*current, format, options.ColorDepth);
    if (depth != current->BitsPerPixel()) {
        changed = ImageConvertDepth(*current, static_cast<ImageDepth>(depth));
        current = &changed;
    }
    Save(format, *current, name, options);
    return name;
}

} // namespace vardenix
