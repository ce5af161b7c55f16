#pragma once

#include "pictures/PictureFormat.h"

#include <FreeImage.h>

namespace vardenix {

// The image library's functions, under their names without "FreeImage_". The library
// brings thirty others along, which takes longer than most commands: it is opened at the
// first use, by whichever thread comes first, and stays. Error 53 when it is not
// installed.
struct ImageFunctions {
    decltype(&FreeImage_AcquireMemory) AcquireMemory = nullptr;
    decltype(&FreeImage_AdjustBrightness) AdjustBrightness = nullptr;
    decltype(&FreeImage_Allocate) Allocate = nullptr;
    decltype(&FreeImage_AllocateEx) AllocateEx = nullptr;
    decltype(&FreeImage_Clone) Clone = nullptr;
    decltype(&FreeImage_CloseMemory) CloseMemory = nullptr;
    decltype(&FreeImage_ColorQuantize) ColorQuantize = nullptr;
    decltype(&FreeImage_ConvertTo16Bits555) ConvertTo16Bits555 = nullptr;
    decltype(&FreeImage_ConvertTo16Bits565) ConvertTo16Bits565 = nullptr;
    decltype(&FreeImage_ConvertTo24Bits) ConvertTo24Bits = nullptr;
    decltype(&FreeImage_ConvertTo32Bits) ConvertTo32Bits = nullptr;
    decltype(&FreeImage_ConvertTo4Bits) ConvertTo4Bits = nullptr;
    decltype(&FreeImage_ConvertToGreyscale) ConvertToGreyscale = nullptr;
    decltype(&FreeImage_Copy) Copy = nullptr;
    decltype(&FreeImage_DeInitialise) DeInitialise = nullptr;
    decltype(&FreeImage_Dither) Dither = nullptr;
    decltype(&FreeImage_FIFSupportsExportBPP) FIFSupportsExportBPP = nullptr;
    decltype(&FreeImage_FIFSupportsExportType) FIFSupportsExportType = nullptr;
    decltype(&FreeImage_FIFSupportsWriting) FIFSupportsWriting = nullptr;
    decltype(&FreeImage_GetBPP) GetBPP = nullptr;
    decltype(&FreeImage_GetFIFExtensionList) GetFIFExtensionList = nullptr;
    decltype(&FreeImage_GetFIFFromFilename) GetFIFFromFilename = nullptr;
    decltype(&FreeImage_GetFormatFromFIF) GetFormatFromFIF = nullptr;
    decltype(&FreeImage_GetGreenMask) GetGreenMask = nullptr;
    decltype(&FreeImage_GetHeight) GetHeight = nullptr;
    decltype(&FreeImage_GetImageType) GetImageType = nullptr;
    decltype(&FreeImage_GetScanLine) GetScanLine = nullptr;
    decltype(&FreeImage_GetVersion) GetVersion = nullptr;
    decltype(&FreeImage_GetWidth) GetWidth = nullptr;
    decltype(&FreeImage_Initialise) Initialise = nullptr;
    decltype(&FreeImage_LoadFromMemory) LoadFromMemory = nullptr;
    decltype(&FreeImage_OpenMemory) OpenMemory = nullptr;
    decltype(&FreeImage_Rescale) Rescale = nullptr;
    decltype(&FreeImage_SaveToMemory) SaveToMemory = nullptr;
    decltype(&FreeImage_SetChannel) SetChannel = nullptr;
    decltype(&FreeImage_Threshold) Threshold = nullptr;
    decltype(&FreeImage_Unload) Unload = nullptr;
};
const ImageFunctions& ImageLibrary();
bool ImageLibraryIsOpen();

constexpr FREE_IMAGE_FORMAT LibraryFormat(PictureFormat format) {
    return static_cast<FREE_IMAGE_FORMAT>(format);
}

} // namespace vardenix
