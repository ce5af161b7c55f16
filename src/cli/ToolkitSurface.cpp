#include "cli/ToolkitSurface.h"

#include "files/OwnFolders.h"
#include "texts/RuntimeError.h"

#include <dlfcn.h>
#include <string>

namespace vardenix {

namespace {

using Maker = DrawingSurface* (*)(int32_t side, bool texts);

// Stays open: what it has made is of its classes.
Maker FindMaker() {
    const std::string path = ProgramFolder() + "/" VARDENIX_TOOLKIT;
    void* const library = ::dlopen(path.c_str(), RTLD_LAZY | RTLD_LOCAL);
    void* const maker =
        library == nullptr ? nullptr : ::dlsym(library, VARDENIX_TOOLKIT_MAKER);
    if (maker == nullptr)
        throw RuntimeError(ErrorNumber::FileNotFound,
                           path +
                               ", which belongs beside vardenix-cli and draws texts, "
                               "areas, paths and features, cannot be opened: " +
                               ::dlerror());
    return reinterpret_cast<Maker>(maker);
}

} // namespace

std::unique_ptr<DrawingSurface> MakeToolkitSurface(int32_t side, bool texts) {
    static const Maker make = FindMaker();
    return std::unique_ptr<DrawingSurface>(make(side, texts));
}

} // namespace vardenix
