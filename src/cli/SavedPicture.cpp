#include "cli/SavedPicture.h"

#include "cli/Printing.h"
#include "services/ImageFiles.h"
#include "services/ImageLayer.h"

namespace vardenix {

void SavePicture(Raster& picture, const std::string& path) {
    ImageSaveOptions options;
    options.ColorDepth = 24;
    const std::string saved = ImageSaveEx(PictureToBitmap(picture.View()), path, options);
    Print(saved);
}

} // namespace vardenix
