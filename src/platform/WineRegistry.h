#pragma once

#include <string>
#include <string_view>

namespace vardenix {

// A value out of the text of a prefix's system.reg, which holds the keys below
// HKEY_LOCAL_MACHINE. Key and name are found without regard to the case of the letters A
// to Z. A string comes as UTF-8, a 32-bit number as decimal text; a value of another
// type, or one that is not there, is empty. Any bytes are accepted.
std::string WineRegistryText(std::string_view hive, std::string_view key,
                             std::string_view name);

// A value that is a path with a drive letter ("C:\Games") as a path of this system,
// through the links in the prefix's dosdevices; empty when there is no such drive. Any
// other value is given back as it stands.
std::string PathOfWine(const std::string& prefix, const std::string& value);

} // namespace vardenix
