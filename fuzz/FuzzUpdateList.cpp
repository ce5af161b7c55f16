// An update.lst and a Loader.lst of any bytes: every name that is not refused is one of a
// file of the folder.
#include "Require.h"
#include "loader/LoaderList.h"
#include "texts/RuntimeError.h"
#include "updater/UpdateList.h"

#include <cstddef>
#include <cstdint>

using namespace vardenix;

namespace {

// By itself, so that the check is not checked by itself.
bool LeavesTheFolder(const std::string& name) {
    return name.empty() || name == "." || name == ".." ||
           name.find('/') != std::string::npos || name.find('\\') != std::string::npos ||
           name.find(':') != std::string::npos || name.find('\0') != std::string::npos;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto entries = ReadUpdateList(text);
    Require(entries.size() <= size);
    if (WhyListRefused(entries).empty()) {
        for (const UpdateListEntry& entry : entries) {
            if (entry.Command == "COPY")
                Require(!LeavesTheFolder(entry.FileName));
            if (entry.Command == "DELETE" || entry.Command == "README")
                Require(!LeavesTheFolder(entry.Param));
        }
    }
    try {
        for (const LoaderStep& step : ReadLoaderList(text))
            Require(!LeavesTheFolder(step.Name));
    } catch (const RuntimeError&) {
    }
    return 0;
}
