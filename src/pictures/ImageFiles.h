#pragma once

#include "files/BinaryReader.h"
#include "pictures/Bitmap.h"
#include "pictures/ImageScaling.h"
#include "pictures/PictureFormat.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vardenix {

// Reads a picture in the format told, whatever its name and content look like. No bitmap
// when that cannot be done, for whoever goes on without: a picture is 24 or 32 bits (8 or
// 16 from Targa and JPEG, 8 or 24 from BMP).
Bitmap ImageLoad(PictureFormat format, std::string_view path);

// Decodes the bytes of a file, by the format told. `path` is for the error, 481 with the
// reason.
Bitmap ImageDecode(PictureFormat format, FileBytes bytes, std::string_view path);

// ImageLoad for whoever tells why not: the system's refusals, and 481 with the reason.
Bitmap ImageRead(PictureFormat format, std::string_view path);

// A file that is read and not decoded yet.
struct PictureFile {
    std::string Path;
    PictureFormat Format = PictureFormat::Unknown; // by its extension
    FileBytes Bytes;
};

// ImageLoadEx in two steps, for whoever wants to know a picture by its bytes; the same
// errors.
PictureFile ImageFileEx(std::string_view path);
Bitmap ImageDecodeEx(PictureFile file);

// Reads a picture in the format of its extension, and scales it when a size is given.
// Error 481 with the path and the reason when there is no such file, its format is not
// read, or its content is not of that format; never another number for a bad file.
Bitmap ImageLoadEx(std::string_view path, const RescaleSize& size = {},
                   ImageFilter filter = ImageFilter::Bicubic);

// The bytes of a picture file. Error 5 when the format cannot hold the bitmap as it is;
// `path` is for the error.
FileBytes ImageEncode(PictureFormat format, const Bitmap& bitmap, std::string_view path,
                      int32_t flags = 0);

struct ImageSaveOptions {
    PictureFormat Format = PictureFormat::Unknown; // from the name, then
    int32_t Flags = 0;                             // the library's own, as JPEG quality
    int32_t ColorDepth = 0;                        // bits; 0 keeps the bitmap's
    RescaleSize Size;
    ImageFilter Filter = ImageFilter::Bicubic;
    // For a file that goes with this run: written in place, and nobody waits for the
    // disk.
    bool Scratch = false;
};

// Saves a copy, scaled and in another depth where that is asked or needed; the bitmap
// stays as it is. Gives the name of the file, which is `path` with the extension of the
// format added unless it has a valid one. The file is whole or the old one stands.
// Error 13 when neither options nor name tell a format; 5 when the format cannot be
// written, not in any depth, or there is no bitmap; the system's refusals.
std::string ImageSaveEx(const Bitmap& bitmap, std::string_view path,
                        const ImageSaveOptions& options = {});

} // namespace vardenix
