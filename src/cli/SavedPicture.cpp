#include "cli/SavedPicture.h"

#include "cli/CommandLine.h"
#include "cli/Printing.h"
#include "services/ImageFiles.h"
#include "services/ImageLayer.h"

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

void SavePicture(Raster& picture, const std::string& path) {
    ImageSaveOptions options;
    options.ColorDepth = 24;
    const std::string saved = ImageSaveEx(PictureToBitmap(picture.View()), path, options);
    Print(saved);
}

} // namespace vardenix
