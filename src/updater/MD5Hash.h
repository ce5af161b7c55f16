#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace vardenix {

// MD5 as 32 hexadecimal digits in upper case. Error 53 "File doesn't exist" for a file
// that is not there, the system's refusals for one that cannot be read, and error 5 when
// the library refuses.
class MD5Hash {
public:
    static std::string HashFile(const std::string& path);
    static std::string HashBytes(std::span<const std::byte> bytes);
};

} // namespace vardenix
