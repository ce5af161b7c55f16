#pragma once

#include <string>
#include <string_view>

namespace vardenix {

// Keys below HKEY_LOCAL_MACHINE, as "SOFTWARE\Vardenix". Texts are UTF-8.
class Registry {
public:
    Registry() = default;
    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;
    virtual ~Registry() = default;

    // A string as it stands, a 32-bit number as its decimal text; empty for any other
    // type and for what cannot be found or read. Never throws for want of a value.
    virtual std::string ReadText(std::string_view key, std::string_view name) const = 0;
    // Throws what stopped it (70, 75, 61).
    virtual void WriteText(std::string_view key, std::string_view name,
                           std::string_view value) = 0;
};

// For systems without a registry. Values stand in registry.ini in the folder that the
// program writes to, a profile file whose sections are key names. What it leaves empty is
// looked up in the registry.ini beside the program, then in the registry of a Wine
// prefix; both are only read.
class FileRegistry : public Registry {
public:
    // An empty `winePrefix` stands for none.
    FileRegistry(std::string_view appPath, std::string_view programFolder,
                 std::string winePrefix);

    std::string ReadText(std::string_view key, std::string_view name) const override;
    void WriteText(std::string_view key, std::string_view name,
                   std::string_view value) override;

private:
    std::string iniPath_;
    std::string shippedIniPath_;
    std::string winePrefix_;
};

// The prefix that WINEPREFIX names, else ".wine" in the user's home; empty without
// either.
std::string UsersWinePrefix();

} // namespace vardenix
