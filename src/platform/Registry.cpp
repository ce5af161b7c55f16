#include "platform/Registry.h"

#include "files/BinaryReader.h"
#include "files/FileNames.h"
#include "files/ProfileFile.h"
#include "platform/WineRegistry.h"
#include "texts/RuntimeError.h"

#include <cstdlib>

namespace vardenix {

namespace {

// That of a Wine prefix with many programs has some 20 MB.
constexpr uint64_t LongestRegistry = uint64_t{256} << 20;

// Nothing of a file that is not there or cannot be read: such a registry has no values.
std::string BytesOrNone(const std::string& path) {
    try {
        const FileBytes bytes = ReadWholeFile(path, LongestRegistry);
        return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
    } catch (const RuntimeError&) {
        return {};
    }
}

// A 32-bit program in a 64-bit prefix finds its keys one level lower.
std::string KeyFor32Bits(std::string_view key) {
    const size_t slash = key.find('\\');
    if (slash == std::string_view::npos)
        return {};
    return std::string(key.substr(0, slash)) + "\\Wow6432Node" +
           std::string(key.substr(slash));
}

} // namespace

FileRegistry::FileRegistry(std::string_view appPath, std::string_view programFolder,
                           std::string winePrefix)
    : iniPath_(WithTrailingSlash(appPath) + "registry.ini"),
      shippedIniPath_(WithTrailingSlash(programFolder) + "registry.ini"),
      winePrefix_(std::move(winePrefix)) {}

std::string FileRegistry::ReadText(std::string_view key, std::string_view name) const {
    std::string value = ProfileFile(BytesOrNone(iniPath_)).Read(key, name);
    if (value.empty() && shippedIniPath_ != iniPath_)
        value = ProfileFile(BytesOrNone(shippedIniPath_)).Read(key, name);
    if (!value.empty() || winePrefix_.empty())
        return value;
    const std::string hive = BytesOrNone(winePrefix_ + "/system.reg");
    value = WineRegistryText(hive, key, name);
    if (value.empty())
        value = WineRegistryText(hive, KeyFor32Bits(key), name);
    return PathOfWine(winePrefix_, value);
}

void FileRegistry::WriteText(std::string_view key, std::string_view name,
                             std::string_view value) {
    std::string old;
    if (FileExists(iniPath_)) {
        const FileBytes bytes = ReadWholeFile(iniPath_, LongestRegistry);
        old.assign(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    }
    ProfileWriter file(old);
    file.Write(key, name, value);
    file.Save(iniPath_);
}

std::string UsersWinePrefix() {
    const char* prefix = std::getenv("WINEPREFIX");
    if (prefix != nullptr && *prefix != '\0')
        return prefix;
    const char* home = std::getenv("HOME");
    return home != nullptr && *home != '\0' ? std::string(home) + "/.wine"
                                            : std::string();
}

} // namespace vardenix
