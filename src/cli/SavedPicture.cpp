#include "cli/SavedPicture.h"

#include "cli/Printing.h"
#include "pictures/ImageFiles.h"
#include "pictures/ImageLayer.h"
#include "pictures/PictureWriter.h"

namespace vardenix {

void RequirePictureName(const std::string& path) {
    switch (FormatFromFileName(path)) {
    case PictureFormat::Png:
    case PictureFormat::Bmp:
    case PictureFormat::Jpeg:
    case PictureFormat::Targa:
        return;
    default:
        throw UsageError("OUT", path + " ends in no extension of a picture; give a name "
                                       "that ends in .png, .bmp, .jpg or .tga");
    }
}

void AddSmall(Command& command, bool& small) {
    command.Flag("--small", small, "Make a PNG file smaller, in several times the time");
}

void SavePicture(const RasterView& picture, const std::string& path, bool small) {
    const PictureFormat format = FormatFromFileName(path);
    if (format == PictureFormat::Bmp)
        WriteBmp(path, picture);
    else if (format == PictureFormat::Png && !small)
        WriteFastPng(path, picture);
    else {
        ImageSaveOptions options;
        options.ColorDepth = 24;
        ImageSaveEx(PictureToBitmap(picture), path, options);
    }
    Print(path);
}

} // namespace vardenix
