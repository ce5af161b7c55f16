#include "cli/SavedPicture.h"

#include "services/ImageFiles.h"
#include "services/ImageLayer.h"

#include <cstdio>

namespace vardenix {

void SavePicture(Raster& picture, const std::string& path) {
    ImageSaveOptions options;
    options.ColorDepth = 24;
    const std::string saved = ImageSaveEx(PictureToBitmap(picture.View()), path, options);
    std::printf("%s\n", saved.c_str());
}

} // namespace vardenix
