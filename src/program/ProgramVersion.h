#pragma once

#include <string>

namespace vardenix {

constexpr int VersionMajor = 3;
constexpr int VersionMinor = 0;
constexpr int VersionRevision = 1;

// "3.0.1"
inline std::string ProgramVersion() {
    return std::to_string(VersionMajor) + "." + std::to_string(VersionMinor) + "." +
           std::to_string(VersionRevision);
}

} // namespace vardenix
