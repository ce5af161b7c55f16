#include "pictures/ImageLibrary.h"

#include "texts/RuntimeError.h"

#include <atomic>
#include <dlfcn.h>
#include <string>

namespace vardenix {
namespace {

std::atomic<bool> isOpen = false;

constexpr const char* FileName = "libfreeimage.so.3";

template <typename Function>
void Find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(::dlsym(library, name));
    if (function == nullptr)
        throw RuntimeError(ErrorNumber::FileNotFound, std::string(FileName) + " has no " +
                                                          name + "; install FreeImage 3");
}

// The loader tells by its words alone that memory was what it lacked.
RuntimeError NotOpened(const std::string& why) {
    const bool memory = why.find("cannot allocate") != std::string::npos ||
                        why.find("Cannot allocate") != std::string::npos ||
                        why.find("failed to map") != std::string::npos;
    return memory ? RuntimeError(ErrorNumber::OutOfMemory,
                                 std::string(FileName) + " cannot be loaded: " + why)
                  : RuntimeError(ErrorNumber::FileNotFound, std::string(FileName) + ": " +
                                                                why +
                                                                "; install FreeImage 3");
}

ImageFunctions Open() {
    void* const library = ::dlopen(FileName, RTLD_LAZY | RTLD_LOCAL);
    if (library == nullptr)
        throw NotOpened(::dlerror());
    ImageFunctions found;
    Find(library, "FreeImage_AcquireMemory", found.AcquireMemory);
    Find(library, "FreeImage_AdjustBrightness", found.AdjustBrightness);
    Find(library, "FreeImage_Allocate", found.Allocate);
    Find(library, "FreeImage_AllocateEx", found.AllocateEx);
    Find(library, "FreeImage_Clone", found.Clone);
    Find(library, "FreeImage_CloseMemory", found.CloseMemory);
    Find(library, "FreeImage_ColorQuantize", found.ColorQuantize);
    Find(library, "FreeImage_ConvertTo16Bits555", found.ConvertTo16Bits555);
    Find(library, "FreeImage_ConvertTo16Bits565", found.ConvertTo16Bits565);
    Find(library, "FreeImage_ConvertTo24Bits", found.ConvertTo24Bits);
    Find(library, "FreeImage_ConvertTo32Bits", found.ConvertTo32Bits);
    Find(library, "FreeImage_ConvertTo4Bits", found.ConvertTo4Bits);
    Find(library, "FreeImage_ConvertToGreyscale", found.ConvertToGreyscale);
    Find(library, "FreeImage_Copy", found.Copy);
    Find(library, "FreeImage_DeInitialise", found.DeInitialise);
    Find(library, "FreeImage_Dither", found.Dither);
    Find(library, "FreeImage_FIFSupportsExportBPP", found.FIFSupportsExportBPP);
    Find(library, "FreeImage_FIFSupportsExportType", found.FIFSupportsExportType);
    Find(library, "FreeImage_FIFSupportsWriting", found.FIFSupportsWriting);
    Find(library, "FreeImage_GetBPP", found.GetBPP);
    Find(library, "FreeImage_GetFIFExtensionList", found.GetFIFExtensionList);
    Find(library, "FreeImage_GetFIFFromFilename", found.GetFIFFromFilename);
    Find(library, "FreeImage_GetFormatFromFIF", found.GetFormatFromFIF);
    Find(library, "FreeImage_GetGreenMask", found.GetGreenMask);
    Find(library, "FreeImage_GetHeight", found.GetHeight);
    Find(library, "FreeImage_GetImageType", found.GetImageType);
    Find(library, "FreeImage_GetScanLine", found.GetScanLine);
    Find(library, "FreeImage_GetVersion", found.GetVersion);
    Find(library, "FreeImage_GetWidth", found.GetWidth);
    Find(library, "FreeImage_Initialise", found.Initialise);
    Find(library, "FreeImage_LoadFromMemory", found.LoadFromMemory);
    Find(library, "FreeImage_OpenMemory", found.OpenMemory);
    Find(library, "FreeImage_Rescale", found.Rescale);
    Find(library, "FreeImage_SaveToMemory", found.SaveToMemory);
    Find(library, "FreeImage_SetChannel", found.SetChannel);
    Find(library, "FreeImage_Threshold", found.Threshold);
    Find(library, "FreeImage_Unload", found.Unload);
    isOpen = true;
    return found;
}

} // namespace

const ImageFunctions& ImageLibrary() {
    static const ImageFunctions functions = Open();
    return functions;
}

bool ImageLibraryIsOpen() { return isOpen; }

} // namespace vardenix
