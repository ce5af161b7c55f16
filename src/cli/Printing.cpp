#include "cli/Printing.h"

#include "platform/FileNames.h"

#include <cstdio>

namespace vardenix {

void PrintJson(const Json& json) {
    // Names of the theater's files may hold any bytes.
    std::printf("%s\n", json.dump(2, ' ', false, Json::error_handler_t::replace).c_str());
}

void PrintValues(const Json& object, bool asJson) {
    if (asJson) {
        PrintJson(object);
        return;
    }
    for (const auto& [key, value] : object.items())
        std::printf("%s: %s\n", key.c_str(),
                    value.is_string() ? value.get<std::string>().c_str()
                                      : value.dump().c_str());
}

std::string NameOnDisk(const std::string& path) { return ShownPath(path); }

} // namespace vardenix
