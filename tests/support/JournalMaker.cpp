#include "support/JournalMaker.h"

#include <cstdint>
#include <cstdio>
#include <sys/stat.h>

namespace vardenix::tests {

namespace {

// Bit by bit, as the checksum is defined.
std::string Crc32(const std::string& bytes) {
    uint32_t crc = 0xFFFFFFFF;
    for (const char c : bytes) {
        crc ^= static_cast<unsigned char>(c);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) != 0 ? crc >> 1 ^ 0xEDB88320 : crc >> 1;
    }
    char text[9];
    std::snprintf(text, sizeof text, "%08x", ~crc);
    return text;
}

} // namespace

void JournalMaker::Add(const std::string& name, const std::string& staged,
                       const std::string& replaced) {
    lines_ += "file " + name + "\nstaged " + std::to_string(staged.size()) + " " +
              Crc32(staged) + "\nreplaces ";
    struct stat status {};
    if (stat(replaced.c_str(), &status) != 0) {
        lines_ += "nothing\n";
        return;
    }
    for (const auto value :
         {static_cast<int64_t>(status.st_dev), static_cast<int64_t>(status.st_ino),
          static_cast<int64_t>(status.st_size), status.st_mtim.tv_sec})
        lines_ += std::to_string(value) + " ";
    lines_ += std::to_string(status.st_mtim.tv_nsec) + "\n";
}

std::string JournalMaker::Text() const { return lines_ + "end " + Crc32(lines_) + "\n"; }

} // namespace vardenix::tests
