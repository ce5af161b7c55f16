#pragma once

#include "files/ProfileFile.h"
#include "program/Configuration.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vardenix {

// A height colour table has at most this many rows, whatever ListNumber says.
constexpr int32_t MaxHeightColors = 10000;

// VX.ini in the folder `appPath`. Without the file: the values of a first start. With it:
// what it holds, and 0, false or empty for every key that it lacks. P is never empty: a
// new one is made. A number too large for its field becomes the nearest that fits. Throws
// when the file is there and cannot be read (70, 75); called once, before the first
// window.
Configuration ReadConfiguration(std::string_view appPath);
Configuration ReadConfiguration(const ProfileFile& file);

// Rewrites VX.ini whole. Throws what stopped it (70, 75, 61), and then the old file
// stands as it was.
void WriteConfiguration(std::string_view appPath, const Configuration& configuration);
// The bytes that WriteConfiguration writes.
std::string ConfigurationText(const Configuration& configuration);

// Empty when the file has no such key.
std::string ReadIni(std::string_view section, std::string_view key,
                    const ProfileFile& file);

// Keys are written in upper case.
void WriteIni(std::string_view section, std::string_view key, std::string_view value,
              ProfileWriter& file);
// Format "0".
void WriteIniNumber(std::string_view section, std::string_view key, double value,
                    ProfileWriter& file);
// Upper-case hexadecimal digits without leading zeros; "0" for 0.
void WriteIniHex(std::string_view section, std::string_view key, uint32_t value,
                 ProfileWriter& file);

// The number that the hexadecimal digits at the beginning of a text spell: 0 when there
// are none, FFFFFFFF when there are too many.
uint32_t HexToLong(std::string_view text);

} // namespace vardenix
