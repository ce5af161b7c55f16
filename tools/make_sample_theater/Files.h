#pragma once

#include <bit>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace vardenix::sample {

// A file that is written from its start to its end. Every failure is a RuntimeError that
// names the file.
class OutFile {
public:
    explicit OutFile(std::filesystem::path path);

    void Put(const std::vector<uint8_t>& bytes);
    void Put(const std::string& text);
    int64_t Written() const { return written_; }
    // Must be the last call; a file that was not finished may be cut short.
    void Finish();

private:
    void Put(const char* bytes, std::size_t count);
    std::filesystem::path path_;
    std::ofstream stream_;
    int64_t written_ = 0;
};

template <class Content>
void WriteFile(const std::filesystem::path& path, const Content& content) {
    OutFile file(path);
    file.Put(content);
    file.Finish();
}

// Little-endian numbers, added to the end of a file's bytes.
inline void AddByte(std::vector<uint8_t>& bytes, uint8_t value) {
    bytes.push_back(value);
}
inline void AddShort(std::vector<uint8_t>& bytes, int16_t value) {
    const auto bits = static_cast<uint16_t>(value);
    bytes.push_back(static_cast<uint8_t>(bits & 255));
    bytes.push_back(static_cast<uint8_t>(bits >> 8));
}
inline void AddLong(std::vector<uint8_t>& bytes, int32_t value) {
    const auto bits = static_cast<uint32_t>(value);
    for (int i = 0; i < 4; ++i)
        bytes.push_back(static_cast<uint8_t>(bits >> (8 * i)));
}
inline void AddFloat(std::vector<uint8_t>& bytes, float value) {
    AddLong(bytes, std::bit_cast<int32_t>(value));
}

} // namespace vardenix::sample
